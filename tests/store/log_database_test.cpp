#include "store/log_database.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/engine_error.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/log_world.h"
#include "view/list_set.h"

#include <gtest/gtest.h>

namespace cvlog::store {
namespace {

using Journal = std::vector<std::string>;
using Schema = tests::FakeEngine::Schema;
using tests::kHostError;
using tests::kLogFile;
using tests::LogWorld;

const std::string kOpen = "Engine.open(C:\\Proj\\PrjData.mdb)";
const std::string kAddNumber = "Database.execute(alter table LogInfo add column RecordNum Counter)";
const std::string kAddErrors = "Database.execute(alter table LogInfo add column Errors Text(254))";
const std::string kClose = "Database.close";
const std::string kAllow = "Database.allowZeroLength(Errors)";

class LogDatabase : public testing::Test {
protected:
    std::shared_ptr<tests::ScriptObject> workspace() { return world.host.workspace; }
    core::StoreState& state() { return world.globals.store; }
    LogWorld world;
};

struct Upgrade {
    const char* name;
    Schema schema;
    Journal changes;
    bool opens;
};

void PrintTo(const Upgrade& upgrade, std::ostream* out) { *out << upgrade.name; }

class SchemaUpgrade : public LogDatabase, public testing::WithParamInterface<Upgrade> {};

TEST_P(SchemaUpgrade, DoesWhatIsMissingAndNoMore) {
    world.engine.addLogFile(kLogFile, GetParam().schema);
    EXPECT_EQ(world.open(), GetParam().opens);
    EXPECT_EQ(world.calls.journalOf(
                  {"Engine.open", "Database.execute", "Database.close", "Database.allowZeroLength("}),
              GetParam().changes);
    world.close();
    EXPECT_EQ(world.engine.openDatabases, 0);
    if (!GetParam().opens) return;
    world.calls.restart();
    EXPECT_TRUE(world.open());
    EXPECT_EQ(world.calls.journalOf({"Engine.open", "Database.execute", "Database.close"}), Journal{kOpen})
        << "once is enough";
}

INSTANTIATE_TEST_SUITE_P(
    Schemas, SchemaUpgrade,
    testing::Values(Upgrade{"Modern", Schema::Modern, {kOpen}, true},
                    Upgrade{"Old", Schema::Old, {kOpen, kAddNumber, kAddErrors, kClose, kOpen, kAllow}, true},
                    Upgrade{"NoErrors", Schema::NoErrors, {kOpen, kAddErrors, kClose, kOpen, kAllow}, true},
                    Upgrade{"NoZeroLength", Schema::NoZeroLength, {kOpen, kClose, kOpen, kAllow}, true},
                    Upgrade{"NoTable", Schema::NoTable, {kOpen, kAddNumber, kAddErrors}, false}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(LogDatabase, RemembersTheHighestRecordNumberAtOpening) {
    EXPECT_TRUE(world.open());
    EXPECT_EQ(state().LastRecordNum, 0) << "an empty table";
    for (int i = 0; i < 3; ++i) world.add({u"", 0, u"", u"x", u""});
    EXPECT_EQ(state().LastRecordNum, 0) << "the mark does not move in a session";
    view::ClearLists(world.globals);
    world.add({u"", 0, u"", u"x", u""});
    EXPECT_EQ(state().LastRecordNum, 0) << "nor by emptying the lists";
    world.close();
    world.calls.restart();
    EXPECT_TRUE(world.open());
    EXPECT_EQ(state().LastRecordNum, 4);
    EXPECT_EQ(world.calls.journalOf({"Database.openSnapshot", "Recordset."}),
              (Journal{"Database.openSnapshot(Select RecordNum From LogInfo order by RecordNum desc)",
                       "Recordset.atEnd", "Recordset.value(RecordNum)", "Recordset.close"}));
    EXPECT_EQ(world.engine.openRecordsets, 1) << "only the append cursor stays";
}

TEST_F(LogDatabase, JoinsThePathWithoutLookingAtIt) {
    world.host.names[4] = u"C:\\Proj\\";
    EXPECT_FALSE(world.open());
    EXPECT_EQ(world.calls.journalOf({"Engine.open"}), Journal{"Engine.open(C:\\Proj\\\\PrjData.mdb)"});
}

TEST_F(LogDatabase, OpensNothingForAMissingFile) {
    world.host.names[4] = u"C:\\Elsewhere";
    EXPECT_FALSE(world.open());
    EXPECT_TRUE(world.platform.messages.shown.empty());
    EXPECT_EQ(state().CurrentLog, nullptr);
    EXPECT_EQ(state().LogDatabase, nullptr);
    EXPECT_TRUE(static_cast<bool>(state().Workspace)) << "what was set stays, so that closing cleans up";
    world.close();
    EXPECT_FALSE(static_cast<bool>(state().Workspace));
}

TEST_F(LogDatabase, KeepsWhatAFailedOpeningHadOpenedUntilItIsClosed) {
    world.engine.addLogFile(kLogFile, Schema::NoTable);
    EXPECT_FALSE(world.open());
    EXPECT_NE(automation::toObject(world.log->get(u"LogDB")), nullptr);
    world.close();
    EXPECT_EQ(automation::toObject(world.log->get(u"LogDB")), nullptr);
    EXPECT_EQ(world.engine.openDatabases, 0);
}

TEST_F(LogDatabase, HandsItselfOutOnlyWhileItIsOpen) {
    EXPECT_EQ(automation::toObject(world.log->get(u"LogDB")), nullptr);
    ASSERT_TRUE(
        automation::toBoolean(world.log->invoke(u"OpenDB", automation::ObjectRef(world.host.workspace))));
    EXPECT_EQ(automation::toObject(world.log->get(u"LogDB")), state().LogDatabase->automationObject());
    world.log->invoke(u"CloseDB");
    EXPECT_EQ(automation::toObject(world.log->get(u"LogDB")), nullptr);
}

TEST_F(LogDatabase, RaisesWhenTheOptionsCannotBeReached) {
    workspace()->raise(u"UserOptions", kHostError);
    EXPECT_THROW(world.open(), automation::AutomationError);
    EXPECT_TRUE(static_cast<bool>(state().Workspace));
    EXPECT_EQ(world.calls.countOf("Engine.open"), 0);
}

TEST_F(LogDatabase, RefusesNoWorkspace) {
    EXPECT_THROW(OpenDB(world.globals, world.log, nullptr), automation::AutomationError);
}

TEST_F(LogDatabase, ReadsTheOptions) {
    world.host.options.setKeepInSession(u"true");
    EXPECT_TRUE(world.open());
    EXPECT_TRUE(world.globals.options.KeepInSession);
}

class OpeningFails : public LogDatabase, public testing::WithParamInterface<const char16_t*> {};

TEST_P(OpeningFails, WithFalseWhenAHostCallOnTheWayFails) {
    std::shared_ptr<tests::ScriptObject> owner = workspace();
    if (std::u16string_view(GetParam()) == u"ERD") owner = world.host.repository;
    if (std::u16string_view(GetParam()) == u"Entities") owner = world.host.erd;
    if (std::u16string_view(GetParam()) == u"Count") owner = world.host.entities;
    owner->raise(GetParam(), kHostError);
    EXPECT_FALSE(world.open());
    EXPECT_EQ(state().CurrentLog, nullptr);
    world.close();
    EXPECT_EQ(world.engine.openDatabases, 0);
    EXPECT_EQ(world.engine.openRecordsets, 0);
}

INSTANTIATE_TEST_SUITE_P(Members, OpeningFails,
                         testing::Values(u"GetHelpFile", u"Repository", u"ERD", u"Entities", u"Count"));

TEST_F(LogDatabase, LoadsTheIconOfEveryEntityTypeByItsKey) {
    EXPECT_TRUE(world.open());
    EXPECT_EQ(state().IconsDir, u"C:\\Prod\\Repository\\Icons\\");
    const auto& icons = *world.globals.frmLogResources->ilLog;
    for (const char16_t* key : {u"Good", u"Session", u"PROG", u"GRP", u"PROJ"})
        EXPECT_GE(icons.indexOf(key), 0);
    EXPECT_EQ(icons.count(), 9);
}

TEST_F(LogDatabase, SkipsABadIconAndNoOther) {
    world.platform.files.remove(u"C:\\Prod\\Repository\\Icons\\PROG.ico");
    world.host.types[u"GRP"]->raise(u"IconFile", kHostError);
    world.host.addType(u"good", u"Collides", 8)->set(u"IconFile", u"PROJ.ico");
    EXPECT_TRUE(world.open());
    const auto& icons = *world.globals.frmLogResources->ilLog;
    EXPECT_EQ(icons.indexOf(u"PROG"), -1);
    EXPECT_EQ(icons.indexOf(u"GRP"), -1);
    EXPECT_GE(icons.indexOf(u"PROJ"), 0);
    EXPECT_EQ(icons.count(), 7);
}

struct VisibleCase {
    std::optional<std::u16string> stored;
    bool visible;
};

class RememberedVisibility : public LogDatabase, public testing::WithParamInterface<VisibleCase> {};

TEST_P(RememberedVisibility, IsTrueExactlyForOne) {
    if (GetParam().stored)
        world.platform.settings.save(u"Calvetta", u"Activity Log", u"Visible", *GetParam().stored);
    world.globals.LogWindowVisible = !GetParam().visible;
    EXPECT_TRUE(world.open());
    EXPECT_EQ(world.globals.LogWindowVisible, GetParam().visible);
}

INSTANTIATE_TEST_SUITE_P(Values, RememberedVisibility,
                         testing::Values(VisibleCase{std::nullopt, true}, VisibleCase{u"1", true},
                                         VisibleCase{u"0", false}, VisibleCase{u"true", false},
                                         VisibleCase{u"yes", false}, VisibleCase{u"", false}));

TEST_F(LogDatabase, RaisesAFailingVisibilityReadOnceAnEntityTypeIsListed) {
    const auto earlier = std::make_shared<core::CVLog>(world.globals);
    ASSERT_TRUE(OpenDB(world.globals, earlier, world.host.workspace));
    workspace()->raise(u"GetProductInfo", kHostError);
    EXPECT_THROW(world.open(), automation::AutomationError);
    EXPECT_EQ(state().CurrentLog, earlier);
}

TEST_F(LogDatabase, AnswersFalseToAFailingVisibilityReadWhenNoEntityTypeIsListed) {
    world.host.entities->on(u"Count", [](std::span<automation::Value>) { return automation::Value(0); });
    workspace()->raise(u"GetProductInfo", kHostError);
    EXPECT_FALSE(world.open());
    EXPECT_EQ(state().CurrentLog, nullptr);
}

TEST_F(LogDatabase, OpensAgainOverTheOldWithoutLosingAnything) {
    const auto other = std::make_shared<core::CVLog>(world.globals);
    ASSERT_TRUE(world.open());
    const int icons = world.globals.frmLogResources->ilLog->count();
    world.calls.restart();
    ASSERT_TRUE(OpenDB(world.globals, other, world.host.workspace));
    EXPECT_EQ(state().CurrentLog, other);
    EXPECT_EQ(world.engine.openDatabases, 1);
    EXPECT_EQ(world.engine.openRecordsets, 1);
    EXPECT_EQ(world.globals.frmLogResources->ilLog->count(), icons);
    EXPECT_EQ(world.calls.countOf("Database.close"), 0);
}

TEST_F(LogDatabase, DoesNothingWhenItIsClosedAlready) {
    world.addControl();
    world.startSeries();
    world.add({u"", 0, u"", u"row", u""});
    world.calls.restart();
    world.close();
    EXPECT_EQ(world.list().rowCount(), 1) << "the lists stay";
    EXPECT_EQ(world.calls.count(), 0);
}

TEST_F(LogDatabase, ClosesInOrder) {
    ASSERT_TRUE(world.open());
    world.hideBoxes();
    world.addControl();
    world.add({u"", 0, u"", u"row", u""});
    world.globals.LogWindowVisible = false;
    world.calls.restart();
    world.close();
    EXPECT_EQ(world.calls.journal(),
              (Journal{"List.cleared", "Workspace.GetCalvettaName(6)",
                       "Workspace.GetProductInfo(Product.Name)", "Settings.save", "List.appearanceChanged",
                       "List.appearanceChanged", "Recordset.close", "Database.close"}));
    EXPECT_EQ(world.platform.settings.get(u"Calvetta", u"Activity Log", u"Visible", u"?"), u"0");
    EXPECT_EQ(state().CurrentLog, nullptr);
    EXPECT_FALSE(static_cast<bool>(world.globals.options.UserOptions));
    EXPECT_EQ(world.globals.frmLogResources, nullptr);
    EXPECT_EQ(world.list().smallIcons(), nullptr);
    EXPECT_EQ(world.list().headerIcons(), nullptr);
    world.calls.restart();
    world.close();
    EXPECT_EQ(world.calls.count(), 0);
}

TEST_F(LogDatabase, LeavesTheSortingOfTheListsWhenItCloses) {
    ASSERT_TRUE(world.open());
    world.hideBoxes();
    world.addControl();
    world.globals.options.KeepInSession = true;
    world.list().setSort(2, widgets::SortOrder::Descending);
    world.list().setSorted(true);
    world.add({u"", 0, u"", u"row", u""});
    world.close();
    EXPECT_TRUE(world.list().sorted());
    EXPECT_EQ(world.list().sortKey(), 2);
    EXPECT_EQ(world.list().column(3).icon, u"SortUp");
}

TEST_F(LogDatabase, SavesNoVisibilityForAProjectWithoutAName) {
    ASSERT_TRUE(world.open());
    world.host.names[6] = u"";
    world.close();
    EXPECT_EQ(world.platform.settings.count(), 0U);
}

TEST_F(LogDatabase, CanBeClosedAgainAfterAFailedClosing) {
    ASSERT_TRUE(world.open());
    workspace()->raise(u"GetCalvettaName", kHostError);
    EXPECT_THROW(world.close(), automation::AutomationError);
    EXPECT_TRUE(static_cast<bool>(state().Workspace));
    EXPECT_NE(state().LogRecordset, nullptr);
    workspace()->heal(u"GetCalvettaName");
    world.close();
    EXPECT_FALSE(static_cast<bool>(state().Workspace));
    EXPECT_EQ(world.engine.openDatabases, 0);
}

TEST_F(LogDatabase, GivesEveryListItsIconsAgainAfterItWasClosedAndOpened) {
    ASSERT_TRUE(world.open());
    world.hideBoxes();
    world.addControl();
    world.addControl();
    world.add({u"", 0, u"", u"row", u""});
    world.close();
    ASSERT_TRUE(world.open());
    world.add({u"", 0, u"", u"row", u""});
    for (const std::size_t index : {0U, 1U}) {
        EXPECT_EQ(world.list(index).smallIcons(), world.globals.frmLogResources->ilLog);
        EXPECT_EQ(world.list(index).headerIcons(), world.globals.frmLogResources->ilSort);
    }
}

TEST_F(LogDatabase, LosesRecordsSilentlyWhenTheHostClosesTheDatabaseItWasGiven) {
    ASSERT_TRUE(world.open());
    world.hideBoxes();
    world.addControl();
    automation::toObject(world.log->get(u"LogDB"))->invoke(u"Close");
    state().LogRecordset->close();
    EXPECT_NO_THROW(world.add({u"M1", 0, u"P1", u"message", u""}));
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_TRUE(world.engine.records().empty());
    EXPECT_NO_THROW(world.close());
}

TEST(FaultSweepOfOpening, NeverHalfOpensAndAlwaysCloses) {
    for (const Schema schema : {Schema::Modern, Schema::Old, Schema::NoZeroLength}) {
        tests::FaultSweep<LogWorld> sweep;
        sweep.arrange = [schema] {
            auto world = std::make_unique<LogWorld>();
            world->engine.addLogFile(kLogFile, schema);
            return world;
        };
        sweep.scenario = [](LogWorld& world) { world.globals.LogWindowVisible = world.open(); };
        sweep.check = [](LogWorld& world, const tests::SweepRun& run) {
            const bool opened = world.globals.store.CurrentLog != nullptr;
            EXPECT_TRUE(run.armed || opened);
            if (opened) {
                EXPECT_NE(world.globals.store.LogRecordset, nullptr);
            }
            world.close();
            EXPECT_EQ(world.engine.openDatabases, 0);
            EXPECT_EQ(world.engine.openRecordsets, 0);
            EXPECT_EQ(world.globals.store.CurrentLog, nullptr);
            EXPECT_TRUE(world.open()) << "the next opening works";
        };
        sweep.leastCalls = 25;
        sweep.run();
    }
}

TEST(FaultSweepOfClosing, IsFinishedByASecondClosing) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] {
        auto world = tests::openWorld(2);
        world->peersMustAgree = false;
        world->add({u"M1", 0, u"P1", u"message", u""});
        return world;
    };
    sweep.scenario = [](LogWorld& world) { world.close(); };
    sweep.check = [](LogWorld& world, const tests::SweepRun&) {
        tests::expectListsInStep(world);
        EXPECT_NO_THROW(world.close());
        EXPECT_FALSE(static_cast<bool>(world.globals.store.Workspace));
        EXPECT_EQ(world.engine.openDatabases, 0);
        EXPECT_EQ(world.engine.openRecordsets, 0);
        EXPECT_EQ(world.engine.records().size(), 1U);
    };
    sweep.leastCalls = 8;
    sweep.run();
}

} // namespace
} // namespace cvlog::store
