#include "tests/support/error_line_fuzz.h"

#include "core/results.h"

#include <algorithm>
#include <array>

namespace cvlog::tests {

namespace {

constexpr std::size_t kFields = 6;

struct Parts {
    std::array<std::string, 5> texts; // type, object, severity, code, message
    friend bool operator==(const Parts&, const Parts&) = default;
};

bool isControl(char byte) noexcept { return static_cast<unsigned char>(byte) < ' '; }

std::string_view trimmed(std::string_view text) noexcept {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

std::string cleaned(std::string_view text) {
    std::string clean(text);
    std::ranges::replace_if(clean, isControl, ' ');
    return std::string(trimmed(clean));
}

/// The format told once more, one character after the other.
Parts readSlowly(std::string_view line) {
    line = trimmed(line);
    if (!line.starts_with('"')) return {{"", "", "", "", cleaned(line)}};
    std::array<std::string, kFields + 1> slots;
    std::string message;
    std::size_t field = 0;
    bool inField = false;
    bool inQuote = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (c == ' ' || c == '\t') {
            inField = inField && inQuote;
            if (inField) slots[field] += c;
            continue;
        }
        if (!inField && ++field > kFields) {
            message = line.substr(c == '"' ? at + 1 : at);
            break;
        }
        inField = true;
        if (c == '"')
            inQuote = !inQuote;
        else
            slots[field] += c;
    }
    return {{slots[1], slots[2], slots[5], slots[6], cleaned(message)}};
}

std::array<std::string_view, 5> viewsOf(const details::ErrorLine& line) noexcept {
    return {line.typeName, line.objectName, line.severity, line.code, line.message};
}

Parts copyOf(const details::ErrorLine& line) {
    Parts copy;
    std::ranges::copy(viewsOf(line), copy.texts.begin());
    return copy;
}

std::u16string widened(std::string_view bytes) {
    std::u16string text(bytes.size(), u' ');
    std::ranges::transform(bytes, text.begin(), [](char byte) { return static_cast<unsigned char>(byte); });
    return text;
}

std::string faultOfMessage(std::string message, const ErrorLineParser& parse) {
    if (std::ranges::any_of(message, isControl)) return "a control character in the message";
    if (core::CleanMessage(widened(message)) != widened(message)) return "the message is not clean";
    if (message.starts_with('"')) return {};
    std::string again = message;
    return parse(again).message == message ? "" : "the message alone is another message";
}

} // namespace

std::string faultOfErrorLine(std::string_view line, const ErrorLineParser& parse) {
    std::string memory(line);
    const details::ErrorLine parsed = parse(memory);
    std::size_t total = 0;
    for (const std::string_view part : viewsOf(parsed)) {
        if (part.empty()) continue;
        const bool inside = std::less_equal<>()(memory.data(), part.data()) &&
                            std::less_equal<>()(part.data() + part.size(), memory.data() + memory.size());
        if (!inside) return "a part lies outside of the line";
        total += part.size();
    }
    if (total > line.size()) return "the parts are longer than the line";
    const Parts parts = copyOf(parsed);
    if (std::string fault = faultOfMessage(parts.texts.back(), parse); !fault.empty()) return fault;
    return parts == readSlowly(line) ? "" : "the parts are not those of the format";
}

namespace {

constexpr std::size_t kRemembered = 256;
constexpr std::size_t kLongest = 1'000'000;
constexpr std::string_view kFavourites = "\"\" \t\t  aE1\r\x01\x1F";
constexpr std::string_view kInside = "abcE1 \t\x83\\\x01";

} // namespace

RandomErrorLines::RandomErrorLines(std::uint32_t seed)
    : random_(seed), earlier_{R"("Program" "PAYROLL" "x" "y" "Error" "E1234" File not found)",
                              R"("P" ab"c d"e x y Warning W1 m)", R"("a" "b" "c" "d" "E" "1" "")",
                              "\t plain text"} {}

std::string RandomErrorLines::next() {
    std::string line;
    const std::size_t kind = below(2'000);
    if (kind == 0)
        line = longLine();
    else if (kind < 600)
        line = anyBytes(below(60));
    else if (kind < 1'200)
        line = usualLine();
    else
        line = changed(earlier_[below(earlier_.size())]);
    if (line.size() > 500) return line;
    if (earlier_.size() < kRemembered)
        earlier_.push_back(line);
    else
        earlier_[below(kRemembered)] = line;
    return line;
}

std::string RandomErrorLines::anyBytes(std::size_t size) {
    std::string line(below(5) == 0 ? "" : "\"");
    while (line.size() < size)
        line += below(100) < 85 ? kFavourites[below(kFavourites.size())] : static_cast<char>(below(256));
    return line;
}

// Six fields in quotes with a blank between, and mostly one byte that is not so.
std::string RandomErrorLines::usualLine() {
    std::string line;
    for (std::size_t field = 0; field < kFields; ++field) {
        line += '"';
        for (std::size_t i = below(12); i > 0; --i) line += kInside[below(kInside.size())];
        line += "\" ";
    }
    for (std::size_t i = below(20); i > 0; --i) line += kInside[below(kInside.size())];
    return below(4) == 0 ? line : changed(std::move(line));
}

std::string RandomErrorLines::longLine() {
    const std::size_t size = 1 + below(kLongest);
    switch (below(5)) {
    case 0:
        return std::string(size, '"');
    case 1:
        return "\"" + std::string(size, below(2) == 0 ? ' ' : 'x');
    case 2:
        return anyBytes(size);
    case 3: { // one part of it is long
        std::string line = usualLine();
        line.insert(below(line.size() + 1), anyBytes(size));
        return line;
    }
    default: {
        std::string line;
        for (const std::string piece = usualLine() + "\""; line.size() < size;) line += piece;
        return line;
    }
    }
}

std::string RandomErrorLines::changed(std::string line) {
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
        const std::size_t at = below(line.size() + 1);
        switch (below(5)) {
        case 0:
            line.insert(at, 1, kFavourites[below(kFavourites.size())]);
            break;
        case 1:
            line.erase(at, 1 + below(4));
            break;
        case 2:
            if (at < line.size()) line[at] = static_cast<char>(below(256));
            break;
        case 3:
            line.insert(at, line.substr(below(line.size() + 1), below(20)));
            break;
        default:
            line = line.substr(0, at) + earlier_[below(earlier_.size())];
            break;
        }
    }
    return line;
}

} // namespace cvlog::tests
