#include "widgets/list_view.h"

#include "base/text.h"
#include "tests/widgets/list_view_fixture.h"

#include <stdexcept>

namespace cvlog::widgets {
namespace {

TEST_F(ListViewTest, InsertsAtAnyPositionAndAppends) {
    fill({u"b", u"d"});
    list.insert(1, rowOf(u"a"));
    list.insert(3, rowOf(u"c"));
    list.append(rowOf(u"e"));
    EXPECT_EQ(texts(), (Texts{u"a", u"b", u"c", u"d", u"e"}));
    EXPECT_EQ(peer().told("rowsInserted"), 5);
}

TEST_F(ListViewTest, InsertsManyRowsAtOnceAndTellsSoOnce) {
    fill({u"a", u"d"});
    list.select(2, true);
    list.focusRow(2);
    const int before = peer().told("rowsInserted");
    std::vector<RowPtr> rows{rowOf(u"b"), rowOf(u"c")};
    const RowId last = list.insertRun(2, rows);
    EXPECT_EQ(texts(), (Texts{u"a", u"b", u"c", u"d"}));
    EXPECT_EQ(peer().told("rowsInserted"), before + 1);
    EXPECT_EQ(list.positionOf(last), 3);
    EXPECT_EQ(list.idAt(2), last - 1);
    EXPECT_EQ(list.focusedRow(), 4);
    EXPECT_EQ(list.selectedRow(), 4);
    EXPECT_EQ(list.selectedCount(), 1);
}

TEST_F(ListViewTest, InsertsRunsOfAnyLength) {
    fill({u"first", u"last"});
    std::vector<RowPtr> rows;
    for (int i = 0; i < 1000; ++i) rows.push_back(rowOf(base::decimal(i)));
    list.insertRun(2, rows);
    ASSERT_EQ(list.rowCount(), 1002);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(list.row(i + 2).text(), base::decimal(i));
    EXPECT_EQ(list.row(1002).text(), u"last");
}

TEST_F(ListViewTest, PutsARunIntoItsOrderWhileItIsSorted) {
    fill({u"b", u"d"});
    list.setSorted(true);
    std::vector<RowPtr> rows{rowOf(u"e"), rowOf(u"a"), rowOf(u"c")};
    list.insertRun(1, rows);
    EXPECT_EQ(texts(), (Texts{u"a", u"b", u"c", u"d", u"e"}));
}

TEST_F(ListViewTest, CopiesManyRowsOfAnotherListWithTheirNumbers) {
    const auto ids = std::make_shared<RowIds>();
    ListView source(collator, measurer, ids);
    ListView target(collator, measurer, ids);
    for (const std::u16string_view text : {u"a", u"b", u"c", u"d"})
        source.append(rowOf(std::u16string(text)));
    target.append(rowOf(u"x"));
    target.insertCopies(1, source, 2, 2);
    ASSERT_EQ(target.rowCount(), 3);
    EXPECT_EQ(target.row(1).text(), u"b");
    EXPECT_EQ(target.idAt(2), source.idAt(3));
}

TEST_F(ListViewTest, KnowsTheWidestCellAlsoWhenRowsLikeOneAnotherCome) {
    const RowPtr model = rowOf(u"model");
    const auto like = [&](std::u16string_view text) {
        const OwnText own[] = {{RowField::Text, text}};
        return makeRowLike(model, own);
    };
    list.setColumns({{u"A", u"A", 100, 0, u""}});
    fill({u"x"});
    EXPECT_EQ(list.rememberedWidestCell(1), std::nullopt);
    list.widestCell(1);
    std::vector<RowPtr> rows{like(u"short"), like(u"the widest of them"), like(u"wide")};
    list.insertRun(1, rows);
    EXPECT_EQ(list.rememberedWidestCell(1), list.textWidth(u"the widest of them"));
    list.remove(2);
    EXPECT_EQ(list.widestCell(1), list.textWidth(u"wide"));
    list.append(makeRowLike(model, {}));
    EXPECT_EQ(list.widestCell(1), std::max(list.textWidth(u"wide"), list.textWidth(u"model")));
}

TEST_F(ListViewTest, KnowsTheWidestCellWhereRowsCoverDifferentTextsOfOneModel) {
    Row wide{u"the wide text of the model", {}, {}, {{u"B", u"its wide cell as well", {}, {}, {}}}};
    const RowPtr model = makeRow(wide);
    const OwnText narrowText[] = {{RowField::Text, u"x"}};
    const OwnText narrowCell[] = {{1, CellField::Text, u"x"}};
    list.setColumns({{u"A", u"A", 100, 0, u""}, {u"B", u"B", 100, 0, u""}});
    for (const int column : {1, 2}) list.widestCell(column);
    std::vector<RowPtr> rows{makeRowLike(model, narrowText), makeRowLike(model, narrowCell)};
    list.insertRun(1, rows);
    EXPECT_EQ(list.rememberedWidestCell(1), list.textWidth(u"the wide text of the model"));
    EXPECT_EQ(list.rememberedWidestCell(2), list.textWidth(u"its wide cell as well"));
    list.clear();
    for (const int column : {1, 2}) list.widestCell(column);
    list.append(makeRowLike(model, narrowText));
    EXPECT_EQ(list.rememberedWidestCell(1), list.textWidth(u"x")) << "the model's own is covered";
}

TEST_F(ListViewTest, MeasuresAModelAnewOnceTheRowsThatWereLikeItHaveGone) {
    const RowPtr model = makeRow({u"", {}, {}, {{u"B", u"a cell of the model", {}, {}, {}}}});
    const base::Twips wide = list.textWidth(u"a cell of the model");
    list.setColumns({{u"A", u"A", 100, 0, u""}, {u"B", u"B", 100, 0, u""}});
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(list.widestCell(2), 0) << round;
        list.append(makeRowLike(model, {}));
        EXPECT_EQ(list.rememberedWidestCell(2), wide) << round;
        if (round == 1)
            list.clear();
        else
            list.remove(1);
    }
}

TEST_F(ListViewTest, MeasuresAModelAgainWhoseMeasuringFailed) {
    class Measurer : public platform::headless::HeadlessTextMeasurer {
    public:
        base::Twips width(std::uint32_t font, base::CompactTextView text) override {
            if (fails && text == u"cell") throw std::runtime_error("no measure");
            return HeadlessTextMeasurer::width(font, text);
        }
        bool fails = true;
    } failing;
    ListView other(collator, failing);
    other.setColumns({{u"A", u"A", 100, 0, u""}, {u"B", u"B", 100, 0, u""}});
    other.widestCell(2);
    const RowPtr model = makeRow({u"", {}, {}, {{u"B", u"cell", {}, {}, {}}}});
    EXPECT_THROW(other.append(makeRowLike(model, {})), std::runtime_error);
    failing.fails = false;
    other.append(makeRowLike(model, {}));
    EXPECT_EQ(other.rememberedWidestCell(2), other.textWidth(u"cell"));
}

TEST_F(ListViewTest, RemovesAndClears) {
    fill({u"a", u"b", u"c"});
    list.remove(2);
    EXPECT_EQ(texts(), (Texts{u"a", u"c"}));
    list.clear();
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_EQ(peer().told("cleared"), 1);
}

TEST_F(ListViewTest, NamesRowsByIdsThatAreNeverUsedAgain) {
    const RowId first = list.append(rowOf(u"a"));
    list.clear();
    const RowId second = list.append(rowOf(u"b"));
    EXPECT_NE(first, second);
    EXPECT_EQ(list.positionOf(first), 0);
    EXPECT_EQ(list.positionOf(second), 1);
}

TEST_F(ListViewTest, FindsARowFromAnyGuess) {
    std::vector<RowId> ids;
    for (int i = 0; i < 9; ++i) ids.push_back(list.append(rowOf(u"x")));
    for (int position = 1; position <= 9; ++position)
        for (int guess = -2; guess <= 12; ++guess)
            ASSERT_EQ(list.positionOf(ids[static_cast<std::size_t>(position - 1)], guess), position) << guess;
    EXPECT_EQ(list.positionOf(99999, 4), 0);
}

TEST_F(ListViewTest, FindsARowFarFromTheGuess) {
    ListView other(collator, measurer);
    std::vector<RowId> ids;
    for (int i = 0; i < 2000; ++i) ids.push_back(other.insert(1, rowOf(u"x")));
    for (const int position : {1, 700, 1400, 2000})
        for (const int guess : {-5, 1, 1000, 2000, 9999})
            ASSERT_EQ(other.positionOf(ids[static_cast<std::size_t>(2000 - position)], guess), position)
                << "from " << guess;
    other.insert(2000, rowOf(u"y"));
    other.remove(1);
    EXPECT_EQ(other.positionOf(ids.back() + 1, 1), 1999) << "moved by one since it was inserted";
    EXPECT_EQ(other.positionOf(99999, 1000), 0);
}

TEST_F(ListViewTest, KeepsSelectionWithItsRows) {
    fill({u"a", u"b", u"c"});
    list.select(2, true);
    list.select(3, true);
    list.insert(1, rowOf(u"0"), true);
    EXPECT_EQ(selection(), (std::vector<int>{1, 3, 4}));
    EXPECT_EQ(list.selectedCount(), 3);
    list.remove(3);
    EXPECT_EQ(selection(), (std::vector<int>{1, 3}));
    EXPECT_EQ(list.selectedCount(), 2);
    list.clear();
    EXPECT_EQ(list.selectedCount(), 0);
}

TEST_F(ListViewTest, TellsThePeerOnlyOfRealSelectionChanges) {
    fill({u"a", u"b"});
    list.select(1, true);
    list.select(1, true);
    EXPECT_EQ(peer().told("selectionChanged"), 1);
    peer().userSelects(2, true);
    EXPECT_EQ(peer().told("selectionChanged"), 1) << "the peer knows what its user did";
    EXPECT_EQ(list.selectedCount(), 2);
    list.selectAll(false);
    EXPECT_EQ(list.selectedCount(), 0);
    list.selectAll(true);
    EXPECT_EQ(selection(), (std::vector<int>{1, 2}));
}

TEST_F(ListViewTest, MovesTheFocusWithItsRow) {
    fill({u"a", u"b", u"c"});
    list.focusRow(2);
    list.insert(1, rowOf(u"0"));
    EXPECT_EQ(list.focusedRow(), 3);
    list.insert(3, rowOf(u"1"));
    EXPECT_EQ(list.focusedRow(), 4) << "a row inserted at the focused one's place pushes it down";
    list.append(rowOf(u"9"));
    EXPECT_EQ(list.focusedRow(), 4);
    list.remove(1);
    EXPECT_EQ(list.focusedRow(), 3);
    list.remove(4);
    EXPECT_EQ(list.focusedRow(), 3);
    list.remove(3);
    EXPECT_EQ(list.focusedRow(), 0);
}

TEST_F(ListViewTest, TakesTheFocusedRowForTheSelectedOneIfItIsSelectedElseTheFirst) {
    EXPECT_EQ(list.selectedRow(), 0);
    fill({u"a", u"b", u"c", u"d"});
    list.focusRow(4);
    EXPECT_EQ(list.selectedRow(), 0) << "focus alone selects nothing";
    list.select(3, true);
    list.select(2, true);
    EXPECT_EQ(list.selectedRow(), 2);
    list.select(4, true);
    EXPECT_EQ(list.selectedRow(), 4);
    list.focusRow(0);
    EXPECT_EQ(list.selectedRow(), 2);
}

TEST_F(ListViewTest, SortsWithoutRegardToCaseAndKeepsEqualRowsInOrderEitherWay) {
    fill({u"b", u"A", u"B", u"a", u"b"});
    const Texts ascending{u"A", u"a", u"b", u"B", u"b"};
    list.setSorted(true);
    EXPECT_EQ(texts(), ascending);
    list.setSort(0, SortOrder::Descending);
    EXPECT_EQ(texts(), (Texts{u"b", u"B", u"b", u"A", u"a"})) << "the comparison is reversed, not the result";
    EXPECT_EQ(peer().told("rowsReordered"), 2);
}

TEST_F(ListViewTest, SortsByTheTextOfOneColumn) {
    for (const char16_t* elapsed : {u"2:00:05", u"10:00:05", u"1:00:05", u""})
        list.append(rowOf(elapsed, elapsed));
    list.setSort(1, SortOrder::Ascending);
    EXPECT_EQ(texts(), (Texts{u"2:00:05", u"10:00:05", u"1:00:05", u""})) << "the flag is still off";
    list.setSorted(true);
    EXPECT_EQ(texts(), (Texts{u"", u"1:00:05", u"10:00:05", u"2:00:05"}));
}

TEST_F(ListViewTest, TakesSelectionFocusAndIdsAlongWhenItSorts) {
    fill({u"c", u"b", u"a"});
    const RowId c = list.idAt(1);
    list.select(1, true);
    list.focusRow(2);
    list.setSorted(true);
    EXPECT_EQ(list.positionOf(c), 3);
    EXPECT_EQ(selection(), std::vector<int>{3});
    EXPECT_EQ(list.focusedRow(), 2);
    list.focusRow(1);
    list.setSort(0, SortOrder::Descending);
    EXPECT_EQ(list.focusedRow(), 3);
}

TEST_F(ListViewTest, GivesANewRowItsSortedPlaceBehindEqualOnes) {
    for (const SortOrder order : {SortOrder::Ascending, SortOrder::Descending}) {
        list.clear();
        list.setSort(0, order);
        list.setSorted(true);
        for (const char16_t* second : {u"1", u"2", u"3"})
            for (const char16_t* text : {u"m", u"a", u"z"}) list.insert(1, rowOf(text, second));
        const Texts ascending{u"a", u"a", u"a", u"m", u"m", u"m", u"z", u"z", u"z"};
        EXPECT_EQ(texts(),
                  order == SortOrder::Ascending ? ascending : Texts(ascending.rbegin(), ascending.rend()));
        for (int i = 1; i <= 9; ++i)
            EXPECT_EQ(list.row(i).cellText(1), std::u16string(1, static_cast<char16_t>(u'1' + (i - 1) % 3)));
    }
}

TEST_F(ListViewTest, StaysInOrderWhenSortingIsSwitchedOff) {
    fill({u"b", u"a"});
    list.setSorted(true);
    list.setSorted(false);
    list.append(rowOf(u"0"));
    EXPECT_EQ(texts(), (Texts{u"a", u"b", u"0"}));
}

TEST_F(ListViewTest, SortsLongEqualBeginningsByWhatFollows) {
    fill({u"2024-01-02 09:05:07", u"2024-01-02 09:05:06", u"2024-01-02 09:05:0"});
    list.setSorted(true);
    EXPECT_EQ(texts(), (Texts{u"2024-01-02 09:05:0", u"2024-01-02 09:05:06", u"2024-01-02 09:05:07"}));
}

TEST_F(ListViewTest, ReplacesContentInThisListOnly) {
    ListView other(collator, measurer);
    const RowPtr shared = rowOf(u"a", u"x");
    list.append(shared);
    other.append(shared);
    list.setCellTag(1, u"second", u"tag");
    EXPECT_EQ(list.row(1).cellTag(1), u"tag");
    EXPECT_EQ(list.row(1).cellText(1), u"x");
    EXPECT_EQ(other.row(1).cellTag(1), u"");
    list.replace(1, rowOf(u"b"));
    EXPECT_EQ(other.row(1).text(), u"a");
    EXPECT_EQ(peer().told("rowChanged"), 1) << "nobody sees a tag";
    EXPECT_THROW(list.setCellTag(1, u"None", u"t"), std::out_of_range);
}

TEST_F(ListViewTest, KeepsAPeerThatIsTakenAwayWhileItIsToldUntilItIsDone) {
    class LeavingPeer : public platform::headless::HeadlessListViewPeer {
    public:
        LeavingPeer(ListView& owner, const platform::headless::CallGate& calls,
                    platform::headless::PeerBook& shared, bool& left)
            : HeadlessListViewPeer(owner, calls, shared, false), owner_(owner), left_(left) {}
        ~LeavingPeer() override { left_ = true; }
        void appearanceChanged() override {
            owner_.attach(nullptr);
            EXPECT_FALSE(left_) << "it is still at work";
        }

    private:
        ListView& owner_;
        bool& left_;
    };
    bool left = false;
    ListView other(collator, measurer);
    other.attach(std::make_unique<LeavingPeer>(other, gate, factory.book, left));
    other.setEnabled(false);
    EXPECT_TRUE(left);
    EXPECT_EQ(other.peer(), nullptr);
}

TEST_F(ListViewTest, FindsRowsByTheirKeysWhereverTheyMove) {
    fill({u"c", u"a", u"b"});
    EXPECT_TRUE(list.setRowKey(1, u"Third"));
    EXPECT_TRUE(list.setRowKey(2, u"First"));
    EXPECT_EQ(list.rowOf(u"THIRD"), 1);
    list.setSorted(true);
    EXPECT_EQ(list.rowOf(u"third"), 3);
    EXPECT_EQ(list.rowKey(1), u"First");
    EXPECT_EQ(list.rowKey(2), u"");
    EXPECT_EQ(list.rowOf(u"none"), 0);
    EXPECT_EQ(list.rowOf(u""), 0);
}

TEST_F(ListViewTest, KeepsRowKeysUniqueWithoutRegardToCase) {
    fill({u"a", u"b"});
    EXPECT_TRUE(list.setRowKey(1, u"Key"));
    EXPECT_FALSE(list.setRowKey(2, u"KEY"));
    EXPECT_EQ(list.rowKey(2), u"");
    EXPECT_TRUE(list.setRowKey(1, u"KEY")) << "its own";
    EXPECT_TRUE(list.setRowKey(1, u""));
    EXPECT_TRUE(list.setRowKey(2, u"key"));
    EXPECT_EQ(list.rowOf(u"Key"), 2);
}

TEST_F(ListViewTest, FreesTheKeysOfRowsThatGo) {
    fill({u"a", u"b"});
    list.setRowKey(1, u"Key");
    list.remove(1);
    EXPECT_EQ(list.rowOf(u"Key"), 0);
    EXPECT_TRUE(list.setRowKey(1, u"Key"));
    list.clear();
    fill({u"c"});
    EXPECT_EQ(list.rowOf(u"Key"), 0);
    EXPECT_TRUE(list.setRowKey(1, u"Key"));
}

} // namespace
} // namespace cvlog::widgets
