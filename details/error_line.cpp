#include "details/error_line.h"

#include "details/byte_words.h"

#include <array>
#include <optional>

namespace cvlog::details {

namespace {

constexpr std::size_t kFields = 6;

std::string_view viewOf(std::span<char> text) noexcept { return {text.data(), text.size()}; }

std::string_view cleaned(std::span<char> text) noexcept {
    if (AnyByte(viewOf(text), ControlBytes)) // mostly not
        for (char& byte : text)
            if (static_cast<unsigned char>(byte) < ' ') byte = ' ';
    return viewOf(TrimBlanks(text));
}

bool isSeparator(char byte) noexcept { return byte == ' ' || byte == '\t'; }

/// Finds the first twelve quotes of a line, eight bytes at a time and without a branch for each: where the next one is
/// cannot be foreseen, and a wrong guess of the processor costs more than what is done here.
class Quotes {
public:
    static constexpr std::size_t kMost = 2 * kFields;

    explicit Quotes(std::string_view line) noexcept {
        for (std::size_t at = 0; at < line.size() && count_ < kMost; at += kBytesOfWord)
            note(at, BytesEqual(WordAt(line, at), '"'));
    }
    bool areAll() const noexcept { return count_ >= kMost; }
    std::size_t operator[](std::size_t i) const noexcept { return places_[i]; }

private:
    void note(std::size_t at, std::uint64_t quotes) noexcept {
        constexpr std::size_t kMostly = 3; // in eight bytes
        const auto count = static_cast<std::size_t>(((quotes >> 7) * kEachByte) >> 56);
        std::size_t noted = 0;
        const auto noteNext = [&] {
            places_[count_ + noted++] = at + static_cast<std::size_t>(std::countr_zero(quotes)) / 8;
            quotes &= quotes - 1;
        };
        for (std::size_t i = 0; i < kMostly; ++i) noteNext();
        while (noted < count) noteNext();
        count_ += count;
    }

    std::array<std::size_t, kMost + kBytesOfWord> places_;
    std::size_t count_ = 0;
};

using Fields = std::array<std::string_view, kFields>;

/// As lines mostly are: each field between two quotes, one separator between them. Answers where the fields end, or 0
/// when they are not like that.
std::size_t readUsualFields(std::string_view line, Fields& fields) noexcept {
    const Quotes quotes(line);
    if (!quotes.areAll()) return 0;
    std::size_t end = 0;
    bool isUsual = true;
    for (std::size_t i = 0; i < kFields; ++i) {
        const std::size_t open = quotes[2 * i];
        const std::size_t close = quotes[2 * i + 1];
        isUsual = isUsual && open == end && close + 1 < line.size() && isSeparator(line[close + 1]);
        fields[i] = std::string_view(line.data() + open + 1, close - open - 1);
        end = close + 2;
    }
    if (!isUsual) fields = {};
    return isUsual ? end : 0;
}

/// Reads the fields of a line one by one. What a field keeps is moved down over the quotes it drops.
class FieldReader {
public:
    FieldReader(std::span<char> line, std::size_t begin) noexcept : line_(line), at_(begin) {}

    /// False when the line has come to its end.
    bool toNextField() noexcept {
        while (at_ < line_.size() && isSeparator(line_[at_])) ++at_;
        return at_ < line_.size();
    }

    std::string_view field() noexcept {
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
        return viewOf(line_.subspan(begin, end - begin));
    }

    /// A quote that begins the message is dropped.
    std::span<char> message() const noexcept { return line_.subspan(line_[at_] == '"' ? at_ + 1 : at_); }

private:
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
    if (text.empty() || text.front() != '"') return {{}, {}, {}, {}, cleaned(text)};
    Fields fields;
    const std::size_t end = readUsualFields(viewOf(text), fields);
    FieldReader reader(text, end);
    if (end == 0)
        for (std::string_view& field : fields) {
            if (!reader.toNextField()) break;
            field = reader.field();
        }
    const auto& [type, object, third, fourth, severity, code] = fields;
    const bool hasMessage = reader.toNextField();
    return {type, object, severity, code, hasMessage ? cleaned(reader.message()) : std::string_view()};
}

} // namespace cvlog::details
