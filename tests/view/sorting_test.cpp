#include "view/sorting.h"

#include "tests/support/opened_log.h"
#include "view/list_set.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using platform::headless::peerOf;
using tests::LogWorld;
using tests::Names;
using tests::namesOf;
using widgets::SortOrder;

constexpr int kDate = 1;
constexpr int kElapsed = 2;
constexpr int kMethod = 3;
constexpr int kMessage = 7;

class Sorting : public testing::Test {
protected:
    Sorting() : owner(tests::keepingWorld(3)), world(*owner) {
        tests::addEntries(world, {"b", "c", "a"});
        world.calls.restart();
    }
    ~Sorting() override { tests::expectSound(world); }

    core::LogViews::ListRef view(std::size_t index = 0) { return world.globals.LogViews.all().at(index); }
    Names names() { return namesOf(world.list()); }
    void click(int column, std::size_t list = 0) { SortByColumn(world.globals, view(list), column); }
    std::string icon(int column, std::size_t list = 0) {
        const std::u16string& key = world.list(list).column(column).icon;
        return {key.begin(), key.end()};
    }
    void expectState(int column, SortOrder order) {
        for (const std::size_t list : {0U, 1U, 2U}) {
            EXPECT_TRUE(world.list(list).sorted());
            EXPECT_EQ(world.list(list).sortKey(), column - 1);
            EXPECT_EQ(world.list(list).sortOrder(), order);
            EXPECT_EQ(icon(column, list), order == SortOrder::Ascending ? "SortDown" : "SortUp");
        }
    }

    std::unique_ptr<LogWorld> owner;
    LogWorld& world;
};

struct Click {
    int column;
    SortOrder order;
};

/// Clicks on a new log, each with the order that all lists have after it.
class SortingClicks : public Sorting, public testing::WithParamInterface<std::vector<Click>> {};

TEST_P(SortingClicks, TurnTheOrderOnTheSortColumnAndKeepItOnOthers) {
    int old = 0;
    for (const Click& step : GetParam()) {
        click(step.column);
        expectState(step.column, step.order);
        if (old != 0 && old != step.column) {
            EXPECT_EQ(icon(old), "") << "no icon at all, not the empty one";
        }
        old = step.column;
    }
}

constexpr SortOrder kUp = SortOrder::Ascending;
constexpr SortOrder kDown = SortOrder::Descending;

INSTANTIATE_TEST_SUITE_P(
    Steps, SortingClicks,
    testing::Values(std::vector<Click>{{kDate, kDown}, {kDate, kUp}, {kDate, kDown}},
                    std::vector<Click>{{kMethod, kUp}, {kMethod, kDown}, {kMethod, kUp}},
                    std::vector<Click>{
                        {kMessage, kUp}, {kMessage, kDown}, {kElapsed, kDown}, {kElapsed, kUp}},
                    std::vector<Click>{{kDate, kDown}, {kMessage, kDown}, {kDate, kDown}, {kDate, kUp}},
                    std::vector<Click>{{2, kUp}, {4, kUp}, {5, kUp}, {6, kUp}, {1, kUp}}));

TEST_F(Sorting, SortsEveryList) {
    click(kMessage);
    EXPECT_EQ(names(), (Names{"a", "b", "c"}));
    click(kMessage, 2);
    EXPECT_EQ(names(), (Names{"c", "b", "a"}));
}

TEST_F(Sorting, ComparesElapsedTimesAsText) {
    const char16_t* elapsed[] = {u"2:00:05", u"10:00:05", u"1:00:05"};
    for (int row = 1; row <= 3; ++row) {
        const auto content = world.list().row(row).withCell(1, widgets::CellField::Text, elapsed[row - 1]);
        for (const std::size_t list : {0U, 1U, 2U}) world.list(list).replace(row, content);
    }
    click(kElapsed);
    for (int row = 1; row <= 3; ++row)
        EXPECT_EQ(world.list(2).row(row).cellText(1), elapsed[3 - row]) << "1, 10, 2";
}

TEST_F(Sorting, TakesTheIconFromTheColumnThatTheClickedListWasSortedBy) {
    world.list(1).setSort(kMethod - 1, kUp);
    world.list(1).setColumnIcon(kMethod, u"SortDown");
    world.list(1).setColumnIcon(kDate, u"SortUp");
    click(kMessage);
    EXPECT_EQ(icon(kDate, 1), "") << "the clicked list's, in every list";
    EXPECT_EQ(icon(kMethod, 1), "SortDown") << "not the list's own";
}

TEST_F(Sorting, RemembersTheOldColumnFromBeforeTheFirstListChanged) {
    click(kMethod, 2);
    for (const std::size_t list : {0U, 1U, 2U}) EXPECT_EQ(icon(kMethod, list), "SortDown");
    click(kMessage, 0);
    for (const std::size_t list : {0U, 1U, 2U}) EXPECT_EQ(icon(kMethod, list), "");
}

TEST_F(Sorting, TurnsTheOrderByEachListsOwnKey) {
    world.list(1).setSort(kMessage - 1, kUp);
    click(kMessage);
    EXPECT_EQ(world.list(0).sortOrder(), kUp);
    EXPECT_EQ(world.list(1).sortOrder(), kDown);
    EXPECT_EQ(world.list(2).sortOrder(), kUp);
    world.list(1).setSort(kMessage - 1, kUp);
}

TEST_F(Sorting, TurnsTheOrderAlsoOfAListThatIsNotSortedAnyMore) {
    click(kMessage);
    tests::openEntry(world, 1, 1);
    ASSERT_FALSE(world.list().sorted());
    click(kMessage);
    expectState(kMessage, kDown);
}

TEST_F(Sorting, ClosesAllEntriesFirst) {
    tests::openEntry(world, 3, 2);
    tests::openEntry(world, 1, 1);
    click(kMessage);
    EXPECT_EQ(names(), (Names{"a", "b", "c"}));
    EXPECT_EQ(
        world.calls.journalOf({"Workspace."}),
        (std::vector<std::string>{"Workspace.SetMainWindowCursor(11)", "Workspace.SetMainWindowCursor(0)"}));
}

TEST_F(Sorting, IsDroppedWhileAnExpansionIsBusy) {
    tests::openEntry(world, 1, 1);
    world.globals.ExpansionBusy = true;
    click(kMessage);
    world.globals.ExpansionBusy = false;
    EXPECT_EQ(names(), (Names{"b", "+b.1", "c", "a"}));
    EXPECT_FALSE(world.list().sorted());
    EXPECT_EQ(world.list().sortKey(), 0);
    EXPECT_EQ(icon(kMessage), "");
}

TEST_F(Sorting, LeavesAllAsItIsWhenTheHostOpensAnEntryWhileItCloses) {
    world.host.workspace->before(u"SetMainWindowCursor", [&] {
        if (world.calls.journal().back() == "Workspace.SetMainWindowCursor(0)") tests::openEntry(world, 1, 1);
    });
    click(kMessage);
    EXPECT_EQ(names(), (Names{"b", "+b.1", "c", "a"})) << "sorting would tear the row from its entry";
}

TEST_F(Sorting, BringsTheSelectedRowOfTheClickedListIntoView) {
    world.list(1).select(3, true);
    const auto scrolled = [&](std::size_t list) { return peerOf(world.list(list)).scrolledTo(); };
    const auto before = scrolled(1);
    const auto others = scrolled(0);
    click(kMessage, 1);
    auto expected = before;
    expected.push_back(1);
    EXPECT_EQ(scrolled(1), expected) << "where the row is now";
    EXPECT_EQ(scrolled(0), others);
    click(kMessage, 0);
    EXPECT_EQ(scrolled(0), others) << "nothing is selected there";
}

TEST_F(Sorting, KeepsTheSelectionWithItsRows) {
    tests::selectRows(world.list(), {"c", "a"});
    click(kMessage);
    EXPECT_TRUE(world.list().isSelected(1));
    EXPECT_FALSE(world.list().isSelected(2));
    EXPECT_TRUE(world.list().isSelected(3));
}

TEST_F(Sorting, ANewListTakesOverTheHeaderIconAlsoWhenAnExpansionHasSwitchedSortingOff) {
    click(kMessage);
    click(kMessage);
    tests::openEntry(world, 1, 1);
    world.addControl();
    EXPECT_EQ(icon(kMessage, 3), "SortUp");
    EXPECT_EQ(world.list(3).sortKey(), kMessage - 1);
    EXPECT_EQ(world.list(3).sortOrder(), kDown);
    EXPECT_FALSE(world.list(3).sorted());
    ResetLists(world.globals);
    world.addControl();
    EXPECT_EQ(icon(kDate, 4), "SortEmpty");
}

TEST_F(Sorting, GivesBothSharedIconsToAListThatLacksOne) {
    const auto own = std::make_shared<widgets::ImageList>();
    world.list(0).setSmallIcons(own);
    world.list(1).setHeaderIcons(nullptr);
    world.list(1).setSmallIcons(own);
    world.list(2).setSmallIcons(nullptr);
    world.list(2).setHeaderIcons(own);
    click(kMessage);
    EXPECT_EQ(world.list(0).smallIcons(), own) << "what has both keeps them";
    for (const std::size_t list : {1U, 2U}) {
        EXPECT_EQ(world.list(list).headerIcons(), world.globals.frmLogResources->ilSort);
        EXPECT_EQ(world.list(list).smallIcons(), world.globals.frmLogResources->ilLog);
    }
}

TEST_F(Sorting, FitsTheOtherListsToTheNewRowAtItsSortedPlace) {
    click(kMessage);
    const std::string wide = "aa" + std::string(80, 'W');
    tests::addEntry(world, wide);
    ASSERT_EQ(names(), (Names{"a", wide, "b", "c"}));
    for (const std::size_t list : {0U, 1U, 2U})
        EXPECT_EQ(world.list(list).column(kMessage).width, world.list(list).cellWidth(2, kMessage) + 180);
}

TEST_F(Sorting, StartsAfreshAfterAReset) {
    click(kMessage);
    click(kMessage);
    ResetLists(world.globals);
    tests::addEntries(world, {"b", "a"});
    for (int column = 1; column <= 7; ++column) EXPECT_EQ(icon(column, 1), "SortEmpty");
    click(kMessage);
    expectState(kMessage, kUp);
    EXPECT_EQ(names(), (Names{"a", "b"}));
    ResetLists(world.globals);
    click(kDate);
    expectState(kDate, kDown);
}

TEST_F(Sorting, GoesOnAfterAllRowsAreCleared) {
    click(kMessage);
    click(kMessage);
    ClearLists(world.globals);
    expectState(kMessage, kDown);
    tests::addEntries(world, {"a", "c", "b"});
    EXPECT_EQ(names(), (Names{"c", "b", "a"})) << "new rows take their sorted places";
}

TEST_F(Sorting, PutsANewRowAtItsPlaceInEveryListAndShowsTheLastRowsOfTheOthers) {
    click(kMessage);
    std::vector<std::vector<int>> before;
    for (const std::size_t list : {0U, 1U, 2U}) {
        world.list(list).setColumnIcon(kMessage, {});
        before.push_back(peerOf(world.list(list)).scrolledTo());
    }
    world.calls.restart();
    tests::addEntry(world, "aa");
    EXPECT_EQ(names(), (Names{"a", "aa", "b", "c"}));
    for (const std::size_t list : {0U, 1U, 2U}) {
        EXPECT_EQ(icon(kMessage, list), "SortDown") << "refreshed";
        before[list].push_back(list == 0 ? 2 : 4);
        EXPECT_EQ(peerOf(world.list(list)).scrolledTo(), before[list])
            << "the first list shows the new row, the others their last one";
    }
}

TEST_F(Sorting, RefreshesNoIconInAListThatIsNotSorted) {
    click(kMessage);
    for (const std::size_t list : {0U, 1U, 2U}) world.list(list).setSorted(false);
    for (const std::size_t list : {0U, 1U, 2U}) world.list(list).setColumnIcon(kMessage, u"SortUp");
    tests::addEntry(world, "aa");
    EXPECT_EQ(names(), (Names{"a", "b", "c", "aa"}));
    for (const std::size_t list : {0U, 1U, 2U}) EXPECT_EQ(icon(kMessage, list), "SortUp");
}

TEST_F(Sorting, FillsTheOtherListsInTheirOrder) {
    world.calls.restart();
    std::vector<std::size_t> filled;
    world.calls.insideCall = [&](const std::string& name) {
        if (name != "List.rowsInserted") return;
        for (const std::size_t list : {0U, 1U, 2U})
            if (world.list(list).rowCount() == 4 &&
                std::find(filled.begin(), filled.end(), list) == filled.end())
                filled.push_back(list);
    };
    tests::addEntry(world, "d");
    world.calls.insideCall = nullptr;
    EXPECT_EQ(filled, (std::vector<std::size_t>{0, 1, 2}));
}

} // namespace
} // namespace cvlog::view
