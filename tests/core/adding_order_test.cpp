// The order of what an Add does outside, and what remains when a host call on the way fails.

#include "automation/error.h"
#include "core/adding.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using Journal = std::vector<std::string>;
using tests::kHostError;
using tests::LogWorld;

class AddingOrder : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.platform.files.addFile(u"C:\\Proj\\batch.errors");
        world.addControl();
        world.addControl();
        world.log->events().advise(sink);
        sink->handler = [this](std::int32_t, std::span<automation::Value>) {
            world.calls.call("Event.LogChanged");
        };
        world.calls.restart();
    }
    LogWorld world;
    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
};

TEST_F(AddingOrder, IsMethodObjectRecordEventRowAndTheBoxLast) {
    world.globals.LogWindowVisible = false;
    world.add({u"M2", 2, u"G1", u"message", u""});
    const Journal order = world.calls.journalOf({"Workspace.", "Methods.", "Method:", "Repository.",
                                                 "Object:", "Type:", "FileSystem.", "Recordset.", "Event.",
                                                 "List.cleared", "List.rowsInserted", "MessageBoxes."});
    EXPECT_EQ(order, (Journal{"Workspace.Methods",
                              "Methods.Item(M2)",
                              "Method:M2.AliasID",
                              "Workspace.Methods",
                              "Methods.Item(M1)",
                              "Method:M1.DisplayName",
                              "Workspace.Repository",
                              "Repository.object(G1)",
                              "Object:G1.EntityType",
                              "Type:GRP.KeyProperty",
                              "Object:G1.Property(Source)",
                              "Workspace.GetCalvettaName(4)",
                              "FileSystem.fileExists",
                              "Type:GRP.Flags",
                              "Workspace.Repository",
                              "Repository.ERD",
                              "Workspace.ProjectObject",
                              "Object:PRJ.EntityType",
                              "Object:PRJ.DisplayName",
                              "Object:PRJ.EntityType",
                              "Workspace.Repository",
                              "Repository.ERD",
                              "Type:PROJ.ID",
                              "Workspace.TranslateReturnCode(2)",
                              "Object:PRJ.Property(Name)",
                              "Object:PRJ.EntityType",
                              "Type:PROJ.KeyName",
                              "Recordset.addNew",
                              "Recordset.assign(MethodName)",
                              "Recordset.assign(ObjectName)",
                              "Recordset.assign(ObjectType)",
                              "Recordset.assign(LogMessage)",
                              "Recordset.assign(ReturnMessage)",
                              "Recordset.assign(Errors)",
                              "Recordset.update",
                              "Event.LogChanged",
                              "List.cleared",
                              "List.cleared",
                              "Type:PROJ.DisplayName",
                              "Object:PRJ.Name",
                              "Object:PRJ.ID",
                              "Type:PROJ.KeyName",
                              "Workspace.TranslateReturnCode(2)",
                              "List.rowsInserted",
                              "List.rowsInserted",
                              "Workspace.GetProductInfo(Workbench.Name)",
                              "MessageBoxes.ask"}));
}

TEST_F(AddingOrder, ShowsTheHandlerOfTheEventTheListsBeforeTheyAreClearedAndWithoutTheRow) {
    world.hideBoxes();
    world.add({u"", 0, u"", u"first", u""});
    int rows = -1;
    std::size_t records = 0;
    sink->handler = [&](std::int32_t, std::span<automation::Value>) {
        rows = world.list().rowCount();
        records = world.engine.records().size();
        EXPECT_EQ(world.list().row(1).cellText(6), u"first");
    };
    world.add({u"", 0, u"", u"second", u""});
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(records, 2U);
    EXPECT_EQ(world.list().row(1).cellText(6), u"second");
}

TEST_F(AddingOrder, TakesTheOldestListForTheFirst) {
    world.hideBoxes();
    world.globals.options.KeepInSession = true;
    world.add({u"", 0, u"", u"earlier", u""});
    world.removeControl(0);
    world.addControl();
    for (const std::size_t index : {0U, 1U}) world.list(index).select(1, true);
    world.add({u"", 0, u"", u"later", u""});
    EXPECT_FALSE(world.list(0).isSelected(1)) << "only the first list loses its selected row";
    EXPECT_TRUE(world.list(1).isSelected(1));
}

TEST_F(AddingOrder, OpensTheBoxWhenRecordRowsAndColumnsAreDone) {
    world.globals.LogWindowVisible = false;
    world.platform.messages.whileOpen = [this] {
        EXPECT_EQ(world.engine.records().size(), 1U);
        EXPECT_EQ(world.list(0).rowCount(), 1);
        EXPECT_EQ(world.list(1).rowCount(), 1);
        EXPECT_GE(world.list(1).column(7).width, world.list(1).cellWidth(1, 7) + 180);
        EXPECT_FALSE(world.globals.series.InSeries);
    };
    world.add({u"", -1, u"", u"a message much wider than the caption of its column is", u""});
    EXPECT_EQ(world.platform.messages.shown.size(), 1U);
}

struct HostFailure {
    const char* name;
    std::shared_ptr<tests::ScriptObject> (*object)(tests::FakeHost&);
    const char16_t* member;
    const char16_t* methodId;
};

void PrintTo(const HostFailure& failure, std::ostream* out) { *out << failure.name; }

std::shared_ptr<tests::ScriptObject> workspaceOf(tests::FakeHost& host) { return host.workspace; }

class FailsBeforeTheRecord : public AddingOrder, public testing::WithParamInterface<HostFailure> {};

TEST_P(FailsBeforeTheRecord, AndLeavesNoTrace) {
    world.hideBoxes();
    GetParam().object(world.host)->raise(GetParam().member, kHostError);
    world.globals.LastEntryTime = {};
    try {
        world.add({GetParam().methodId, 0, u"G1", u"message", u""});
        FAIL() << "the failure did not reach the caller";
    } catch (const automation::AutomationError& error) {
        EXPECT_EQ(error.code(), kHostError.code());
        EXPECT_EQ(error.description(), kHostError.description());
        EXPECT_EQ(error.source(), kHostError.source());
    }
    EXPECT_TRUE(world.engine.records().empty());
    EXPECT_TRUE(sink->ids.empty());
    EXPECT_EQ(world.list().rowCount(), 0);
    EXPECT_EQ(world.globals.LastEntryTime, base::LocalTime{});
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailsBeforeTheRecord,
    testing::Values(
        HostFailure{"Methods", workspaceOf, u"Methods", u"M1"},
        HostFailure{"Repository", workspaceOf, u"Repository", u""},
        HostFailure{
            "object",
            [](tests::FakeHost& host) -> std::shared_ptr<tests::ScriptObject> { return host.repository; },
            u"object", u""},
        HostFailure{"EntityType", [](tests::FakeHost& host) { return host.objects[u"G1"]; }, u"EntityType",
                    u""},
        HostFailure{"GetCalvettaName", workspaceOf, u"GetCalvettaName", u""},
        HostFailure{"Flags", [](tests::FakeHost& host) { return host.types[u"GRP"]; }, u"Flags", u""},
        HostFailure{"EntityFlags", [](tests::FakeHost& host) { return host.erd; }, u"EntityFlags", u""},
        HostFailure{"ProjectObject", workspaceOf, u"ProjectObject", u""},
        HostFailure{"DisplayName", [](tests::FakeHost& host) { return host.objects[u"PRJ"]; }, u"DisplayName",
                    u""},
        HostFailure{"TranslateReturnCode", workspaceOf, u"TranslateReturnCode", u"M1"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(AddingOrder, FailsForAnObjectThatTheRepositoryDoesNotKnow) {
    EXPECT_THROW(world.add({u"", 0, u"unknown", u"message", u""}), automation::AutomationError);
    EXPECT_TRUE(world.engine.records().empty());
    EXPECT_EQ(world.list().rowCount(), 0);
}

TEST_F(AddingOrder, KeepsTheRecordButShowsNoRowWhenTheHostFailsAfterIt) {
    world.hideBoxes();
    world.add({u"", 0, u"", u"earlier", u""});
    world.platform.clock.advance(7);
    world.host.workspace->raise(u"TranslateReturnCode", kHostError);
    EXPECT_THROW(world.add({u"", 0, u"", u"message", u""}), automation::AutomationError);
    EXPECT_EQ(world.engine.records().size(), 2U);
    EXPECT_EQ(sink->ids.size(), 2U);
    EXPECT_EQ(world.list(0).rowCount(), 0) << "the clearing has happened, the row has not";
    EXPECT_EQ(world.list(1).rowCount(), 0);
    EXPECT_EQ(world.globals.LastEntryTime, world.platform.clock.time);
}

TEST_F(AddingOrder, IgnoresAFailingLoadOfTheIcons) {
    world.globals.frmLogResources.reset();
    world.platform.gate.watcher = [](std::string_view name) {
        if (name.starts_with("Pictures.")) throw kHostError;
    };
    EXPECT_NO_THROW(world.add({u"", 0, u"", u"message", u""}));
    EXPECT_EQ(world.list().rowCount(), 1);
}

} // namespace
} // namespace cvlog::core
