// The keys order texts as the system's own comparison does.

#include "base/text.h"
#include "platform/win32/collator.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_headers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

int sign(int number) { return (number > 0) - (number < 0); }

int byKeys(std::u16string_view left, std::u16string_view right) {
    Collator collator;
    return sign(collator.sortKey(left).compare(collator.sortKey(right)));
}

TEST(Win32Collator, OrdersTexts) {
    const struct {
        std::u16string_view smaller, larger;
    } pairs[] = {
        {u"1:00:05", u"10:00:05"},
        {u"10:00:05", u"2:00:05"},
        {u"", u"a"},
        {u"a", u"b"},
        {u"a", u"ab"},
        {u"a", u"B"},
        {u"A", u"b"},
        {u"apple", u"Banana"},
        {u"9", u"a"},
        {u"!", u"1"},
        {u"resume", u"resumes"},
        {u"2023-12-31", u"2024-01-01"},
        {u"\u00E9tude", u"f"},
        {u"z", u"\u3042"},
        {u"\u3042", u"\u65E5"},
    };
    for (const auto& pair : pairs) {
        EXPECT_EQ(byKeys(pair.smaller, pair.larger), -1) << base::toUtf8(pair.smaller);
        EXPECT_EQ(byKeys(pair.larger, pair.smaller), 1) << base::toUtf8(pair.smaller);
    }
}

TEST(Win32Collator, IgnoresCase) {
    EXPECT_EQ(byKeys(u"Good", u"gOOD"), 0);
    EXPECT_EQ(byKeys(u"\u00C4", u"\u00E4"), 0);
    EXPECT_NE(byKeys(u"a", u"\u00E4"), 0);
}

TEST(Win32Collator, AgreesWithTheSystemsComparison) {
    const std::vector<std::u16string> texts = {
        u"",   u" ", u"a",       u"A b",      u"ab",      u"a-b",   u"a_b",     u"1",
        u"10", u"2", u"1:00:05", u"10:00:05", u"2:00:05", u"(a)",   u"[a]",     u"\u00E9",
        u"e",  u"f", u"\u30A2",  u"\u65E5",   u"\uD55C",  u"Zebra", u"zebra 2", u"%1"};
    for (const auto& left : texts)
        for (const auto& right : texts) {
            const int compared =
                CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, wideView(left).data(),
                                static_cast<int>(left.size()), wideView(right).data(),
                                static_cast<int>(right.size()), nullptr, nullptr, 0);
            EXPECT_EQ(byKeys(left, right), compared - CSTR_EQUAL)
                << base::toUtf8(left) << " | " << base::toUtf8(right);
        }
}

TEST(Win32Collator, ComparesNoMoreThanTheStartOfHugeTextsSoThatSortingStaysQuick) {
    const std::u16string start(Collator::kLongestCompared, u'm');
    EXPECT_EQ(byKeys(start + u"a", start + u"b"), 0);
    EXPECT_EQ(byKeys(start.substr(1) + u"a", start.substr(1) + u"b"), -1);
}

TEST(Win32Collator, TakesTextsOfAnyLength) {
    const std::u16string start(2000, u'm');
    EXPECT_EQ(byKeys(start + u"a", start + u"b"), -1);
    EXPECT_EQ(byKeys(std::u16string(1'000'000, u'm'), std::u16string(1'000'000, u'n')), -1);
    EXPECT_EQ(byKeys(std::u16string(u"a\0b", 3), std::u16string(u"a\0c", 3)), -1);
}

} // namespace
} // namespace cvlog::platform::win32
