#include "platform/headless/headless_collator.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <random>

namespace cvlog::platform::headless {
namespace {

struct OrderedPair {
    const char16_t* less;
    const char16_t* greater;
};

class CollationOrder : public testing::TestWithParam<OrderedPair> {};

TEST_P(CollationOrder, PutsTheFirstBeforeTheSecond) {
    HeadlessCollator collator;
    EXPECT_LT(collator.sortKey(GetParam().less), collator.sortKey(GetParam().greater));
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, CollationOrder,
    testing::Values(OrderedPair{u"1:00:05", u"10:00:05"}, OrderedPair{u"10:00:05", u"2:00:05"},
                    OrderedPair{u"01:00:05", u"10:00:05"}, OrderedPair{u"", u" "}, OrderedPair{u"a", u"aa"},
                    OrderedPair{u" a", u"a"}, OrderedPair{u"-", u"0"}, OrderedPair{u"9", u"a"},
                    OrderedPair{u"a", u"B"}, OrderedPair{u"A", u"b"}, OrderedPair{u"a1", u"aa"},
                    OrderedPair{u"e", u"\u00E9"}, OrderedPair{u"\u00E9", u"f"},
                    OrderedPair{u"resume", u"r\u00E9sum\u00E9"}, OrderedPair{u"r\u00E9sum\u00E9", u"resumf"},
                    OrderedPair{u"resum\u00E9", u"r\u00E9sume"}, OrderedPair{u"z", u"\u03B1"},
                    OrderedPair{u"\u03B1", u"\u0431"}, OrderedPair{u"z", u"\u3042"},
                    OrderedPair{u"\u3042", u"\u30A2"}, OrderedPair{u"\u30A2", u"\u4E00"},
                    OrderedPair{u"\u4E00", u"\u4E01"}, OrderedPair{u"\u4E00", u"\uAC00"},
                    OrderedPair{u"\uAC00", u"\uAC01"}, OrderedPair{u"a", u"\uFF41"},
                    OrderedPair{u"\uFF41", u"b"}));

TEST(CollationKeys, AreEqualExactlyForTextsThatDifferInCaseOnly) {
    HeadlessCollator collator;
    EXPECT_EQ(collator.sortKey(u"Payroll \u00C9"), collator.sortKey(u"PAYROLL \u00E9"));
    EXPECT_NE(collator.sortKey(u"co-op"), collator.sortKey(u"coop"));
}

TEST(CollationKeys, AreAppended) {
    HeadlessCollator collator;
    std::string keys = "before";
    collator.appendSortKey(u"a\u00E9", keys);
    EXPECT_EQ(keys, "before" + collator.sortKey(u"A\u00C9"));
}

TEST(CollationKeys, HaveTheOrderOfTheComparison) {
    constexpr std::u16string_view kUnits =
        u" -,:09aAbZz\u007F\u00E9\u00C8\u00D7\u03B1\u3042\u4E00\uFF21\u0001";
    std::mt19937 random(7);
    const auto text = [&] {
        std::u16string made;
        for (auto length = random() % 5; length > 0; --length) made += kUnits[random() % kUnits.size()];
        return made;
    };
    const auto sign = [](int number) { return (number > 0) - (number < 0); };
    HeadlessCollator collator;
    for (int i = 0; i < 20'000; ++i) {
        const std::u16string left = text();
        const std::u16string right = text();
        ASSERT_EQ(sign(HeadlessCollator::compare(left, right)),
                  sign(collator.sortKey(left).compare(collator.sortKey(right))))
            << base::toUtf8(left) << " | " << base::toUtf8(right);
    }
}

} // namespace
} // namespace cvlog::platform::headless
