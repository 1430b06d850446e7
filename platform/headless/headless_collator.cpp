#include "platform/headless/headless_collator.h"

#include "base/text.h"

#include <algorithm>
#include <array>

namespace cvlog::platform::headless {

namespace {

// One byte a character for the frequent ones; a lead byte and the code unit for the others. 0 ends the first level.
constexpr unsigned kFirstControl = 0x02;
constexpr unsigned kBlank = 0x30;
constexpr unsigned kFirstPunctuation = 0x31;
constexpr unsigned kSymbolLead = 0x70;
constexpr unsigned kFirstDigit = 0x80;
constexpr unsigned kFirstLetter = 0xA0;
constexpr unsigned kOtherLead = 0xE0;

constexpr std::u16string_view kPunctuation = u"_-,;:!?.'\"()[]{}@*/\\&#%`^+<=>|~$";

// The base letters of U+00C0 to U+017F in capitals; a blank for what is no accented letter.
constexpr std::u16string_view kBaseLetters =
    u"AAAAAAACEEEEIIIIDNOOOOO OUUUUYTS"
    u"AAAAAAACEEEEIIIIDNOOOOO OUUUUYTY"
    u"AAAAAACCCCCCCCDDDDEEEEEEEEEEGGGGGGGGHHHHIIIIIIIIIIIIJJKKK"
    u"LLLLLLLLLLNNNNNNNNNOOOOOOOORRRRRRSSSSSSSSTTTTTTUUUUUUUUUUUUWWYYYZZZZZZS";
static_assert(kBaseLetters.size() == 0x180 - 0xC0);

struct Letter {
    char16_t base;
    unsigned char accent; // 1: none
};

Letter letterOf(char16_t unit) noexcept {
    if (unit >= 0xC0 && unit < 0x180) {
        const char16_t capital = base::foldCase(unit);
        const char16_t base = kBaseLetters[static_cast<std::size_t>(unit - 0xC0)];
        if (base != u' ') return {base, static_cast<unsigned char>(2 + (capital - 0xC0) % 250)};
    }
    if (unit >= 0xFF01 && unit <= 0xFF5E) // full width forms
        return {base::foldCase(static_cast<char16_t>(unit - 0xFEE0)), 2};
    return {base::foldCase(unit), 1};
}

bool isSymbol(char16_t unit) noexcept {
    return (unit >= 0x7F && unit < 0xC0) || unit == 0xD7 || unit == 0xF7 ||
           (unit >= 0x2000 && unit < 0x2C00) || (unit >= 0x3000 && unit < 0x3040);
}

constexpr unsigned leadWeight(unsigned lead, char16_t unit) noexcept { return lead << 16U | unit; }

constexpr unsigned asciiByte(char16_t unit) noexcept {
    if (unit < 0x20) return kFirstControl + unit;
    if (unit == u' ') return kBlank;
    if (unit >= u'0' && unit <= u'9') return kFirstDigit + (unit - u'0');
    if (unit >= u'A' && unit <= u'Z') return kFirstLetter + (unit - u'A');
    if (unit >= u'a' && unit <= u'z') return kFirstLetter + (unit - u'a');
    return kFirstPunctuation + static_cast<unsigned>(kPunctuation.find(unit));
}

constexpr char16_t kAsciiEnd = 0x7F;
constexpr auto kAsciiBytes = [] {
    std::array<unsigned char, kAsciiEnd> bytes{};
    for (char16_t unit = 0; unit < kAsciiEnd; ++unit)
        bytes[unit] = static_cast<unsigned char>(asciiByte(unit));
    return bytes;
}();

/// The first level's bytes of a unit as a number: one byte, in front, or three.
unsigned weightOf(char16_t unit) noexcept {
    if (unit < kAsciiEnd) return static_cast<unsigned>(kAsciiBytes[unit]) << 16U;
    const char16_t base = letterOf(unit).base;
    if (base < kAsciiEnd) return static_cast<unsigned>(kAsciiBytes[base]) << 16U;
    return leadWeight(isSymbol(base) ? kSymbolLead : kOtherLead, base);
}

unsigned char accentOf(char16_t unit) noexcept { return unit < kAsciiEnd ? 1 : letterOf(unit).accent; }

void appendByte(std::string& key, unsigned weight) {
    key.push_back(static_cast<char>(static_cast<unsigned char>(weight)));
}

void appendWeight(std::string& key, unsigned weight) {
    appendByte(key, weight >> 16U);
    if (weight >> 16U != kSymbolLead && weight >> 16U != kOtherLead) return;
    appendByte(key, weight >> 8U & 0xFFU);
    appendByte(key, weight & 0xFFU);
}

} // namespace

void HeadlessCollator::appendSortKey(std::u16string_view text, std::string& keys) {
    std::size_t accentsEnd = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        appendWeight(keys, weightOf(text[i]));
        if (accentOf(text[i]) != 1) accentsEnd = i + 1;
    }
    keys.push_back('\0');
    for (const char16_t unit : text.substr(0, accentsEnd)) appendByte(keys, accentOf(unit));
}

int HeadlessCollator::compare(std::u16string_view left, std::u16string_view right) noexcept {
    const std::size_t shorter = std::min(left.size(), right.size());
    int accents = 0;
    for (std::size_t i = 0; i < shorter; ++i) {
        if (left[i] == right[i]) continue;
        const unsigned leftWeight = weightOf(left[i]);
        const unsigned rightWeight = weightOf(right[i]);
        if (leftWeight != rightWeight) return leftWeight < rightWeight ? -1 : 1;
        if (accents == 0) accents = accentOf(left[i]) - accentOf(right[i]);
    }
    if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
    return accents;
}

} // namespace cvlog::platform::headless
