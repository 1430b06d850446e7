#include "details/expansion.h"

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "tests/support/opened_log.h"
#include "view/list_set.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using platform::headless::peerOf;
using tests::LogWorld;
using tests::Names;
using tests::namesOf;
using tests::placeOf;

using Calls = std::vector<std::string>;
constexpr int kMessageColumn = 7;

/// Three entries in two lists: "a" closed, "b" with two child rows, "c" with one, then "d" closed.
class Expansion : public testing::Test {
protected:
    Expansion() : owner(tests::keepingWorld(2)), world(*owner) {
        tests::addEntries(world, {"a", "b", "c", "d"});
        tests::openEntry(world, 3, 1);
        tests::openEntry(world, 2, 2);
        EXPECT_EQ(names(), opened);
        world.calls.restart();
    }
    ~Expansion() override { tests::expectSound(world); }

    core::LogViews::ListRef view(std::size_t index = 0) { return world.globals.LogViews.all().at(index); }
    Names names() { return namesOf(world.list()); }
    Calls pointers() { return world.calls.journalOf({"Workspace.SetMainWindowCursor"}); }
    void collapse(int position) { CollapseEntry(world.globals, view(), position); }
    int repaints(std::size_t list = 0) { return peerOf(world.list(list)).told("repaint"); }

    const Names opened = {"a", "b", "+b.1", "+b.2", "c", "+c.1", "d"};
    const Calls busyThenUsual = {"Workspace.SetMainWindowCursor(11)", "Workspace.SetMainWindowCursor(0)"};
    std::unique_ptr<LogWorld> owner;
    LogWorld& world;
};

TEST_F(Expansion, RemovesTheChildRowsOfOneEntryFromEveryList) {
    collapse(2);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "+c.1", "d"}));
    EXPECT_EQ(pointers(), busyThenUsual);
    EXPECT_EQ(repaints(0), 1);
    EXPECT_EQ(repaints(1), 0) << "only the list in which the user acted is painted at once";
}

TEST_F(Expansion, RemovesAllChildRowsOfAllEntries) {
    collapse(kAllEntries);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "d"}));
    EXPECT_EQ(pointers(), busyThenUsual);
}

TEST_F(Expansion, RemovesTheRunOfChildRowsAtTheEndOfTheList) {
    world.list(0).remove(7);
    world.list(1).remove(7);
    collapse(5);
    EXPECT_EQ(names(), (Names{"a", "b", "+b.1", "+b.2", "c"}));
}

TEST_F(Expansion, ChangesNothingForAClosedEntryButPaintsItAndSetsThePointer) {
    for (const int position : {1, 7}) {
        world.calls.restart();
        const int painted = repaints();
        world.list().setColumnWidth(kMessageColumn, 10);
        collapse(position);
        EXPECT_EQ(names(), opened);
        EXPECT_EQ(pointers(), busyThenUsual);
        EXPECT_EQ(repaints(), painted + 1);
        EXPECT_EQ(world.list().column(kMessageColumn).width, 10) << "no column was fitted";
        EXPECT_FALSE(world.globals.ExpansionBusy);
    }
}

TEST_F(Expansion, FindsNothingBehindTheLastRow) {
    for (const int position : {8, 100}) collapse(position);
    EXPECT_EQ(names(), opened);
}

TEST_F(Expansion, TakesPlaceZeroForTheChildRowsAboveAllEntries) {
    for (const std::size_t list : {0U, 1U}) world.list(list).remove(1);
    for (const std::size_t list : {0U, 1U}) world.list(list).remove(1);
    collapse(0);
    EXPECT_EQ(names(), (Names{"c", "+c.1", "d"}));
}

TEST_F(Expansion, FitsTheColumnsOfEveryListOnceAfterItRemovedRows) {
    for (const std::size_t list : {0U, 1U}) world.list(list).setColumnWidth(kMessageColumn, 10);
    const int told[] = {peerOf(world.list(0)).told("columnChanged"),
                        peerOf(world.list(1)).told("columnChanged")};
    collapse(kAllEntries);
    for (const std::size_t list : {0U, 1U}) {
        EXPECT_GT(world.list(list).column(kMessageColumn).width, 650) << "as for all rows: with the caption";
        EXPECT_EQ(peerOf(world.list(list)).told("columnChanged"), told[list] + 1);
    }
}

TEST_F(Expansion, DropsACollapseWithoutATraceWhileItIsBusy) {
    world.globals.ExpansionBusy = true;
    for (const int position : {kAllEntries, 1, 2}) collapse(position);
    EXPECT_EQ(names(), opened);
    EXPECT_EQ(pointers(), Calls());
    EXPECT_EQ(repaints(), 0);
    EXPECT_TRUE(world.globals.ExpansionBusy) << "whoever set it ends it";
    world.globals.ExpansionBusy = false;
}

TEST_F(Expansion, IsBusyInsideBothCallsOfTheHostAndNowhereElse) {
    std::vector<bool> busy;
    world.host.workspace->before(u"SetMainWindowCursor",
                                 [&] { busy.push_back(world.globals.ExpansionBusy); });
    collapse(2);
    EXPECT_EQ(busy, (std::vector<bool>{true, true}));
    EXPECT_FALSE(world.globals.ExpansionBusy);
}

TEST_F(Expansion, ShowsTheListsWithTheChildRowsAtTheHourglassAndWithoutThemAfterwards) {
    std::vector<Names> seen;
    world.host.workspace->before(u"SetMainWindowCursor", [&] { seen.push_back(namesOf(world.list(1))); });
    collapse(2);
    EXPECT_EQ(seen, (std::vector<Names>{opened, {"a", "b", "c", "+c.1", "d"}}));
}

TEST_F(Expansion, GoesOnWhenTheHostHasNoPointer) {
    world.host.workspace->raise(u"SetMainWindowCursor", tests::CallCounter::injectedError());
    EXPECT_NO_THROW(collapse(2));
    EXPECT_EQ(names(), (Names{"a", "b", "c", "+c.1", "d"}));
    EXPECT_EQ(pointers(), busyThenUsual) << "asked for all the same";
    world.host.workspace->heal(u"SetMainWindowCursor").on(u"SetMainWindowCursor", [](auto) {
        return automation::Value(u"no number");
    });
    EXPECT_NO_THROW(collapse(3));
    EXPECT_EQ(names(), (Names{"a", "b", "c", "d"}));
}

TEST_F(Expansion, RaisesNoEvent) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.host.workspace->before(u"SetMainWindowCursor", [&] {
        peerOf(world.list()).userEnters();
        peerOf(world.list()).userLeaves();
    });
    collapse(kAllEntries);
    EXPECT_TRUE(sink->ids.empty());
    peerOf(world.list()).userEnters();
    EXPECT_EQ(sink->ids.size(), 1U) << "and again afterwards";
}

TEST_F(Expansion, PutsThePointerOfTheSameHostBackWhenTheLogIsClosedMeanwhile) {
    world.host.workspace->before(u"SetMainWindowCursor", [&] {
        if (world.globals.store.Workspace) world.close();
    });
    collapse(2);
    EXPECT_EQ(world.host.cursor, 0);
    EXPECT_EQ(pointers(), busyThenUsual);
}

/// A measurer that fails, as a system without memory does.
class FailingMeasurer : public ports::TextMeasurer {
public:
    std::uint32_t fontNumber(const base::Font&) override { return 1; }
    base::Twips width(std::uint32_t, base::CompactTextView) override {
        if (fails) throw std::bad_alloc();
        return 100;
    }
    bool fails = false;
};

TEST_F(Expansion, IsNotBusyAndHasItsPointerBackAfterItFailed) {
    FailingMeasurer measurer;
    const auto list = std::make_shared<widgets::ListView>(world.platform.collator, measurer,
                                                          world.globals.LogViews.rowIds());
    world.globals.LogViews.add(list);
    list->setColumns({{u"Date", u"Date", 10, 1, {}}});
    for (int i = 1; i <= 7; ++i) list->insertCopy(i, world.list(), i);
    measurer.fails = true;
    EXPECT_THROW(collapse(2), std::bad_alloc);
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.host.cursor, 0);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "+c.1", "d"})) << "the rows have gone from all lists";
    tests::expectSound(world);
    world.globals.LogViews.remove(*list);
}

TEST_F(Expansion, CollapsesTheEntryOfAChildRowAndSelectsIt) {
    CollapseSelectedEntry(world.globals, view(), 4);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "+c.1", "d"}));
    EXPECT_TRUE(world.list(0).isSelected(2));
    EXPECT_FALSE(world.list(1).isSelected(2)) << "the selection is a list's own";
    EXPECT_EQ(world.list().selectedCount(), 1);
}

TEST_F(Expansion, SelectsNothingWhenAnEntryItselfIsCollapsed) {
    world.list().select(7, true);
    CollapseSelectedEntry(world.globals, view(), 2);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "+c.1", "d"}));
    EXPECT_EQ(world.list().selectedRow(), 5) << "what was selected stays so";
    EXPECT_EQ(world.list().selectedCount(), 1);
}

TEST_F(Expansion, SelectsTheEntryOfAChildRowAlsoWhenTheCollapseIsRefused) {
    world.globals.ExpansionBusy = true;
    CollapseSelectedEntry(world.globals, view(), 6);
    world.globals.ExpansionBusy = false;
    EXPECT_EQ(names(), opened);
    EXPECT_TRUE(world.list().isSelected(5));
    EXPECT_EQ(pointers(), Calls());
}

TEST_F(Expansion, DoesNothingForAChildRowWithoutAnEntryAbove) {
    for (const std::size_t list : {0U, 1U})
        for (int i = 0; i < 2; ++i) world.list(list).remove(1);
    for (const int position : {1, 2}) {
        CollapseSelectedEntry(world.globals, view(), position);
        EXPECT_EQ(names(), (Names{"+b.1", "+b.2", "c", "+c.1", "d"}));
    }
    EXPECT_EQ(pointers(), Calls());
    EXPECT_EQ(world.list().selectedCount(), 0);
    for (const std::size_t list : {0U, 1U})
        for (int i = 0; i < 2; ++i) world.list(list).remove(1);
}

TEST_F(Expansion, RemovesAChildRowAloneFromEveryList) {
    RemoveLogRow(world.globals, view(1), 3);
    EXPECT_EQ(names(), (Names{"a", "b", "+b.2", "c", "+c.1", "d"}));
    EXPECT_EQ(pointers(), Calls());
}

TEST_F(Expansion, RemovesTheChildRowsOfAnEntryBeforeTheEntry) {
    std::vector<Names> seen;
    world.host.workspace->before(u"SetMainWindowCursor", [&] { seen.push_back(namesOf(world.list())); });
    RemoveLogRow(world.globals, view(1), 2);
    EXPECT_EQ(names(), (Names{"a", "c", "+c.1", "d"}));
    EXPECT_EQ(seen, (std::vector<Names>{opened, {"a", "b", "c", "+c.1", "d"}}));
    EXPECT_EQ(repaints(1), 1);
}

TEST_F(Expansion, RemovesAClosedEntryAndTheLastRowWithoutAskingTheHost) {
    RemoveLogRow(world.globals, view(), 7);
    RemoveLogRow(world.globals, view(), 1);
    EXPECT_EQ(names(), (Names{"b", "+b.1", "+b.2", "c", "+c.1"}));
    EXPECT_EQ(pointers(), Calls());
}

TEST_F(Expansion, KeepsAnOpenEntryWhoseCollapseIsRefusedSoThatNoChildRowIsLeftBehind) {
    world.globals.ExpansionBusy = true;
    RemoveLogRow(world.globals, view(), 2);
    EXPECT_EQ(names(), opened);
    RemoveLogRow(world.globals, view(), 1);
    EXPECT_EQ(names(), (Names{"b", "+b.1", "+b.2", "c", "+c.1", "d"})) << "a closed one goes";
    world.globals.ExpansionBusy = false;
}

TEST_F(Expansion, TakesNoOtherRowFromAListThatLacksTheOne) {
    for (const char* lacking : {"+b.1", "c", "d"}) world.list(1).remove(placeOf(world.list(1), lacking));
    RemoveLogRow(world.globals, view(0), placeOf(world.list(0), "d"));
    EXPECT_EQ(namesOf(world.list(1)), (Names{"a", "b", "+b.2", "+c.1"})) << "it had no such row";
    collapse(2);
    EXPECT_EQ(namesOf(world.list(0)), (Names{"a", "b", "c", "+c.1"}));
    EXPECT_EQ(namesOf(world.list(1)), (Names{"a", "b", "+c.1"}));
    view::ClearLists(world.globals);
}

TEST_F(Expansion, OpensNothingWithoutASelection) {
    ExpandSelectedEntry(world.globals, view());
    EXPECT_EQ(peerOf(world.list()).told("takeFocus"), 0);
}

struct Selected {
    int row;
    bool opens;
};

class ExpansionOfTheSelectedRow : public Expansion, public testing::WithParamInterface<Selected> {};

TEST_P(ExpansionOfTheSelectedRow, OpensAClosedEntryOnly) {
    world.list().select(GetParam().row, true);
    ExpandSelectedEntry(world.globals, view());
    EXPECT_EQ(peerOf(world.list()).told("takeFocus") > 0, GetParam().opens) << "where an expansion ends";
    EXPECT_EQ(names(), opened) << "no entry here has an errors file";
}

INSTANTIATE_TEST_SUITE_P(Rows, ExpansionOfTheSelectedRow,
                         testing::Values(Selected{1, true}, Selected{2, false}, Selected{3, false},
                                         Selected{4, false}, Selected{5, false}, Selected{6, false},
                                         Selected{7, true}),
                         [](const auto& instance) { return "Row" + std::to_string(instance.param.row); });

struct Tagged {
    const char16_t* tag;
    bool isChild;
};

class RowKind : public testing::TestWithParam<Tagged> {};

TEST_P(RowKind, GoesByTheTagAloneWithoutRegardToCase) {
    const auto row = widgets::makeRow({u"2000-01-01 00:00:00", GetParam().tag, u"Good", {}});
    EXPECT_EQ(core::IsChildRow(*row), GetParam().isChild);
}

INSTANTIATE_TEST_SUITE_P(Tags, RowKind,
                         testing::Values(Tagged{u"expansion", true}, Tagged{u"Expansion", true},
                                         Tagged{u"EXPANSION", true}, Tagged{u"expansions", false},
                                         Tagged{u" expansion", false}, Tagged{u"", false},
                                         Tagged{u"P1", false}));

TEST(RowKindOfAnEntry, IsThatOfAChildRowWhenItsObjectIsCalledExpansion) {
    const auto world = tests::keepingWorld(2);
    world->host.addObject(u"Expansion", u"E", u"E", u"PROG", u"e");
    tests::addEntry(*world, "above");
    world->add({u"M1", 0, u"Expansion", u"above.1", u""});
    tests::addEntry(*world, "below");
    EXPECT_EQ(namesOf(world->list()), (Names{"above", "+above.1", "below"}));
    CollapseEntry(world->globals, world->globals.LogViews.first(), 1);
    for (const std::size_t list : {0U, 1U}) EXPECT_EQ(namesOf(world->list(list)), (Names{"above", "below"}));
    EXPECT_EQ(world->engine.records().size(), 3U) << "its record stays";
}

} // namespace
} // namespace cvlog::details
