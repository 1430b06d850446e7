// Every outward call of every shape of Add fails once, and for good from it on.

#include "core/adding.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using tests::LogWorld;
using tests::SweepRun;

struct Shape {
    const char* name;
    Report report;
    std::size_t lists = 2;
    bool inSeries = false;
    bool keepRows = false;
    bool reported = false; // the log is out of view: a box tells the outcome
    bool sorted = false;
    bool withIcons = true;
};

void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }

const Shape kShapes[] = {
    {.name = "Empty", .report = {u"", 0, u"", u"", u""}},
    {.name = "Method", .report = {u"M1", 0, u"", u"", u""}},
    {.name = "Alias", .report = {u"M2", 1, u"", u"message", u""}},
    {.name = "UnknownMethod", .report = {u"unknown", 1, u"", u"message", u""}},
    {.name = "Object", .report = {u"M1", 0, u"P1", u"message", u""}},
    {.name = "ObjectWithErrorsFile", .report = {u"", 2, u"P1", u"message", u"given.errors"}},
    {.name = "Composite", .report = {u"M1", -1, u"G1", u"message", u""}},
    {.name = "InSeries", .report = {u"M1", -2, u"P1", u"message", u""}, .inSeries = true},
    {.name = "KeepingRows", .report = {u"M1", 0, u"P1", u"message", u""}, .keepRows = true},
    {.name = "ReportedSuccess", .report = {u"M1", 0, u"", u"message", u""}, .reported = true},
    {.name = "ReportedFailure", .report = {u"M1", -1, u"", u"message", u""}, .reported = true},
    {.name = "SortedLists", .report = {u"M1", 0, u"P1", u"message", u""}, .inSeries = true, .sorted = true},
    {.name = "NoIconsYet", .report = {u"M1", 0, u"P1", u"message", u""}, .withIcons = false},
    {.name = "NoList", .report = {u"M1", 0, u"P1", u"message", u""}, .lists = 0},
    {.name = "OneList", .report = {u"M1", 0, u"P1", u"message", u""}, .lists = 1},
    {.name = "FourLists", .report = {u"M1", 0, u"P1", u"message", u""}, .lists = 4, .keepRows = true},
};

constexpr std::size_t kEarlierRows = 3;

std::unique_ptr<LogWorld> arrange(const Shape& shape) {
    auto world = tests::openWorld(shape.lists);
    world->peersMustAgree = false; // a list whose peer fails cannot be followed
    world->platform.files.addFile(u"C:\\Proj\\payroll.errors");
    world->globals.options.KeepInSession = true;
    for (std::size_t i = 0; i < kEarlierRows; ++i)
        world->add({u"M1", static_cast<std::int32_t>(i), u"", u"earlier", u""});
    for (const auto& list : world->globals.LogViews.all()) {
        if (shape.sorted) {
            list->setSort(6, widgets::SortOrder::Descending);
            list->setSorted(true);
        }
        if (!shape.withIcons) {
            list->setSmallIcons(nullptr);
            list->setHeaderIcons(nullptr);
        }
    }
    if (!shape.withIcons) world->globals.frmLogResources.reset();
    world->globals.options.KeepInSession = shape.keepRows;
    world->globals.series.InSeries = shape.inSeries;
    world->globals.LogWindowVisible = !shape.reported;
    return world;
}

bool isEngineCall(const std::string& name) {
    return name.starts_with("Recordset.") || name.starts_with("Database.") || name.starts_with("Engine.");
}

class EveryShapeOfAdd : public testing::TestWithParam<Shape> {
protected:
    static void check(LogWorld& world, const SweepRun& run) {
        tests::expectListsInStep(world);
        checkRecords(world, run);
        checkRows(world, run);
        if (run.error) {
            EXPECT_EQ(run.error->code(), tests::CallCounter::injectedError().code())
                << "the failure is changed on its way";
        }
        EXPECT_FALSE(world.globals.ExpansionBusy);
        EXPECT_TRUE(run.armed || !run.error);
        EXPECT_NO_THROW(world.add({u"M1", 0, u"P1", u"next", u""})) << "the next Add works again";
        tests::expectListsInStep(world);
    }

private:
    static int added(LogWorld& world) {
        return static_cast<int>(world.engine.records().size() - kEarlierRows);
    }

    static void checkRecords(LogWorld& world, const SweepRun& run) {
        const bool update =
            world.calls.hasFailed("Recordset.update") || world.calls.hasFailed("Recordset.addNew");
        const auto& failed = world.calls.failed();
        const bool engine = std::any_of(failed.begin(), failed.end(), isEngineCall);
        EXPECT_GE(added(world), 0);
        EXPECT_LE(added(world), 1);
        if (!run.error) {
            EXPECT_EQ(added(world), update ? 0 : 1) << "a successful Add is exactly one record";
        }
        for (std::size_t i = 0; i < kEarlierRows; ++i)
            EXPECT_TRUE(
                automation::toText(world.engine.records()[i].at(u"LogMessage")).ends_with(u"earlier"));
        if (added(world) == 1 && !engine) {
            EXPECT_FALSE(world.engine.records().back().at(u"LogMessage").is<automation::Null>());
        }
    }

    static bool onlyTheReportFailed(LogWorld& world) {
        const std::string& ending = world.calls.failed().back(); // the failure that ended the Add
        return ending.starts_with("MessageBoxes.") || ending.starts_with("Workspace.ActiveToolList") ||
               ending.starts_with("Tools.") || ending.starts_with("Workspace.GetProductInfo");
    }

    static void checkRows(LogWorld& world, const SweepRun& run) {
        const auto first = world.globals.LogViews.first();
        if (!first) return;
        int rows = 0;
        for (int position = 1; position <= first->rowCount(); ++position)
            rows += first->row(position).cellText(6) == u"earlier" ? 0 : 1;
        EXPECT_LE(rows, 1);
        const bool recordLost = world.calls.hasFailed("Recordset.");
        if (!recordLost) {
            EXPECT_LE(rows, added(world)) << "no row without its record";
        }
        if (!run.error) {
            EXPECT_EQ(rows, 1) << "a successful Add shows its row";
        } else if (!onlyTheReportFailed(world)) {
            EXPECT_EQ(rows, 0) << "a failed Add shows no row";
        }
    }
};

TEST_P(EveryShapeOfAdd, HoldsTheInvariantsWhateverCallFails) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] { return arrange(GetParam()); };
    sweep.scenario = [](LogWorld& world) { world.add(GetParam().report); };
    sweep.check = check;
    sweep.leastCalls = GetParam().lists == 0 ? 8 : 12;
    sweep.run();
}

INSTANTIATE_TEST_SUITE_P(Shapes, EveryShapeOfAdd, testing::ValuesIn(kShapes),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(FaultSweepOfASeries, LeavesListsInStepAndTheSeriesUsable) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] { return arrange(kShapes[0]); };
    sweep.scenario = [](LogWorld& world) {
        world.startSeries();
        world.add({u"M1", 1, u"P1", u"one", u""});
        world.add({u"M2", 2, u"G1", u"two", u""});
        world.finishSeries();
    };
    sweep.check = [](LogWorld& world, const SweepRun&) {
        tests::expectListsInStep(world);
        world.startSeries();
        world.add({u"", 1, u"", u"again", u""});
        EXPECT_EQ(world.list().rowCount(), 1);
        EXPECT_EQ(world.globals.series.finish(), 1);
    };
    sweep.leastCalls = 40;
    sweep.run();
}

} // namespace
} // namespace cvlog::core
