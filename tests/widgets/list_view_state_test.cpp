// Columns, sorting, looks, measuring and the user of a list.

#include "tests/widgets/list_view_fixture.h"

#include <stdexcept>

namespace cvlog::widgets {
namespace {

TEST_F(ListViewTest, FindsColumnsByKeyAndNumbersTheirPositions) {
    EXPECT_EQ(list.columnOf(u"SECOND"), 2);
    EXPECT_EQ(list.columnOf(u"None"), 0);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(list.column(i).position, i);
}

TEST_F(ListViewTest, MovesAColumnAndMakesRoom) {
    struct Move {
        int column, to;
        std::vector<int> positions;
    };
    for (const Move& move :
         {Move{1, 3, {3, 1, 2}}, Move{3, 1, {3, 2, 1}}, Move{2, 2, {3, 2, 1}}, Move{1, 1, {1, 3, 2}}}) {
        list.setColumnPosition(move.column, move.to);
        std::vector<int> positions;
        for (int i = 1; i <= 3; ++i) positions.push_back(list.column(i).position);
        EXPECT_EQ(positions, move.positions) << move.column << " to " << move.to;
    }
    for (const int invalid : {0, 4, -1}) EXPECT_THROW(list.setColumnPosition(1, invalid), std::out_of_range);
}

TEST_F(ListViewTest, TellsThePeerOfEveryColumnChange) {
    list.setColumnWidth(2, 0);
    list.setColumnIcon(2, u"SortUp");
    list.setColumnIcon(2, u"SortUp");
    list.setColumnAlignment(2, Alignment::Left);
    list.setColumnCaption(2, u"New");
    EXPECT_EQ(peer().told("columnChanged"), 4);
    peer().verify();
    peer().userResizes(1, 777);
    peer().userMoves(3, 1);
    EXPECT_EQ(list.column(1).width, 777);
    EXPECT_EQ(list.column(1).position, 2);
    EXPECT_EQ(peer().told("columnChanged"), 4);
}

TEST_F(ListViewTest, KnowsTheWidestCellAfterEveryChange) {
    const auto widest = [this] {
        base::Twips width = 0;
        for (int i = 1; i <= list.rowCount(); ++i)
            width = std::max(width, list.textWidth(list.row(i).columnText(2)));
        return width;
    };
    EXPECT_EQ(list.widestCell(2), 0);
    list.append(rowOf(u"", u"abc"));
    list.append(rowOf(u"", u"abcdef"));
    list.append(rowOf(u"", u"a"));
    EXPECT_EQ(list.widestCell(2), widest());
    list.insert(1, rowOf(u"", u"abcdefghi"));
    EXPECT_EQ(list.widestCell(2), widest());
    list.remove(1);
    EXPECT_EQ(list.widestCell(2), widest());
    list.replace(2, rowOf(u"", u"b"));
    EXPECT_EQ(list.widestCell(2), widest());
    list.setCellTag(1, u"Second", u"t");
    EXPECT_EQ(list.widestCell(2), widest());
    list.setFont({u"Other", 20, 700, false, false, false});
    EXPECT_EQ(list.widestCell(2), widest());
    list.clear();
    EXPECT_EQ(list.widestCell(2), 0);
}

TEST_F(ListViewTest, MeasuresACellOnceAFont) {
    fill({u"aaa", u"bbb"});
    list.widestCell(1);
    const auto before = measurer.measured();
    list.widestCell(1);
    list.cellWidth(1, 1);
    list.cellWidth(2, 1);
    EXPECT_EQ(measurer.measured(), before);
    list.setFont({u"Other", 20, 400, false, false, false});
    list.cellWidth(1, 1);
    EXPECT_EQ(measurer.measured(), before + 1);
}

TEST_F(ListViewTest, SharesAContentBetweenListsOfDifferentFonts) {
    ListView other(collator, measurer);
    other.setColumns({{u"First", u"F", 1000, 0, u"", Alignment::Left}});
    other.setFont({u"Other", 30, 400, false, false, false});
    const RowPtr shared = rowOf(u"text");
    list.append(shared);
    other.append(shared);
    EXPECT_EQ(list.cellWidth(1, 1), list.textWidth(u"text"));
    EXPECT_EQ(other.cellWidth(1, 1), other.textWidth(u"text"));
    EXPECT_EQ(list.cellWidth(1, 1), list.textWidth(u"text"));
    EXPECT_LT(list.cellWidth(1, 1), other.cellWidth(1, 1));
}

TEST_F(ListViewTest, TellsThePeerOnceOfNestedBatches) {
    {
        ListView::Batch outer(list);
        ListView::Batch inner(list);
        fill({u"a"});
    }
    EXPECT_EQ(peer().told("batchBegan"), 1);
    EXPECT_EQ(peer().told("batchEnded"), 1);
}

TEST_F(ListViewTest, ScrollsThePeer) {
    for (int i = 0; i < 100; ++i) list.append(rowOf(u"x"));
    list.scrollTo(100);
    EXPECT_EQ(peer().topRow(), 81);
    list.scrollTo(90);
    EXPECT_EQ(peer().topRow(), 81);
    list.scrollTo(5);
    EXPECT_EQ(peer().topRow(), 5);
    EXPECT_EQ(peer().scrolledTo(), (std::vector<int>{100, 90, 5}));
}

TEST(ListViewAlone, WorksWithoutAPeer) {
    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    ListView list(collator, measurer);
    ListView::Batch batch(list);
    list.append(makeRow({u"a", {}, {}, {}}));
    list.select(1, true);
    list.scrollTo(1);
    EXPECT_EQ(list.windowHandle(), 0);
    EXPECT_EQ(list.selectedRow(), 1);
}

TEST(ImageListTest, FindsIconsWithoutRegardToCaseAndKeepsTheFirstOfAKey) {
    ImageList images;
    EXPECT_TRUE(images.add(u"Good", nullptr));
    EXPECT_TRUE(images.add(u"Bad", nullptr));
    EXPECT_FALSE(images.add(u"GOOD", nullptr));
    EXPECT_FALSE(images.add(u"", nullptr));
    EXPECT_EQ(images.count(), 2);
    EXPECT_EQ(images.indexOf(u"bad"), 1);
    EXPECT_EQ(images.indexOf(u"None"), -1);
    EXPECT_EQ(images.key(0), u"Good");
}

} // namespace
} // namespace cvlog::widgets
