#include "resources/string_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace cvlog::resources {
namespace {

constexpr Language kLanguages[] = {Language::English, Language::Japanese, Language::Korean};

const std::vector<int> kLogMenu{108, 109, 110, 111, 112, 113, 114, 115, 116, 118, 119};
const std::vector<int> kLogControlMenu{140, 141, 142, 143, 144, 145, 146, 147, 148, 150, 151};
const std::vector<int> kHistoryMenu{121, 122, 123, 124, 125};

const std::map<int, std::u16string> kCaptions{
    {100, u"Date"},
    {101, u"Elapsed"},
    {102, u"Method"},
    {103, u"Entity Type"},
    {104, u"Object"},
    {105, u"Result"},
    {106, u"Message"},
    {107, u"PopUpLog"},
    {108, u"Show &Errors"},
    {109, u"Co&llapse" + std::u16string(19, u' ') + u"( Grey - )"},
    {110, u"E&xpand" + std::u16string(20, u' ') + u"( Grey +)"},
    {111, u"&Delete Records"},
    {112, u"Cle&ar Log"},
    {113, u"&Copy Records"},
    {114, u"&Report..."},
    {115, u"H&istory"},
    {116, u"Col&umns"},
    {117, u"<column>"},
    {118, u"Doc&ked"},
    {119, u"&Hide"},
    {120, u"PopUpHistory"},
    {121, u"Show &Errors"},
    {122, u"&Delete History Records"},
    {123, u"C&lear Log History"},
    {124, u"&Copy History Records"},
    {125, u"&Report..."},
    {126, u"OK"},
    {127, u"Do not use the old Dock function! Use the new Parent property of the Log ActiveX"},
    {128, u"Expanding ..."},
    {129, std::u16string(6, u' ') + u"Cancel"},
    {130, u"PopUp"},
    {131, u"&History"},
    {152, u"Activity Log History"},
};

const std::map<int, std::u16string> kMessages{
    {500, u"Activity Log History - Deleting records..."},
    {501, u"Activity Log History"},
    {502, u"Task queue was canceled"},
    {503, u"Method was canceled by the user"},
    {504, u"Method was canceled due to timeout"},
    {505, u"Method failed"},
    {506, u"Method was applied successfully"},
    {507, u"Method was executed with warnings"},
    {508, u"Method was executed with errors"},
    {509, u"Method was finished with an unexpected return code (RC = %1)"},
    {510, u"See Activity Log for details."},
    {511, u"Do you wish to see the log now?"},
    {512, u"... Some records are hidden ..."},
    {513, u"Activity Log"},
    {514, u"Current session"},
    {515, u" applied "},
    {516, u" applied to "},
};

// 132..138 repeat 100..106 and 139..151 repeat 107..119: one run moved by 32.
int originalOf(int id) { return id >= 132 && id <= 151 ? id - 32 : id; }

std::vector<int> allIds() {
    std::vector<int> ids;
    for (int id = 100; id <= 152; ++id) ids.push_back(id);
    for (int id = 500; id <= 516; ++id) ids.push_back(id);
    return ids;
}

std::string describe(Language language, int id) {
    static const char* const kNames[] = {"English", "Japanese", "Korean"};
    return std::string(kNames[static_cast<int>(language)]) + " " + std::to_string(id);
}

template <typename Check>
void forEachText(Check check) {
    for (Language language : kLanguages) {
        for (int id : allIds()) {
            SCOPED_TRACE(describe(language, id));
            check(language, id, text(language, id));
        }
    }
}

std::size_t countOf(std::u16string_view text, std::u16string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
    return count;
}

std::size_t longestRunOfBlanks(std::u16string_view text) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (char16_t c : text) {
        run = c == u' ' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

bool hasCharacterIn(std::u16string_view text, char16_t first, char16_t last) {
    return std::any_of(text.begin(), text.end(), [=](char16_t c) { return c >= first && c <= last; });
}

bool isJapanese(std::u16string_view text) {
    return hasCharacterIn(text, u'\u3040', u'\u30FF') || hasCharacterIn(text, u'\u4E00', u'\u9FFF');
}

bool isKorean(std::u16string_view text) { return hasCharacterIn(text, u'\uAC00', u'\uD7A3'); }

// The mnemonic in upper case, NUL when the caption has none.
char16_t mnemonicOf(std::u16string_view caption) {
    const auto at = caption.find(u'&');
    if (at == caption.npos || at + 1 == caption.size()) return u'\0';
    const char16_t c = caption[at + 1];
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

TEST(StringTable, HasSeventyIds) {
    EXPECT_EQ(allIds().size(), 70u);
    int known = 0;
    for (int id = -1000; id <= 1000; ++id) known += isStringId(id) ? 1 : 0;
    EXPECT_EQ(known, 70);
    for (int id : allIds()) EXPECT_TRUE(isStringId(id)) << id;
}

TEST(StringTable, EveryIdHasATextInEveryLanguage) {
    forEachText([](Language, int, std::u16string_view text) { EXPECT_FALSE(text.empty()); });
}

TEST(StringTable, UnknownIdsAreEmpty) {
    for (Language language : kLanguages) {
        for (int id : {-1, 0, 1, 99, 153, 200, 499, 517, 600, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
            EXPECT_FALSE(isStringId(id)) << id;
            EXPECT_TRUE(text(language, id).empty()) << describe(language, id);
        }
    }
}

TEST(StringTable, EnglishTextsAreExact) {
    for (int id : allIds()) {
        const auto& expected = id < 500 ? kCaptions.at(originalOf(id)) : kMessages.at(id);
        EXPECT_TRUE(text(Language::English, id) == expected) << id;
    }
}

TEST(StringTable, RepeatedIdsHaveEqualTexts) {
    for (Language language : kLanguages) {
        for (int id = 132; id <= 151; ++id)
            EXPECT_TRUE(text(language, id) == text(language, originalOf(id))) << describe(language, id);
        EXPECT_TRUE(text(language, 152) == text(language, 501)) << describe(language, 152);
    }
}

TEST(StringTable, TranslationsAreInTheirOwnScript) {
    for (int id : allIds()) {
        EXPECT_TRUE(isJapanese(text(Language::Japanese, id)) || id == 126) << id;
        EXPECT_FALSE(isKorean(text(Language::Japanese, id))) << id;
        EXPECT_TRUE(isKorean(text(Language::Korean, id))) << id;
        EXPECT_FALSE(isJapanese(text(Language::Korean, id))) << id;
        EXPECT_FALSE(isJapanese(text(Language::English, id)) || isKorean(text(Language::English, id))) << id;
    }
}

TEST(StringTable, NoTextHasControlCharacters) {
    forEachText([](Language, int, std::u16string_view text) {
        EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u' '; }));
    });
}

TEST(StringTable, OnlyTheUnexpectedCodeHasAPlaceholder) {
    forEachText([](Language, int id, std::u16string_view text) {
        EXPECT_EQ(countOf(text, u"%1"), id == 509 ? 1u : 0u);
        EXPECT_EQ(countOf(text, u"%"), id == 509 ? 1u : 0u);
    });
}

TEST(StringTable, KeyHintsAreSetOffByBlanks) {
    for (Language language : kLanguages) {
        SCOPED_TRACE(describe(language, 109));
        EXPECT_GE(longestRunOfBlanks(text(language, 109)), 19u);
        EXPECT_GE(longestRunOfBlanks(text(language, 110)), 20u);
        const auto collapse = text(language, 109);
        const auto expand = text(language, 110);
        EXPECT_EQ(countOf(collapse, u"   ( "), 1u);
        EXPECT_EQ(countOf(expand, u"   ( "), 1u);
        EXPECT_TRUE(collapse.ends_with(u" - )"));
        EXPECT_TRUE(expand.ends_with(u" +)") || expand.ends_with(u" + )"));
    }
}

TEST(StringTable, CancelLeavesRoomForThePicture) {
    for (Language language : kLanguages)
        EXPECT_EQ(text(language, 129).find_first_not_of(u' '), 6u) << describe(language, 129);
}

TEST(StringTable, OnlyCancelAndTheJoinersTouchBlanksAtTheirEnds) {
    forEachText([](Language, int id, std::u16string_view text) {
        const bool joiner = id == 515 || id == 516;
        EXPECT_EQ(text.front() == u' ', joiner || id == 129);
        EXPECT_EQ(text.back() == u' ', joiner);
    });
}

TEST(StringTable, ColumnPlaceholderKeepsItsAngleBrackets) {
    for (Language language : kLanguages) {
        const auto column = text(language, 117);
        EXPECT_TRUE(column.size() > 2 && column.front() == u'<' && column.back() == u'>');
    }
}

TEST(StringTable, AlertNamesTheMembersItSpeaksOf) {
    for (Language language : kLanguages) {
        for (std::u16string_view name : {u"Dock", u"Parent", u"ActiveX"})
            EXPECT_EQ(countOf(text(language, 127), name), 1u) << describe(language, 127);
    }
}

TEST(StringTable, OnlyMenuItemsHaveMnemonics) {
    std::set<int> items{131};
    for (const auto* menu : {&kLogMenu, &kLogControlMenu, &kHistoryMenu})
        items.insert(menu->begin(), menu->end());
    forEachText(
        [&](Language, int id, std::u16string_view text) { EXPECT_EQ(countOf(text, u"&"), items.count(id)); });
}

TEST(StringTable, MnemonicsDifferWithinAMenu) {
    for (Language language : kLanguages) {
        for (const auto* menu : {&kLogMenu, &kLogControlMenu, &kHistoryMenu}) {
            std::set<char16_t> seen;
            for (int id : *menu) {
                const char16_t mnemonic = mnemonicOf(text(language, id));
                EXPECT_TRUE(mnemonic >= u'A' && mnemonic <= u'Z') << describe(language, id);
                EXPECT_TRUE(seen.insert(mnemonic).second) << describe(language, id);
            }
        }
    }
}

TEST(StringTable, EastAsianMnemonicsStandInParentheses) {
    std::vector<int> items{131};
    items.insert(items.end(), kLogMenu.begin(), kLogMenu.end());
    items.insert(items.end(), kHistoryMenu.begin(), kHistoryMenu.end());
    for (Language language : {Language::Japanese, Language::Korean}) {
        for (int id : items) {
            const char16_t mnemonic = mnemonicOf(text(Language::English, id));
            const std::u16string shown = std::u16string(u"(&") + mnemonic + u")";
            EXPECT_EQ(countOf(text(language, id), shown), 1u) << describe(language, id);
        }
    }
}

struct LangIdCase {
    std::uint16_t langId;
    Language language;
};

TEST(LanguageForLangId, LooksAtThePrimaryLanguageOnly) {
    constexpr LangIdCase kCases[] = {
        {0x0409, Language::English},  {0x0809, Language::English},  {0x0000, Language::English},
        {0x0411, Language::Japanese}, {0x0011, Language::Japanese}, {0x0811, Language::Japanese},
        {0x0412, Language::Korean},   {0x0012, Language::Korean},   {0x0812, Language::Korean},
        {0x0404, Language::English},  {0x0804, Language::English},  {0x0407, Language::English},
        {0x0410, Language::English},  {0x0413, Language::English},  {0x0111, Language::English},
        {0x0112, Language::English},  {0xFC11, Language::Japanese}, {0xFC12, Language::Korean},
        {0xFFFF, Language::English},
    };
    for (const auto& c : kCases) EXPECT_EQ(languageForLangId(c.langId), c.language) << c.langId;
}

} // namespace
} // namespace cvlog::resources
