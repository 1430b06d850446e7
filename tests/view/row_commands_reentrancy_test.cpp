// The host runs other code whenever a command on rows sets its pointer: it may add, sort, close, and destroy what it
// likes. Whatever it does, at whichever call, the lists stay sound and the next command works.

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "details/expansion.h"
#include "tests/support/opened_log.h"
#include "view/list_set.h"
#include "view/log_columns.h"
#include "view/row_commands.h"
#include "view/sorting.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using tests::firstOf;
using tests::LogWorld;
using tests::Names;
using tests::namesOf;

struct Step {
    const char* name;
    void (*run)(LogWorld&);
};

template <class Action>
void onFirst(LogWorld& world, Action&& action) {
    if (const auto list = firstOf(world)) action(world.globals, list);
}

void removeSelected(LogWorld& world) {
    onFirst(world, [](auto& globals, const auto& list) { DeleteRows(globals, list); });
}

void collapseAll(LogWorld& world) {
    onFirst(world, [](auto& globals, const auto& list) {
        details::CollapseEntry(globals, list, details::kAllEntries);
    });
}

// The commands under test act on a list that its control holds, as the control's own handlers do.
constexpr Step kInterrupted[] = {
    {"CollapseOne",
     [](LogWorld& world) {
         details::CollapseEntry(world.globals, firstOf(world), tests::placeOf(world.list(), "2"));
     }},
    {"CollapseAll", collapseAll},
    {"CollapseOfAChildRow",
     [](LogWorld& world) {
         details::CollapseSelectedEntry(world.globals, firstOf(world), tests::placeOf(world.list(), "+2.2"));
     }},
    {"RemoveOpenEntry",
     [](LogWorld& world) {
         details::RemoveLogRow(world.globals, firstOf(world), tests::placeOf(world.list(), "4"));
     }},
    {"Delete", removeSelected},
    {"Copy", [](LogWorld& world) { CopyRows(world.globals, firstOf(world)); }},
    {"Sort", [](LogWorld& world) { SortByColumn(world.globals, firstOf(world), 7); }},
    {"HideColumn", [](LogWorld& world) { ShowColumn(world.globals, u"Method", false); }},
    {"ShowColumn", [](LogWorld& world) { ShowColumn(world.globals, u"Method", true); }},
};

constexpr Step kActions[] = {
    {"Add", [](LogWorld& world) { tests::addEntry(world, "new"); }},
    {"AddThatResets",
     [](LogWorld& world) {
         world.globals.options.KeepInSession = false;
         tests::addEntry(world, "new");
         world.globals.options.KeepInSession = true;
     }},
    {"SeriesStart",
     [](LogWorld& world) {
         world.globals.options.KeepInSession = false;
         world.startSeries();
         world.globals.options.KeepInSession = true;
     }},
    {"CloseDB", [](LogWorld& world) { world.close(); }},
    {"OpenDB", [](LogWorld& world) { world.open(); }},
    {"CloseAndOpenDB",
     [](LogWorld& world) {
         world.close();
         world.open();
     }},
    {"Clear", [](LogWorld& world) { ClearLists(world.globals); }},
    {"ClearAndAdd",
     [](LogWorld& world) {
         ClearLists(world.globals);
         tests::addEntries(world, {"x", "y"});
     }},
    {"Delete", removeSelected},
    {"SelectAllAndDelete",
     [](LogWorld& world) {
         if (const auto list = firstOf(world)) list->selectAll(true);
         removeSelected(world);
     }},
    {"DeselectAll",
     [](LogWorld& world) {
         if (const auto list = firstOf(world)) list->selectAll(false);
     }},
    {"Copy",
     [](LogWorld& world) {
         onFirst(world, [](auto& globals, const auto& list) { CopyRows(globals, list); });
     }},
    {"Sort",
     [](LogWorld& world) {
         onFirst(world, [](auto& globals, const auto& list) { SortByColumn(globals, list, 1); });
     }},
    {"ShowColumn", [](LogWorld& world) { ShowColumn(world.globals, u"Result", false); }},
    {"CollapseAll", collapseAll},
    {"OpenAnEntry",
     [](LogWorld& world) {
         const auto list = firstOf(world);
         if (!list || list->rowCount() == 0 || core::IsChildRow(list->row(1)) || core::IsExpanded(*list, 1))
             return;
         tests::openEntry(world, 1, 1);
     }},
    {"RemoveFirstControl",
     [](LogWorld& world) {
         if (!world.controls.empty()) world.removeControl(0);
     }},
    {"RemoveLastControl",
     [](LogWorld& world) {
         if (!world.controls.empty()) world.controls.pop_back();
     }},
    {"RemoveAllControls", [](LogWorld& world) { world.controls.clear(); }},
    {"NewControl",
     [](LogWorld& world) {
         if (world.controls.size() < 4) world.addControl();
     }},
    {"DestroyTheLog",
     [](LogWorld& world) {
         world.globals.store.CurrentLog.reset();
         world.log.reset();
         world.log = std::make_shared<core::CVLog>(world.globals);
     }},
};

void PrintTo(const Step& step, std::ostream* out) { *out << step.name; }

class RowCommandsReentrancy : public testing::TestWithParam<std::tuple<Step, Step, std::size_t>> {
protected:
    const Step& command() const { return std::get<0>(GetParam()); }
    const Step& action() const { return std::get<1>(GetParam()); }

    static std::unique_ptr<LogWorld> arrange() {
        auto world = tests::keepingWorld(std::get<2>(GetParam()));
        tests::addEntries(*world, {"1", "2", "3", "4", "5"});
        tests::openEntry(*world, 4, 1);
        tests::openEntry(*world, 2, 2);
        tests::selectRows(world->list(), {"1", "2", "+2.1", "4"});
        return world;
    }

    // Runs the command with the action inside its n-th call of the host; false when it has fewer.
    bool runWithActionAt(int number) {
        const auto world = arrange();
        int calls = 0;
        bool inside = false;
        world->calls.insideCall = [&](const std::string& name) {
            if (inside || !name.starts_with("Workspace.") || ++calls != number) return;
            SCOPED_TRACE("inside call " + std::to_string(number) + ": " + name);
            expectNothingHeldBack(*world);
            inside = true;
            base::ignoring([&] { action().run(*world); }); // a closed log refuses some
            inside = false;
        };
        base::ignoring([&] { command().run(*world); });
        world->calls.insideCall = nullptr;
        SCOPED_TRACE("after an action inside call " + std::to_string(number));
        tests::expectSound(*world);
        expectNothingHeldBack(*world);
        expectUsable(*world);
        return calls >= number;
    }

    static void expectNothingHeldBack(LogWorld& world) {
        for (const auto& list : world.globals.LogViews.all()) {
            const auto& peer = platform::headless::peerOf(*list);
            EXPECT_EQ(peer.told("batchBegan"), peer.told("batchEnded"));
        }
    }

    static void expectUsable(LogWorld& world) {
        if (!world.globals.store.Workspace) {
            ASSERT_TRUE(world.open());
        }
        world.globals.options.KeepInSession = true;
        if (world.controls.empty()) world.addControl();
        world.hideBoxes();
        collapseAll(world);
        tests::addEntry(world, "last");
        tests::expectSound(world);
        world.list().selectAll(true);
        DeleteRows(world.globals, firstOf(world));
        EXPECT_EQ(namesOf(world.list()), Names());
        tests::expectSound(world);
    }
};

TEST_P(RowCommandsReentrancy, LeavesTheListsSoundWhateverTheHostDoes) {
    int number = 1;
    while (runWithActionAt(number) && !HasFatalFailure()) ++number;
    EXPECT_GT(number, 1) << "the command never called the host";
}

INSTANTIATE_TEST_SUITE_P(Matrix, RowCommandsReentrancy,
                         testing::Combine(testing::ValuesIn(kInterrupted), testing::ValuesIn(kActions),
                                          testing::Values(1U, 2U, 3U)),
                         [](const auto& instance) {
                             return std::string(std::get<0>(instance.param).name) + "_" +
                                    std::get<1>(instance.param).name + "_" +
                                    std::to_string(std::get<2>(instance.param));
                         });

/// What the commands make of it, where more than one outcome would be sound.
class RowCommandsMeanwhile : public testing::Test {
protected:
    RowCommandsMeanwhile() : owner(tests::keepingWorld(2)), world(*owner) {
        tests::addEntries(world, {"1", "2", "3"});
        tests::openEntry(world, 2, 1);
    }
    void atPointer(int number, std::function<void()> action) {
        world.host.workspace->before(u"SetMainWindowCursor", [this, number, action = std::move(action)] {
            if (++calls_ == number) action();
        });
    }
    std::unique_ptr<LogWorld> owner;
    LogWorld& world;

private:
    int calls_ = 0;
};

TEST_F(RowCommandsMeanwhile, CollapsesTheEntryThatItWasAskedForAfterTheRowsMoved) {
    atPointer(1, [&] {
        for (const std::size_t list : {0U, 1U}) world.list(list).remove(1);
    });
    details::CollapseEntry(world.globals, firstOf(world), 2);
    EXPECT_EQ(namesOf(world.list()), (Names{"2", "3"}));
}

TEST_F(RowCommandsMeanwhile, DeletesTheRowsThatWereSelectedWhenItBegan) {
    tests::selectRows(world.list(), {"1", "2"});
    atPointer(2, [&] {
        world.list().selectAll(false);
        world.list().select(4, true);
        tests::addEntry(world, "4");
    });
    DeleteRows(world.globals, firstOf(world));
    EXPECT_EQ(namesOf(world.list()), (Names{"3", "4"}));
}

TEST_F(RowCommandsMeanwhile, RefusesEveryOtherCommandThatMovesRows) {
    tests::selectRows(world.list(), {"3"});
    atPointer(1, [&] {
        DeleteRows(world.globals, firstOf(world));
        SortByColumn(world.globals, firstOf(world), 7);
        details::CollapseEntry(world.globals, firstOf(world), 2);
        EXPECT_EQ(namesOf(world.list()), (Names{"1", "2", "+2.1", "3"}));
    });
    details::CollapseEntry(world.globals, firstOf(world), 2);
    EXPECT_EQ(namesOf(world.list()), (Names{"1", "2", "3"}));
    EXPECT_FALSE(world.list().sorted());
}

TEST_F(RowCommandsMeanwhile, KeepsAnEntryThatIsOpenedAgainWhileItIsDeleted) {
    tests::selectRows(world.list(), {"2"});
    atPointer(3, [&] { tests::openEntry(world, 2, 2); });
    DeleteRows(world.globals, firstOf(world));
    EXPECT_EQ(namesOf(world.list()), (Names{"1", "2", "+2.1", "+2.2", "3"})) << "no child row is left behind";
    tests::expectSound(world);
}

TEST_F(RowCommandsMeanwhile, RemovesTheRowsFromTheOthersWhenTheActingListGoes) {
    tests::selectRows(world.list(), {"2", "3"});
    atPointer(2, [&] { world.removeControl(0); });
    DeleteRows(world.globals, firstOf(world));
    EXPECT_EQ(namesOf(world.list()), Names{"1"});
    tests::expectSound(world);
}

TEST_F(RowCommandsMeanwhile, ActsOnAListWhoseControlHeldTheOnlyReference) {
    core::LogViews::ListRef held = firstOf(world); // as a control's own member is passed
    atPointer(1, [&] {
        held.reset();
        world.controls.clear();
    });
    tests::selectRows(world.list(), {"1"});
    CopyRows(world.globals, held);
    EXPECT_NE(world.platform.clipboard.text.value_or(u"").find(u"\t1\r\n"), std::u16string::npos);
}

} // namespace
} // namespace cvlog::view
