#include "resources/spoken_words.h"

#include "base/text.h"

#include <array>
#include <utility>

namespace cvlog::resources {

namespace {

constexpr std::size_t kWords = static_cast<std::size_t>(Spoken::DoubleClick) + 1;
using Words = std::array<std::u16string_view, kWords>;

// In the order of the enumeration.
constexpr Words kEnglish{u"succeeded",
                         u"warnings",
                         u"failed",
                         u"errors",
                         u"canceled",
                         u"current session",
                         u"error message of the entry above",
                         u"sorted by %1, ascending",
                         u"sorted by %1, descending",
                         u"Double Click"};
constexpr Words kJapanese{u"成功",
                          u"警告",
                          u"失敗",
                          u"エラー",
                          u"キャンセル",
                          u"現在のセッション",
                          u"上のエントリのエラー メッセージ",
                          u"%1 の昇順で並べ替え",
                          u"%1 の降順で並べ替え",
                          u"ダブルクリック"};
constexpr Words kKorean{u"성공",
                        u"경고",
                        u"실패",
                        u"오류",
                        u"취소됨",
                        u"현재 세션",
                        u"위 항목의 오류 메시지",
                        u"%1 기준 오름차순 정렬",
                        u"%1 기준 내림차순 정렬",
                        u"두 번 클릭"};

constexpr std::pair<std::u16string_view, Spoken> kIcons[] = {
    {u"Good", Spoken::Good}, {u"Suspect", Spoken::Suspect}, {u"Failure", Spoken::Failure},
    {u"Bad", Spoken::Bad},   {u"Cancel", Spoken::Cancel},   {u"Session", Spoken::Session}};

constexpr bool isComplete(const Words& words) {
    for (const std::u16string_view word : words)
        if (word.empty()) return false;
    return true;
}
static_assert(isComplete(kEnglish) && isComplete(kJapanese) && isComplete(kKorean));

const Words& wordsOf(Language language) {
    switch (language) {
    case Language::Japanese:
        return kJapanese;
    case Language::Korean:
        return kKorean;
    case Language::English:
        break;
    }
    return kEnglish;
}

} // namespace

std::u16string_view spoken(Language language, Spoken word) {
    return wordsOf(language)[static_cast<std::size_t>(word)];
}

std::u16string_view spokenIcon(Language language, std::u16string_view key) {
    for (const auto& [icon, word] : kIcons)
        if (base::equalsIgnoringCase(icon, key)) return spoken(language, word);
    return {};
}

} // namespace cvlog::resources
