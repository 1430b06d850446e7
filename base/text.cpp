#include "base/text.h"

#include "base/byte_words.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>

namespace cvlog::base {

namespace {

bool inRange(char16_t unit, char16_t first, char16_t last) noexcept { return unit >= first && unit <= last; }

// Pairs of neighbours in which the even or the odd code unit is the capital.
bool isEvenCapitalBlock(char16_t unit) noexcept {
    return inRange(unit, 0x0100, 0x012F) || inRange(unit, 0x0132, 0x0137) || inRange(unit, 0x014A, 0x0177) ||
           inRange(unit, 0x0460, 0x0481) || inRange(unit, 0x048A, 0x04BF) || inRange(unit, 0x04D0, 0x0527) ||
           inRange(unit, 0x1E00, 0x1E95) || inRange(unit, 0x1EA0, 0x1EFF);
}

bool isOddCapitalBlock(char16_t unit) noexcept {
    return inRange(unit, 0x0139, 0x0148) || inRange(unit, 0x0179, 0x017E) || inRange(unit, 0x04C1, 0x04CE);
}

char16_t foldGreekOrCyrillic(char16_t unit) noexcept {
    if (unit == 0x03C2) return 0x03A3;
    if (inRange(unit, 0x03B1, 0x03CB)) return static_cast<char16_t>(unit - 0x20);
    if (unit == 0x03AC) return 0x0386;
    if (inRange(unit, 0x03AD, 0x03AF)) return static_cast<char16_t>(unit - 0x25);
    if (inRange(unit, 0x0430, 0x044F)) return static_cast<char16_t>(unit - 0x20);
    if (inRange(unit, 0x0450, 0x045F)) return static_cast<char16_t>(unit - 0x50);
    if (inRange(unit, 0x0561, 0x0586)) return static_cast<char16_t>(unit - 0x30);
    return unit;
}

void appendUtf8(std::string& out, char32_t point) {
    const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (point < 0x80) {
        byte(point);
    } else if (point < 0x800) {
        byte(0xC0 | (point >> 6));
        byte(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        byte(0xE0 | (point >> 12));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    } else {
        byte(0xF0 | (point >> 18));
        byte(0x80 | ((point >> 12) & 0x3F));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    }
}

struct Utf8Lead {
    std::size_t length; // 0: not a lead byte
    char32_t bits;
    char32_t least; // smaller results are overlong forms
};

Utf8Lead leadOf(unsigned char byte) noexcept {
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {2, static_cast<char32_t>(byte & 0x1F), 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, static_cast<char32_t>(byte & 0x0F), 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {4, static_cast<char32_t>(byte & 0x07), 0x10000};
    return {0, 0, 0};
}

bool areAscii(const char* word) noexcept { return bytesBeyondAscii(wholeWordAt(word)) == 0; }

// How many bytes in front are ASCII.
std::size_t asciiInFront(const char* bytes, std::size_t count) noexcept {
    constexpr std::size_t kStep = kBytesOfWord;
    std::size_t plain = 0;
    while (plain + kStep <= count && areAscii(bytes + plain)) plain += kStep;
    // The rest is mostly ASCII as well: the last word tells.
    if (plain < count && count - plain < kStep && count >= kStep && areAscii(bytes + count - kStep))
        return count;
    while (plain < count && static_cast<unsigned char>(bytes[plain]) < 0x80) ++plain;
    return plain;
}

template <std::size_t Size>
void widenBlock(const char* __restrict from, char16_t* __restrict to) noexcept {
    for (std::size_t i = 0; i < Size; ++i) to[i] = static_cast<unsigned char>(from[i]);
}

// The last block may take again some of what the one before it took.
template <std::size_t Size>
void widenBlocks(const char* from, std::size_t count, char16_t* to) noexcept {
    for (std::size_t i = 0; i + Size <= count; i += Size) widenBlock<Size>(from + i, to + i);
    widenBlock<Size>(from + count - Size, to + count - Size);
}

// Takes one character, or a byte that is part of none.
char32_t takePoint(const char*& from, const char* end) noexcept {
    const Utf8Lead lead = leadOf(static_cast<unsigned char>(*from));
    char32_t point = lead.bits;
    std::size_t used = 1;
    for (; used < lead.length && from + used != end; ++used) {
        const auto next = static_cast<unsigned char>(from[used]);
        if ((next & 0xC0) != 0x80) break;
        point = (point << 6) | (next & 0x3Fu);
    }
    const bool formed = lead.length != 0 && used == lead.length && point >= lead.least && point <= 0x10FFFF;
    from += formed ? used : 1;
    return formed ? point : 0xFFFD;
}

// Writes at most as many code units as there are bytes; answers where they end.
char16_t* widenUtf8(std::string_view text, char16_t* to) noexcept {
    const char* from = text.data();
    const char* const end = from + text.size();
    for (;;) {
        const std::size_t plain = asciiInFront(from, static_cast<std::size_t>(end - from));
        to = widenAscii({from, plain}, to);
        from += plain;
        if (from == end) return to;
        const char32_t point = takePoint(from, end);
        if (point < 0x10000) {
            *to++ = static_cast<char16_t>(point);
        } else {
            *to++ = static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            *to++ = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        }
    }
}

} // namespace

char16_t foldCase(char16_t unit) noexcept {
    if (unit < 0x80) return inRange(unit, u'a', u'z') ? static_cast<char16_t>(unit - 0x20) : unit;
    if (unit < 0x100) {
        if (unit == 0xFF) return 0x0178;
        return inRange(unit, 0xE0, 0xFE) && unit != 0xF7 ? static_cast<char16_t>(unit - 0x20) : unit;
    }
    if (unit == 0x0131) return unit; // dotless i has no capital of its own here: its capital is the ASCII I
    if (isEvenCapitalBlock(unit)) return static_cast<char16_t>(unit & ~1);
    if (isOddCapitalBlock(unit)) return unit % 2 == 0 ? static_cast<char16_t>(unit - 1) : unit;
    if (inRange(unit, 0xFF41, 0xFF5A)) return static_cast<char16_t>(unit - 0x20);
    if (inRange(unit, 0x2170, 0x217F)) return static_cast<char16_t>(unit - 0x10);
    if (inRange(unit, 0x24D0, 0x24E9)) return static_cast<char16_t>(unit - 0x1A);
    return foldGreekOrCyrillic(unit);
}

bool equalsIgnoringCase(std::u16string_view left, std::u16string_view right) noexcept {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](char16_t a, char16_t b) { return a == b || foldCase(a) == foldCase(b); });
}

bool isSame(std::u16string_view left, std::u16string_view right) noexcept {
    if (left.size() != right.size()) return false;
    return left.empty() || // may lie nowhere
           std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
}

std::u16string folded(std::u16string_view text) {
    std::u16string result(text);
    std::transform(result.begin(), result.end(), result.begin(), foldCase);
    return result;
}

std::u16string_view trimBlanks(std::u16string_view text) noexcept {
    const auto first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::u16string decimal(std::int64_t number) {
    char digits[std::numeric_limits<std::int64_t>::digits10 + 2]; // and the sign
    return {digits, std::to_chars(digits, std::end(digits), number).ptr};
}

std::u16string replaceFirst(std::u16string_view text, std::u16string_view what, std::u16string_view by) {
    std::u16string result(text);
    if (const auto at = result.find(what); at != std::u16string::npos) result.replace(at, what.size(), by);
    return result;
}

std::string toUtf8(std::u16string_view text) {
    std::string out;
    toUtf8(text, out);
    return out;
}

void toUtf8(std::u16string_view text, std::string& out) {
    // Texts are ASCII for the most part or throughout: that part is copied unit by unit.
    const auto plain = std::find_if(text.begin(), text.end(), [](char16_t unit) { return unit >= 0x80; });
    out.resize(static_cast<std::size_t>(plain - text.begin()));
    std::transform(text.begin(), plain, out.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    for (std::size_t i = out.size(); i < text.size(); ++i) {
        char32_t point = text[i];
        const bool pair =
            inRange(text[i], 0xD800, 0xDBFF) && i + 1 < text.size() && inRange(text[i + 1], 0xDC00, 0xDFFF);
        if (pair) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        }
        appendUtf8(out, point);
    }
}

std::u16string fromUtf8(std::string_view text) {
    std::u16string out;
    fromUtf8(text, out);
    return out;
}

bool isAscii(std::string_view bytes) noexcept { return !anyByte(bytes, bytesBeyondAscii); }

bool isAscii(std::u16string_view text) noexcept {
    return std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
}

char16_t* widenAscii(std::string_view bytes, char16_t* to) noexcept {
    const char* const from = bytes.data();
    const std::size_t count = bytes.size();
    if (count >= 16)
        widenBlocks<16>(from, count, to);
    else if (count >= 8)
        widenBlocks<8>(from, count, to);
    else
        for (std::size_t i = 0; i < count; ++i) to[i] = static_cast<unsigned char>(from[i]);
    return to + count;
}

char* narrowAscii(std::u16string_view text, char* to) noexcept {
    return std::ranges::transform(text, to, [](char16_t unit) { return static_cast<char>(unit); }).out;
}

void fromUtf8(std::string_view text, std::u16string& out, std::size_t begin) {
    out.resize(begin + text.size()); // never fewer than the code units that come
    out.resize(static_cast<std::size_t>(widenUtf8(text, out.data() + begin) - out.data()));
}

} // namespace cvlog::base
