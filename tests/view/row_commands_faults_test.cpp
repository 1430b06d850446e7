// Every outward call of the commands on rows fails once, and for good from it on: the host's pointer and name, the
// clipboard, the settings, and what the lists tell their windows.

#include "details/expansion.h"
#include "tests/support/fault_sweep.h"
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
using tests::SweepRun;

const Names kOpened = {"a", "b", "+b.1", "+b.2", "c", "+c.1", "d"};

struct Command {
    const char* name;
    void (*run)(LogWorld&);
    Names after; // the rows, however its calls fail ...
    bool
        needsThePointer; // ... unless the host refuses its pointer at the start: then it fails and changes nothing
    int calls;
};

void PrintTo(const Command& command, std::ostream* out) { *out << command.name; }

const Command kCommands[] = {
    {"CollapseOne",
     [](LogWorld& world) { details::CollapseEntry(world.globals, firstOf(world), 2); },
     {"a", "b", "c", "+c.1", "d"},
     false,
     10},
    {"CollapseAll",
     [](LogWorld& world) { details::CollapseEntry(world.globals, firstOf(world), details::kAllEntries); },
     {"a", "b", "c", "d"},
     false,
     12},
    {"CollapseFromAChildRow",
     [](LogWorld& world) { details::CollapseSelectedEntry(world.globals, firstOf(world), 4); },
     {"a", "b", "c", "+c.1", "d"},
     false,
     10},
    {"RemoveOpenEntry",
     [](LogWorld& world) { details::RemoveLogRow(world.globals, firstOf(world), 2); },
     {"a", "c", "+c.1", "d"},
     false,
     10},
    {"Delete", [](LogWorld& world) { DeleteRows(world.globals, firstOf(world)); }, {"c", "+c.1"}, true, 15},
    {"Sort",
     [](LogWorld& world) { SortByColumn(world.globals, firstOf(world), 1); },
     {"a", "b", "c", "d"},
     false,
     15},
    {"Clear", [](LogWorld& world) { ClearLists(world.globals); }, {}, false, 2},
    {"Reset", [](LogWorld& world) { ResetLists(world.globals); }, {}, false, 10},
    {"HideColumn", [](LogWorld& world) { ShowColumn(world.globals, u"Method", false); }, kOpened, false, 6},
};

std::unique_ptr<LogWorld> arrange() {
    auto world = tests::keepingWorld(2);
    world->peersMustAgree = false; // a list whose peer fails cannot be followed
    tests::addEntries(*world, {"a", "b", "c", "d"});
    tests::openEntry(*world, 3, 1);
    tests::openEntry(*world, 2, 2);
    world->host.cursor = 3;
    return world;
}

class EveryCommand : public testing::TestWithParam<Command> {
protected:
    static Names expected(LogWorld& world, const SweepRun& run) {
        const Command& command = GetParam();
        const bool refused = command.needsThePointer && !world.calls.failed().empty() &&
                             world.calls.failed().front() == "Workspace.SetMainWindowCursor(11)" &&
                             run.error.has_value();
        return refused ? kOpened : command.after;
    }
    static void check(LogWorld& world, const SweepRun& run) {
        EXPECT_EQ(namesOf(world.list(0)), expected(world, run));
        tests::expectSound(world);
        if (run.error) {
            EXPECT_TRUE(GetParam().needsThePointer) << "only its start may fail";
            EXPECT_EQ(run.error->code(), tests::CallCounter::injectedError().code());
        }
        for (const std::size_t list : {0U, 1U}) {
            const widgets::ListView& shown = world.list(list);
            EXPECT_EQ(shown.sorted(), world.list(0).sorted());
            EXPECT_EQ(shown.column(3).width == 0, std::string(GetParam().name) == "HideColumn");
        }
        EXPECT_NO_THROW(tests::addEntry(world, "next")) << "the log goes on";
        tests::expectSound(world);
    }
};

TEST_P(EveryCommand, HoldsTheInvariantsWhateverCallFails) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] {
        auto world = arrange();
        tests::selectRows(world->list(), {"a", "b", "+b.2", "d"});
        return world;
    };
    sweep.scenario = [](LogWorld& world) { GetParam().run(world); };
    sweep.check = check;
    sweep.leastCalls = GetParam().calls;
    sweep.run();
}

INSTANTIATE_TEST_SUITE_P(Commands, EveryCommand, testing::ValuesIn(kCommands),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(FaultSweepOfCopying, PutsTheWholeTextOrNothingAndRestoresThePointer) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] {
        auto world = arrange();
        tests::selectRows(world->list(), {"a", "+b.1"});
        return world;
    };
    sweep.scenario = [](LogWorld& world) { CopyRows(world.globals, firstOf(world)); };
    sweep.check = [](LogWorld& world, const SweepRun& run) {
        EXPECT_EQ(namesOf(world.list()), kOpened);
        EXPECT_EQ(world.platform.clipboard.text.has_value(), !run.error.has_value());
        if (!world.calls.hasFailed("Workspace.SetMainWindowCursor(3)")) {
            EXPECT_EQ(world.host.cursor, 3);
        }
    };
    sweep.leastCalls = 3;
    sweep.run();
}

} // namespace
} // namespace cvlog::view
