#include "platform/headless/headless_collator.h"

#include "base/text.h"

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

void appendByte(std::string& key, unsigned weight) {
    key.push_back(static_cast<char>(static_cast<unsigned char>(weight)));
}

void appendWithLead(std::string& key, unsigned lead, char16_t unit) {
    appendByte(key, lead);
    appendByte(key, unit >> 8U);
    appendByte(key, unit & 0xFFU);
}

void appendWeight(std::string& key, char16_t unit) {
    if (unit < 0x20)
        appendByte(key, kFirstControl + unit);
    else if (unit == u' ')
        appendByte(key, kBlank);
    else if (unit >= u'0' && unit <= u'9')
        appendByte(key, kFirstDigit + (unit - u'0'));
    else if (unit >= u'A' && unit <= u'Z')
        appendByte(key, kFirstLetter + (unit - u'A'));
    else if (const auto rank = kPunctuation.find(unit); rank != std::u16string_view::npos)
        appendByte(key, kFirstPunctuation + static_cast<unsigned>(rank));
    else
        appendWithLead(key, isSymbol(unit) ? kSymbolLead : kOtherLead, unit);
}

} // namespace

std::string HeadlessCollator::sortKey(std::u16string_view text) {
    std::string key;
    key.reserve(text.size() + 1);
    std::string accents;
    std::size_t accentsEnd = 0;
    for (const char16_t unit : text) {
        const Letter letter = letterOf(unit);
        appendWeight(key, letter.base);
        appendByte(accents, letter.accent);
        if (letter.accent != 1) accentsEnd = accents.size();
    }
    key.push_back('\0');
    key.append(accents, 0, accentsEnd);
    return key;
}

} // namespace cvlog::platform::headless
