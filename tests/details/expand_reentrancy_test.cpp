// Other code runs in every yield and every host call of an expansion: it may do whatever a user or a host can do.

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "core/options.h"
#include "details/expand_entry.h"
#include "details/frm_cancel.h"
#include "details/repository_tracking.h"
#include "host/log_visibility.h"
#include "store/frm_log_history.h"
#include "store/log_database.h"
#include "tests/support/expansion_world.h"
#include "view/list_set.h"
#include "view/row_commands.h"
#include "view/sorting.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using tests::expectNothingLeft;

struct Action {
    const char* name;
    std::function<void(ExpansionWorld&)> run;
    bool stops = false;   // a row of the stopping yield stays in one list alone
    int adds = 0;         // records
    bool orphans = false; // it takes the entry alone: the messages go when the expansion goes on
};

void PrintTo(const Action& action, std::ostream* out) { *out << action.name; }

void removeAsHost(ExpansionWorld& world, int row) {
    for (std::size_t list = 0; list < world.controls.size(); ++list)
        if (world.list(list).rowCount() >= row) world.list(list).remove(row);
}

void deleteRow(ExpansionWorld& world, std::size_t index, int row) {
    if (world.controls.size() <= index || world.list(index).rowCount() < row) return;
    world.list(index).selectAll(false);
    world.list(index).select(row, true);
    view::DeleteRows(world.globals, world.view(index));
}

void showHistory(ExpansionWorld& world) {
    world.forms().whileModal = [&world](auto&) {
        if (const auto window = world.globals.store.frmLogHistory) window->unload();
    };
    store::ShowHistory(world.globals);
}

const Action kActions[] = {
    {"Add",
     [](ExpansionWorld& world) {
         world.add({u"M1", 0, u"", u"added", u""});
     },
     false, 1},
    {"AddWithAnErrorsFile",
     [](ExpansionWorld& world) {
         world.add({u"M1", 0, u"P1", u"added", u"given.errors"});
     },
     false, 1},
    {"AddThatClearsTheLists",
     [](ExpansionWorld& world) {
         world.globals.options.KeepInSession = false;
         world.add({u"M1", 0, u"", u"added", u""});
     },
     false, 1},
    {"StartOfASeries",
     [](ExpansionWorld& world) {
         world.globals.options.KeepInSession = false;
         world.startSeries();
         world.add({u"M1", 0, u"", u"added", u""});
     },
     false, 1},
    {"CloseDB", [](ExpansionWorld& world) { world.close(); }},
    {"OpenDB", [](ExpansionWorld& world) { world.open(); }},
    {"CloseAndOpenDB",
     [](ExpansionWorld& world) {
         world.close();
         world.open();
     }},
    {"Clear", [](ExpansionWorld& world) { view::ClearLists(world.globals); }},
    {"RemoveTheEntry", [](ExpansionWorld& world) { removeAsHost(world, 2); }, false, 0, true},
    {"RemoveTheRowAbove", [](ExpansionWorld& world) { removeAsHost(world, 1); }},
    {"DeleteTheEntry", [](ExpansionWorld& world) { deleteRow(world, 0, 2); }},
    {"DeleteTheEntryInTheOtherList", [](ExpansionWorld& world) { deleteRow(world, 1, 2); }},
    {"DeleteTheRowAbove", [](ExpansionWorld& world) { deleteRow(world, 0, 1); }},
    {"DeleteAChild", [](ExpansionWorld& world) { deleteRow(world, 0, 4); }},
    {"DeleteTheFirstChild", [](ExpansionWorld& world) { deleteRow(world, 0, 3); }},
    {"DeleteARowFarBelow", [](ExpansionWorld& world) { deleteRow(world, 1, world.list(1).rowCount()); }},
    {"Sort",
     [](ExpansionWorld& world) {
         if (!world.controls.empty()) view::SortByColumn(world.globals, world.view(), 3);
     }},
    {"SortedByTheHost",
     [](ExpansionWorld& world) {
         for (const auto& list : world.globals.LogViews.all())
             if (list->rowCount() == 3) list->setSorted(true);
     }},
    {"HideAColumn", [](ExpansionWorld& world) { world.list().setColumnWidth(3, 0); }},
    {"ExpandAgain", [](ExpansionWorld& world) { world.expand(0); }},
    {"ExpandInTheOtherList", [](ExpansionWorld& world) { world.expand(1); }},
    {"ExpandAnotherEntry",
     [](ExpansionWorld& world) { ExpandEntry(world.globals, world.view(), world.list().rowCount()); }},
    {"Collapse", [](ExpansionWorld& world) { CollapseEntry(world.globals, world.view(), kAllEntries); }},
    {"Hide", [](ExpansionWorld& world) { host::PutVisible(world.globals, false); }},
    {"Show", [](ExpansionWorld& world) { host::PutVisible(world.globals, true); }},
    {"Dock",
     [](ExpansionWorld& world) {
         host::PutParent(world.globals, world.host.workspace);
         host::PutDocked(world.globals, !world.globals.options.DockedOption);
     }},
    {"ShowHistory", showHistory},
    {"Cancel", [](ExpansionWorld& world) { world.pressCancel(); }, true},
    {"CloseTheStrip",
     [](ExpansionWorld& world) {
         if (world.globals.frmCancel) world.forms().live.back()->userCloses();
     },
     true},
    {"EndOfTheProgram", [](ExpansionWorld& world) { world.platform.pump.programEnds = true; }, true},
    {"EndOfTheControl", [](ExpansionWorld& world) { world.removeControl(0); }},
    {"EndOfTheOtherControl", [](ExpansionWorld& world) { world.removeControl(1); }},
    {"EndOfAllControls", [](ExpansionWorld& world) { world.controls.clear(); }},
    {"EndOfTheControlsWindow", [](ExpansionWorld& world) { world.list().attach(nullptr); }},
    {"ANewControl", [](ExpansionWorld& world) { world.addControl(); }},
    {"EndOfTheLogObject", [](ExpansionWorld& world) { world.log.reset(); }},
    {"ObjectModified", [](ExpansionWorld& world) { RepositoryObjectModified(world.globals, u"P1"); }},
    {"ObjectModifiedWithoutFile",
     [](ExpansionWorld& world) {
         world.platform.files.remove(tests::kErrorsPath);
         RepositoryObjectModified(world.globals, u"P1");
     }},
    {"ChangedFilter",
     [](ExpansionWorld& world) {
         world.globals.options.ErrorsListFilter = {
             {u'E', !world.globals.options.ErrorsListFilter.hides(u'E')}};
     }},
    {"SavedOptions", [](ExpansionWorld& world) { core::UserOptions_Saved(world.globals); }},
};

std::string sixtyLines() {
    std::string content;
    for (int i = 0; i < 60; ++i)
        content +=
            errorLine("PROG", i % 2 ? "PAYROLL" : "UNKNOWN", "Error", "E" + std::to_string(i % 3), "m");
    return content;
}

/// The list that is acted on, and how many there are.
struct Lists {
    std::size_t acted;
    std::size_t count;
};

class ExpandReentrancy : public testing::TestWithParam<std::tuple<Action, Lists>> {
protected:
    static const Action& action() { return std::get<Action>(GetParam()); }
    static const Lists& lists() { return std::get<Lists>(GetParam()); }

    std::unique_ptr<ExpansionWorld> makeWorld() {
        ran_ = false;
        auto world = std::make_unique<ExpansionWorld>(lists().count);
        world->writeErrors(sixtyLines());
        return world;
    }
    void act(ExpansionWorld& world) {
        if (std::exchange(ran_, true)) return;
        action().run(world);
        if (!action().orphans) tests::expectMessagesBelowTheirEntry(world);
    }
    /// Answers whether the action ran meanwhile.
    bool expand(ExpansionWorld& world) {
        const auto before = world.engine.records();
        base::ignoring([&] { world.expand(lists().acted); });
        const auto& after = world.engine.records();
        EXPECT_EQ(after.size(), before.size() + static_cast<std::size_t>(ran_ ? action().adds : 0));
        EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin())) << "a record is another one";
        check(world);
        return ran_;
    }
    static void check(ExpansionWorld& world) {
        world.calls.insideCall = nullptr;
        world.platform.pump.atYield = nullptr;
        world.platform.pump.hasInput = nullptr;
        world.platform.pump.programEnds = false;
        tests::expectMessagesBelowTheirEntry(world);
        if (action().stops) { // the row of the checkpoint is in one list alone; closing the entry takes it
            EXPECT_FALSE(world.globals.ExpansionBusy);
            EXPECT_EQ(world.globals.frmCancel, nullptr);
            CollapseEntry(world.globals, world.view(lists().acted), kAllEntries);
        }
        expectNothingLeft(world);
    }

    static bool isForeign(const std::string& call) {
        for (const std::string_view foreign :
             {"Workspace.", "Repository.", "ERD.", "Entities.", "Type:", "Object:", "MessagePump.yield"})
            if (call.starts_with(foreign)) return true;
        return false;
    }

private:
    bool ran_ = false;
};

TEST_P(ExpandReentrancy, InAnyYieldLeavesTheListsInStep) {
    for (int number = 1;; ++number) {
        const auto world = makeWorld();
        int lines = 0;
        world->platform.pump.hasInput = [&] { return ++lines % 7 == 0; };
        world->platform.pump.atYield = [&](int yield) {
            if (yield == number) act(*world);
        };
        SCOPED_TRACE("yield " + std::to_string(number));
        if (!expand(*world)) {
            EXPECT_GT(number, 8) << "too few yields";
            break;
        }
    }
}

TEST_P(ExpandReentrancy, InAnyHostCallLeavesTheListsInStep) {
    for (int number = 1;; ++number) {
        const auto world = makeWorld();
        int calls = 0;
        world->calls.insideCall = [&](const std::string& call) {
            if (isForeign(call) && ++calls == number) base::ignoring([&] { act(*world); });
        };
        SCOPED_TRACE("host call " + std::to_string(number));
        if (!expand(*world)) {
            EXPECT_GT(number, 15) << "too few calls";
            break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Actions, ExpandReentrancy,
                         testing::Combine(testing::ValuesIn(kActions),
                                          testing::Values(Lists{0, 2}, Lists{1, 3})),
                         [](const auto& instance) {
                             const Lists& lists = std::get<Lists>(instance.param);
                             return std::string(std::get<Action>(instance.param).name) + "InList" +
                                    std::to_string(lists.acted + 1) + "Of" + std::to_string(lists.count);
                         });

class ExpandMeanwhile : public testing::Test {
protected:
    ExpandMeanwhile() { world.writeLines(120); }
    ~ExpandMeanwhile() override { expectNothingLeft(world); }
    int childCount(std::size_t index = 0) { return static_cast<int>(world.messages(index).size()); }
    static constexpr int kMessageColumn = 7;
    ExpansionWorld world{2};
};

TEST_F(ExpandMeanwhile, AddsRowsBelowAndLosesNone) {
    world.atYield(1, [&] { world.add({u"M1", 0, u"", u"added", u""}); });
    world.expand();
    EXPECT_EQ(childCount(0), 120);
    EXPECT_EQ(childCount(1), 120);
    EXPECT_EQ(world.list().row(world.list().rowCount()).cellText(6), u"added");
    EXPECT_EQ(world.engine.records().size(), 4U);
}

TEST_F(ExpandMeanwhile, AddsRowsAtTheEndOfListsThatWereSortedBefore) {
    for (const std::size_t index : {0U, 1U}) {
        world.list(index).setSort(kMessageColumn - 1, widgets::SortOrder::Ascending);
        world.list(index).setSorted(true);
    }
    world.add({u"M1", 0, u"", u"zone", u""});
    world.atYield(1, [&] { world.add({u"M1", 0, u"", u"added", u""}); });
    constexpr int kOpened = 3; // of: after, before, opened, zone
    ExpandEntry(world.globals, world.view(), kOpened);
    for (const std::size_t index : {0U, 1U}) {
        const widgets::ListView& list = world.list(index);
        ASSERT_EQ(list.rowCount(), 4 + 120 + 1);
        EXPECT_EQ(world.messages(index, kOpened).size(), 120U);
        EXPECT_EQ(list.row(kOpened).cellText(6), u"opened");
        EXPECT_EQ(list.row(kOpened + 121).cellText(6), u"zone");
        EXPECT_EQ(list.row(list.rowCount()).cellText(6), u"added") << "not at its sorted place";
        EXPECT_FALSE(list.sorted());
    }
    EXPECT_EQ(world.engine.records().size(), 5U);
}

TEST_F(ExpandMeanwhile, FollowsTheEntryWhenRowsAboveItGo) {
    world.atYield(1, [&] {
        world.list().remove(1);
        world.list(1).remove(1);
    });
    world.expand();
    EXPECT_EQ(world.list().rowCount(), 122);
    EXPECT_EQ(world.list().row(2).cellText(6), u"line 1");
    EXPECT_EQ(world.list().row(121).cellText(6), u"line 120");
    EXPECT_EQ(world.list().row(122).cellText(6), u"after");
}

TEST_F(ExpandMeanwhile, StopsWhenTheEntryGoesAndTakesItsRowsAlong) {
    world.atYield(2, [&] { removeAsHost(world, 2); }); // a user's command is refused meanwhile
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 2);
    EXPECT_EQ(world.list(0).rowCount(), 2);
    EXPECT_EQ(world.list(1).rowCount(), 2);
}

TEST_F(ExpandMeanwhile, StopsWhenItsListGoesAndLeavesTheRowsOfTheOthers) {
    world.atYield(2, [&] { world.removeControl(0); });
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 2);
    EXPECT_EQ(world.messages(0).size(), 99U);
}

TEST_F(ExpandMeanwhile, DoesNotGiveANewListARowTwice) {
    world.atYield(2, [&] { world.addControl(); });
    world.expand();
    EXPECT_EQ(childCount(2), 120);
}

TEST_F(ExpandMeanwhile, InASecondListGivesANewListEveryRow) {
    world.atYield(2, [&] { world.addControl(); });
    world.expand(1);
    EXPECT_EQ(childCount(0), 120);
    EXPECT_EQ(childCount(2), 120);
}

TEST_F(ExpandMeanwhile, OpensNoSecondEntry) {
    world.add({u"M1", 2, u"P1", u"other", u"given.errors"});
    world.atYield(1, [&] { ExpandEntry(world.globals, world.view(), world.list().rowCount()); });
    world.expand();
    EXPECT_EQ(world.list().rowCount(), 4 + 120);
    EXPECT_EQ(world.forms().shown.size(), 1U);
}

TEST_F(ExpandMeanwhile, RaisesNoEvents) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.atYield(1, [&] { platform::headless::peerOf(world.list()).userEnters(); });
    world.expand();
    EXPECT_EQ(sink->ids.size(), 0U);
    platform::headless::peerOf(world.list()).userEnters();
    EXPECT_EQ(sink->ids.size(), 1U);
}

} // namespace
} // namespace cvlog::details
