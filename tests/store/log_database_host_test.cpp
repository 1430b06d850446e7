#include "automation/error.h"
#include "store/log_database.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

// What opening and closing ask of the host and of the settings, call by call.

namespace cvlog::store {
namespace {

using tests::kHostError;
using tests::LogWorld;

class NameOfTheHost : public testing::TestWithParam<std::int32_t> {
protected:
    void raiseForParam() {
        world.host.workspace->on(u"GetCalvettaName", [this](std::span<automation::Value> arguments) {
            const std::int32_t asked = automation::toInt32(arguments[0]);
            if (asked == GetParam()) throw automation::AutomationError(kHostError);
            return automation::Value(world.host.names[asked]);
        });
    }
    LogWorld world;
};

TEST_P(NameOfTheHost, ThatFailsMakesTheOpeningFalse) {
    raiseForParam();
    EXPECT_FALSE(world.open());
    EXPECT_TRUE(static_cast<bool>(world.globals.store.Workspace));
    EXPECT_EQ(world.globals.store.CurrentLog, nullptr);
    EXPECT_EQ(world.globals.store.LogRecordset != nullptr, GetParam() == 16);
    world.close();
    EXPECT_EQ(world.engine.openDatabases, 0);
    EXPECT_EQ(world.engine.openRecordsets, 0);
    EXPECT_FALSE(static_cast<bool>(world.globals.store.Workspace)) << "closing cleans up in full";
}

INSTANTIATE_TEST_SUITE_P(Folders, NameOfTheHost, testing::Values(4, 16));

TEST(OpeningALog, AsksTheHostInOrder) {
    LogWorld world;
    ASSERT_TRUE(world.open());
    EXPECT_EQ(world.calls.journalOf({"Workspace.GetHelpFile", "Workspace.GetCalvettaName", "Engine.open",
                                     "Database.openSnapshot", "Database.openTable", "Entities.Count",
                                     "Workspace.GetProductInfo", "Settings.get"}),
              (std::vector<std::string>{
                  "Workspace.GetHelpFile(Calvetta.hlp)", "Workspace.GetCalvettaName(4)",
                  "Engine.open(C:\\Proj\\PrjData.mdb)",
                  "Database.openSnapshot(Select RecordNum From LogInfo order by RecordNum desc)",
                  "Database.openTable(LogInfo)", "Workspace.GetCalvettaName(16)", "Entities.Count",
                  "Workspace.GetProductInfo(Product.Name)", "Settings.get"}));
}

TEST(OpeningALog, PlacesNothing) {
    LogWorld world;
    world.addControl();
    world.calls.restart();
    ASSERT_TRUE(world.open());
    EXPECT_TRUE(world.globals.LogWindowVisible);
    EXPECT_TRUE(world.platform.messages.shown.empty());
    EXPECT_EQ(world.calls.countOf("Workspace.ActiveToolList"), 0) << "the log is not asked to show itself";
}

TEST(OpeningALog, RaisesAFailingSettingsStoreOnceAnEntityTypeIsListed) {
    for (const bool listed : {true, false}) {
        LogWorld world;
        if (!listed)
            world.host.entities->on(u"Count",
                                    [](std::span<automation::Value>) { return automation::Value(0); });
        const auto earlier = std::make_shared<core::CVLog>(world.globals);
        world.globals.store.CurrentLog = earlier;
        world.calls.insideCall = [](const std::string& name) {
            if (name == "Settings.get") throw tests::CallCounter::injectedError();
        };
        if (listed)
            EXPECT_THROW(world.open(), automation::AutomationError);
        else
            EXPECT_FALSE(world.open());
        EXPECT_EQ(world.globals.store.CurrentLog, earlier) << "an earlier one stays";
    }
}

TEST(OpeningALog, SkipsAnEntityTypeThatCannotBeReached) {
    LogWorld world;
    const auto item = [&](std::span<automation::Value> arguments) -> automation::Value {
        const std::int32_t index = automation::toInt32(arguments[0]);
        if (index == 1) throw automation::AutomationError(kHostError);
        return index == 2 ? automation::Value() : automation::Value(world.host.types[u"PROJ"]);
    };
    world.host.entities->on(u"Item", item);
    EXPECT_TRUE(world.open());
    EXPECT_GE(world.globals.frmLogResources->ilLog->indexOf(u"PROJ"), 0);
    EXPECT_EQ(world.globals.frmLogResources->ilLog->indexOf(u"PROG"), -1);
}

} // namespace
} // namespace cvlog::store
