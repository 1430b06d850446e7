#include "details/error_line.h"

#include <array>
#include <cstddef>

namespace cvlog::details {

namespace {

constexpr std::size_t kFields = 6;
constexpr unsigned char kFirstShownCharacter = 32;

std::string_view viewOf(std::span<char> text) noexcept { return {text.data(), text.size()}; }

std::string_view cleaned(std::span<char> text) noexcept {
    for (char& byte : text)
        if (static_cast<unsigned char>(byte) < kFirstShownCharacter) byte = ' ';
    return viewOf(TrimBlanks(text));
}

/// Reads the fields of a line one by one. What a field keeps is moved down over the quotes it drops.
class FieldReader {
public:
    explicit FieldReader(std::span<char> line) noexcept : line_(line) {}

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
    static bool isSeparator(char byte) noexcept { return byte == ' ' || byte == '\t'; }

    std::span<char> line_;
    std::size_t at_ = 0;
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
    std::array<std::string_view, kFields> fields;
    FieldReader reader(text);
    for (std::string_view& field : fields) {
        if (!reader.toNextField()) break;
        field = reader.field();
    }
    const bool hasMessage = reader.toNextField();
    return {fields[0], fields[1], fields[4], fields[5],
            hasMessage ? cleaned(reader.message()) : std::string_view()};
}

} // namespace cvlog::details
