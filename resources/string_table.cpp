#include "resources/string_table.h"

#include "resources/string_entry.h"
#include "resources/strings_en.h"
#include "resources/strings_ja.h"
#include "resources/strings_ko.h"

namespace cvlog::resources {

namespace {

constexpr std::uint16_t kPrimaryLanguageMask = 0x03FF;
constexpr std::uint16_t kPrimaryJapanese = 0x11;
constexpr std::uint16_t kPrimaryKorean = 0x12;

const StringList& stringsOf(Language language) {
    switch (language) {
    case Language::Japanese:
        return kJapaneseStrings;
    case Language::Korean:
        return kKoreanStrings;
    case Language::English:
        break;
    }
    return kEnglishStrings;
}

} // namespace

std::u16string_view text(Language language, int id) {
    if (!isStringId(id)) return {};
    return stringsOf(language)[stringIndex(id)].text;
}

Language languageForLangId(std::uint16_t windowsLanguageId) {
    switch (windowsLanguageId & kPrimaryLanguageMask) {
    case kPrimaryJapanese:
        return Language::Japanese;
    case kPrimaryKorean:
        return Language::Korean;
    default:
        return Language::English;
    }
}

} // namespace cvlog::resources
