#include "widgets/row_keys.h"

#include <gtest/gtest.h>

#include <limits>

namespace cvlog::widgets {
namespace {

TEST(NumberedRowKeys, ReadAndAreFoundAsTexts) {
    RowKeyBook book;
    book.setNumbered(3, 7);
    book.setNumbered(5, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(book.of(3), u"k7");
    EXPECT_EQ(book.of(5), u"k2147483647");
    EXPECT_EQ(book.of(4), u"");
    EXPECT_EQ(book.of(2), u"");
    EXPECT_EQ(book.of(6), u"");
    EXPECT_EQ(book.find(u"k7"), 3U);
    EXPECT_EQ(book.find(u"K7"), 3U);
    EXPECT_EQ(book.find(u"k2147483647"), 5U);
}

TEST(NumberedRowKeys, AreFoundByTheirOneSpellingOnly) {
    RowKeyBook book;
    book.setNumbered(1, 7);
    for (const auto* key : {u"", u"k", u"7", u"k07", u"k7 ", u"k-7", u"kk", u"x7", u"k8", u"k4294967303",
                            u"k99999999999999999999"})
        EXPECT_EQ(book.find(key), 0U) << testing::PrintToString(key);
}

TEST(NumberedRowKeys, MayBeGivenTwiceAndGoOneByOne) {
    RowKeyBook book;
    book.setNumbered(1, 7);
    book.setNumbered(2, 7);
    EXPECT_EQ(book.of(2), u"k7");
    EXPECT_EQ(book.find(u"k7"), 1U) << "the elder";
    book.set(1, u"");
    EXPECT_EQ(book.of(1), u"");
    EXPECT_EQ(book.of(2), u"k7");
    EXPECT_EQ(book.find(u"k7"), 2U);
}

TEST(NumberedRowKeys, GiveWayToOtherKeysAndTakeTheirPlace) {
    RowKeyBook book;
    book.setNumbered(4, 7);
    book.set(4, u"Name");
    EXPECT_EQ(book.of(4), u"Name");
    EXPECT_EQ(book.find(u"k7"), 0U);
    book.setNumbered(4, 8);
    EXPECT_EQ(book.of(4), u"k8");
    EXPECT_EQ(book.find(u"name"), 0U);
    book.set(9, u"k9");
    book.setNumbered(2, 5);
    EXPECT_EQ(book.of(2), u"k5") << "an earlier row";
    EXPECT_EQ(book.of(4), u"k8");
    EXPECT_EQ(book.find(u"k9"), 9U);
    book.clear();
    EXPECT_EQ(book.find(u"k5"), 0U);
    EXPECT_EQ(book.of(2), u"");
}

} // namespace
} // namespace cvlog::widgets
