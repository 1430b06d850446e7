#include "platform/headless/headless_collator.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace cvlog::platform::headless
