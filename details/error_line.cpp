#include "details/error_line.h"

#include "base/byte_words.h"
#include "base/text.h"

#include <array>
#include <cstring>
#include <optional>

namespace cvlog::details {

namespace {

constexpr std::size_t kFields = 6;

std::string_view viewOf(std::span<char> text) noexcept { return {text.data(), text.size()}; }

struct Message {
    std::string_view text;
    bool isAscii = true;
};

Message cleaned(std::span<char> text) noexcept {
    bool isAscii = true;
    if (base::anyUnusual(viewOf(text))) {
        isAscii = base::isAscii(viewOf(text));
        for (char& byte : text)
            if (static_cast<unsigned char>(byte) < ' ') byte = ' ';
    }
    return {viewOf(TrimBlanks(text)), isAscii};
}

bool isSeparator(char byte) noexcept { return byte == ' ' || byte == '\t'; }

/// A part of a line. Has no value to begin with: clearing all fields of a line takes longer than reading them.
struct Field {
    const char* begin;
    std::size_t size;
    std::string_view view() const noexcept { return {begin, size}; }
};
using Fields = std::array<Field, kFields>;

/// The quotes of a line, one after another.
class Quotes {
public:
    explicit Quotes(std::string_view line) noexcept : line_(line), places_(placesFrom(line, 0)) {}

    /// kNone when there is none any more.
    std::size_t next() noexcept {
        while (places_ == 0) {
            begin_ += base::kBytesOfBlock;
            if (begin_ >= line_.size()) return kNone;
            places_ = placesFrom(line_, begin_);
        }
        const auto place = static_cast<std::size_t>(std::countr_zero(places_));
        places_ &= places_ - 1;
        return begin_ + place;
    }

    static constexpr std::size_t kNone = std::string_view::npos - 1;

private:
    // Not in line, so that reading fields has registers enough.
    [[gnu::noinline]] static std::uint64_t placesFrom(std::string_view line, std::size_t begin) noexcept {
        const std::string_view text = line.substr(begin);
        if (text.size() >= base::kBytesOfBlock) return base::placesInBlock(text.data(), '"');
        char block[base::kBytesOfBlock] = {};
        std::memcpy(block, text.data(), text.size());
        return base::placesInBlock(block, '"');
    }

    std::string_view line_;
    std::size_t begin_ = 0; // of the block that is looked at
    std::uint64_t places_;  // of the quotes in it that are still to come, a bit each
};

/// As lines mostly are: each field between two quotes, one separator between them. Answers where the fields end, or 0
/// when they are not like that.
std::size_t readUsualFields(std::string_view line, Fields& fields) noexcept {
    Quotes quotes(line);
    std::size_t begin = 0;
    for (Field& field : fields) {
        if (quotes.next() != begin) return 0;
        const std::size_t close = quotes.next();
        if (close + 1 >= line.size() || !isSeparator(line[close + 1])) return 0;
        field = {line.data() + begin + 1, close - begin - 1};
        begin = close + 2;
    }
    return begin;
}

/// The same where all of it lies in the first block, as it mostly does.
std::size_t readShortFields(std::string_view line, Fields& fields) noexcept {
    if (line.size() < base::kBytesOfBlock) return 0;
    std::uint64_t quotes = base::placesInBlock(line.data(), '"');
    const auto next = [&quotes] { // as many as a block has bytes when there is none any more
        const int place = std::countr_zero(quotes);
        quotes &= quotes - 1;
        return static_cast<std::size_t>(place);
    };
    std::size_t begin = 0;
    for (Field& field : fields) {
        if (next() != begin) return 0;
        const std::size_t close = next();
        if (close + 1 >= base::kBytesOfBlock || !isSeparator(line[close + 1])) return 0;
        field = {line.data() + begin + 1, close - begin - 1};
        begin = close + 2;
    }
    return begin;
}

/// Reads the fields of a line one by one. What a field keeps is moved down over the quotes it drops.
class FieldReader {
public:
    FieldReader(std::span<char> line, std::size_t begin) noexcept : line_(line), at_(begin) {}

    bool isAtBegin() const noexcept { return at_ == 0; }

    void read(Fields& fields) noexcept {
        for (Field& field : fields) field = toNextField() ? readField() : Field{line_.data(), 0};
    }

    /// False when the line has come to its end.
    bool toNextField() noexcept {
        while (at_ < line_.size() && isSeparator(line_[at_])) ++at_;
        return at_ < line_.size();
    }

    /// A quote that begins the message is dropped.
    std::span<char> message() const noexcept { return line_.subspan(line_[at_] == '"' ? at_ + 1 : at_); }

private:
    Field readField() noexcept {
        const std::size_t begin = at_;
        std::size_t end = at_;
        bool inQuotes = false;
        for (; at_ < line_.size(); ++at_) {
            const char byte = line_[at_];
            if (byte == '"')
                inQuotes = !inQuotes;
            else if (!inQuotes && isSeparator(byte))
                break;
            else
                line_[end++] = byte;
        }
        return {line_.data() + begin, end - begin};
    }

    std::span<char> line_;
    std::size_t at_;
};

} // namespace

std::span<char> TrimBlanks(std::span<char> text) noexcept {
    while (!text.empty() && text.front() == ' ') text = text.subspan(1);
    while (!text.empty() && text.back() == ' ') text = text.first(text.size() - 1);
    return text;
}

ErrorLine ParseErrorLine(std::span<char> line) noexcept {
    const std::span<char> text = TrimBlanks(line);
    if (text.empty() || text.front() != '"') {
        const Message message = cleaned(text);
        return {{}, {}, {}, {}, message.text, message.isAscii};
    }
    Fields fields;
    std::size_t begin = readShortFields(viewOf(text), fields);
    if (begin == 0) begin = readUsualFields(viewOf(text), fields);
    FieldReader reader(text, begin);
    if (reader.isAtBegin()) reader.read(fields);
    const Message message = reader.toNextField() ? cleaned(reader.message()) : Message();
    return {fields[0].view(), fields[1].view(), fields[4].view(),
            fields[5].view(), message.text,     message.isAscii};
}

} // namespace cvlog::details
