#include "view/list_set.h"

#include "tests/support/log_world.h"
#include "view/row_copy.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using tests::LogWorld;
using tests::rowsOf;

widgets::RowPtr rowOf(const std::u16string& text, const std::u16string& tag = {}) {
    return widgets::makeRow({text, tag, {}, {{u"Elapsed", text, {}, {}, {}}}});
}

class ListSet : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        for (int i = 0; i < 3; ++i) world.addControl();
    }
    LogWorld world;
};

TEST_F(ListSet, ResetsEveryList) {
    for (const std::size_t index : {0U, 1U, 2U}) {
        world.list(index).append(rowOf(u"a"));
        world.list(index).setSort(2, widgets::SortOrder::Descending);
        world.list(index).setSorted(true);
        world.list(index).setColumnIcon(3, u"SortUp");
    }
    ResetLists(world.globals);
    for (const std::size_t index : {0U, 1U, 2U}) {
        EXPECT_EQ(world.list(index).rowCount(), 0);
        EXPECT_FALSE(world.list(index).sorted());
        EXPECT_EQ(world.list(index).sortKey(), 0) << "as in a new list";
        EXPECT_EQ(world.list(index).sortOrder(), widgets::SortOrder::Ascending);
        for (int column = 1; column <= 7; ++column)
            EXPECT_EQ(world.list(index).column(column).icon, u"SortEmpty");
        EXPECT_EQ(platform::headless::peerOf(world.list(index)).told("repaint"), 1);
    }
}

TEST_F(ListSet, ClearsEveryListAndLeavesItsSorting) {
    world.list(1).append(rowOf(u"a"));
    world.list(1).setSorted(true);
    world.list(1).setColumnIcon(1, u"SortDown");
    ClearLists(world.globals);
    EXPECT_EQ(world.list(1).rowCount(), 0);
    EXPECT_TRUE(world.list(1).sorted());
    EXPECT_EQ(world.list(1).column(1).icon, u"SortDown");
}

TEST_F(ListSet, MarksTheSortColumnOfASortedListOnly) {
    widgets::ListView& list = world.list();
    RefreshSortIcon(list);
    EXPECT_EQ(list.column(1).icon, u"");
    list.setSorted(true);
    RefreshSortIcon(list);
    EXPECT_EQ(list.column(1).icon, u"SortDown") << "down marks ascending";
    list.setSort(4, widgets::SortOrder::Descending);
    RefreshSortIcon(list);
    EXPECT_EQ(list.column(5).icon, u"SortUp");
}

TEST_F(ListSet, BringsANewRowIntoTheOtherListsAtItsSortedPlace) {
    for (const std::size_t index : {0U, 1U, 2U}) {
        world.list(index).append(rowOf(u"a"));
        world.list(index).append(rowOf(u"c"));
    }
    world.list(1).setSorted(true);
    const widgets::RowPtr row = rowOf(u"b");
    world.list(0).append(row);
    PropagateNewRow(world.globals, world.list(0), world.list(0).rowCount());
    EXPECT_EQ(world.list(0).rowCount(), 3) << "not twice in its own list";
    EXPECT_EQ(world.list(1).content(2).get(), row.get());
    EXPECT_EQ(world.list(2).content(3).get(), row.get());
    EXPECT_EQ(world.list(1).column(1).icon, u"SortDown");
    EXPECT_FALSE(world.list(2).isSelected(3));
    for (const std::size_t index : {1U, 2U}) {
        EXPECT_NE(world.list(index).smallIcons(), nullptr);
        EXPECT_NE(world.list(index).headerIcons(), nullptr);
        EXPECT_EQ(platform::headless::peerOf(world.list(index)).scrolledTo(), std::vector<int>{3});
    }
}

TEST_F(ListSet, InsertsOnlyTheRowsThatDifferInTextOrTag) {
    widgets::ListView& source = world.list(0);
    widgets::ListView& target = world.list(1);
    for (const char16_t* text : {u"a", u"b", u"c", u"d"}) source.append(rowOf(text, u"tag"));
    target.append(rowOf(u"A", u"TAG"));
    target.append(rowOf(u"c", u"tag"));
    const widgets::RowContent* kept = target.content(2).get();
    CopyAllRows(source, target);
    EXPECT_EQ(target.rowCount(), 4);
    EXPECT_EQ(target.row(1).text(), u"A") << "case does not matter";
    EXPECT_EQ(target.content(2).get(), source.content(2).get());
    EXPECT_EQ(target.content(3).get(), kept);
    EXPECT_EQ(target.content(4).get(), source.content(4).get());
}

TEST_F(ListSet, TellsRowsOfTheSameSecondApartByTheirNumbers) {
    widgets::ListView& source = world.list(0);
    widgets::ListView& target = world.list(1);
    for (int i = 0; i < 3; ++i) source.append(rowOf(u"a", u"tag"));
    target.insertCopy(1, source, 2);
    target.insertCopy(2, source, 3);
    CopyAllRows(source, target);
    ASSERT_EQ(target.rowCount(), 3);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(target.idAt(i), source.idAt(i)) << "row " << i;
}

TEST_F(ListSet, InsertsARowOfAnotherTagAndRemovesNone) {
    widgets::ListView& source = world.list(0);
    widgets::ListView& target = world.list(1);
    source.append(rowOf(u"a", u"one"));
    target.append(rowOf(u"a", u"two"));
    CopyAllRows(source, target);
    ASSERT_EQ(target.rowCount(), 2);
    EXPECT_EQ(target.row(1).tag(), u"one");
    EXPECT_EQ(target.row(2).tag(), u"two");
}

} // namespace
} // namespace cvlog::view
