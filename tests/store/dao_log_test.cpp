#include "tests/store/dao_log.h"
#include "tests/support/fault_sweep.h"

#include <gtest/gtest.h>

// A log over DAO: opening, writing and closing, also when any call of DAO fails.

namespace cvlog::store::testbed {

using automation::Null;
using automation::ObjectRef;
using automation::Value;

namespace {

bool endsWith(const Value& value, std::u16string_view end) {
    return value.is<std::u16string>() && value.as<std::u16string>().ends_with(end);
}

class DaoLog : public ::testing::Test, public DaoLogWorld {};

} // namespace

TEST_F(DaoLog, anOldProjectIsUpgradedAndWritten) {
    ASSERT_TRUE(open());
    EXPECT_EQ(globals.store.LastRecordNum, 0);
    add(u"first");
    add(u"second", u"a.err");
    close();
    ASSERT_EQ(table().rows.size(), 2u);
    EXPECT_EQ(stored(0, u"RecordNum"), Value(1));
    EXPECT_TRUE(endsWith(stored(0, u"LogMessage"), u". first"));
    EXPECT_EQ(stored(0, u"ReturnMessage"), Value(7));
    EXPECT_EQ(stored(0, u"Errors"), Value(u""));
    EXPECT_EQ(stored(1, u"RecordNum"), Value(2));
    EXPECT_EQ(stored(1, u"Errors"), Value(u"a.err"));
    ASSERT_TRUE(open());
    EXPECT_EQ(globals.store.LastRecordNum, 2);
}

TEST_F(DaoLog, theUpgradeAddsTheNumberThenTheErrorsAndOpensAgainForTheZeroLength) {
    ASSERT_TRUE(open());
    EXPECT_EQ(calls.journalOf({"DAO.DBEngine", "DAO.Database.Execute", "DAO.Database.Close",
                               "DAO.Database.OpenRecordset", "DAO.Field.AllowZeroLength"}),
              (std::vector<std::string>{"DAO.DBEngine.SetOption", "DAO.DBEngine.OpenDatabase",
                                        "DAO.Database.Execute", "DAO.Database.Execute",
                                        "DAO.Field.AllowZeroLength", "DAO.Database.Close",
                                        "DAO.DBEngine.OpenDatabase", "DAO.Field.AllowZeroLength",
                                        "DAO.Database.OpenRecordset", "DAO.Database.OpenRecordset"}));
    ASSERT_EQ(table().columns.size(), 7u);
    EXPECT_EQ(table().columns[5].name, u"RecordNum");
    EXPECT_EQ(table().columns[6].name, u"Errors");
    EXPECT_TRUE(table().columns[6].zeroLength);
}

TEST_F(DaoLog, aModernProjectIsOpenedOnceWithoutAStatement) {
    DaoLogWorld modern(DaoLogWorld::Schema::Modern);
    ASSERT_TRUE(modern.open());
    EXPECT_EQ(modern.calls.countOf("DAO.DBEngine.OpenDatabase"), 1);
    EXPECT_EQ(modern.calls.countOf("DAO.Database.Execute"), 0);
}

TEST_F(DaoLog, aProjectWithoutTheTableIsNotOpenedAndIsClosedAllTheSame) {
    DaoLogWorld empty(DaoLogWorld::Schema::None);
    EXPECT_FALSE(empty.open());
    EXPECT_EQ(empty.machine.dao().openDatabases(), 1);
    empty.close();
    EXPECT_EQ(empty.machine.dao().openDatabases(), 0);
}

TEST_F(DaoLog, withoutAnInstalledEngineTheLogIsNotOpenedAndSaysNothing) {
    machine.objects().classes.clear();
    EXPECT_FALSE(open());
    EXPECT_TRUE(platform.messages.shown.empty());
    EXPECT_TRUE(log->get(u"LogDB").isNothing());
    EXPECT_NO_THROW(add(u"lost"));
    EXPECT_EQ(control->lvLog().rowCount(), 1);
}

TEST_F(DaoLog, logDBIsDaosOwnDatabase) {
    ASSERT_TRUE(open());
    const ObjectRef database = toObject(log->get(u"LogDB"));
    EXPECT_TRUE(sameObject(database, globals.store.LogDatabase->automationObject()));
    calls.restart();
    database->invoke(u"Execute", u"delete from LogInfo");
    EXPECT_EQ(calls.journal(), std::vector<std::string>{"DAO.Database.Execute"});
    close();
    EXPECT_TRUE(log->get(u"LogDB").isNothing());
    EXPECT_THROW(database->get(u"Name"), automation::AutomationError);
}

TEST_F(DaoLog, aLongNameOfAnErrorsFileLeavesItsColumnEmpty) {
    ASSERT_TRUE(open());
    add(u"message", std::u16string(255, u'e'));
    ASSERT_EQ(table().rows.size(), 1u);
    EXPECT_EQ(stored(0, u"Errors"), Value(Null{}));
    EXPECT_TRUE(endsWith(stored(0, u"LogMessage"), u"message"));
}

TEST_F(DaoLog, aDatabaseThatTheHostClosesLosesRecordsSilently) {
    ASSERT_TRUE(open());
    toObject(log->get(u"LogDB"))->invoke(u"Close");
    EXPECT_NO_THROW(add(u"lost"));
    EXPECT_EQ(control->lvLog().rowCount(), 1);
    EXPECT_TRUE(table().rows.empty());
    EXPECT_NO_THROW(close());
    EXPECT_TRUE(open());
}

TEST_F(DaoLog, openingTwiceLeavesNothingOpenInTheEnd) {
    ASSERT_TRUE(open());
    ASSERT_TRUE(open());
    EXPECT_EQ(machine.dao().openDatabases(), 1);
    close();
    EXPECT_EQ(machine.dao().openDatabases(), 0);
    EXPECT_EQ(machine.dao().alive(), 1) << "the engine, for the next opening";
}

TEST(DaoFaults, anOpeningSucceedsOrFailsAndIsClosedAlike) {
    for (const auto schema : {DaoLogWorld::Schema::Old, DaoLogWorld::Schema::Modern}) {
        tests::FaultSweep<DaoLogWorld> sweep;
        sweep.arrange = [schema] { return std::make_unique<DaoLogWorld>(schema); };
        sweep.scenario = [](DaoLogWorld& world) {
            const bool opened = world.open();
            EXPECT_EQ(opened, world.globals.store.CurrentLog != nullptr);
            EXPECT_TRUE(!opened || world.globals.store.LogRecordset);
        };
        sweep.check = [](DaoLogWorld& world, const tests::SweepRun& run) {
            EXPECT_FALSE(run.error) << "an opening never raises";
            EXPECT_TRUE(world.platform.messages.shown.empty());
            world.close();
            EXPECT_EQ(world.machine.dao().openDatabases(), 0);
            EXPECT_LE(world.machine.dao().alive(), 1);
            ASSERT_TRUE(world.open()) << "the next opening works";
            world.add(u"message");
            ASSERT_EQ(world.table().rows.size(), 1u);
            EXPECT_EQ(world.stored(0, u"RecordNum"), Value(1));
            EXPECT_EQ(world.stored(0, u"Errors"), Value(u""));
        };
        sweep.leastCalls = 20;
        sweep.run();
    }
}

TEST(DaoFaults, aRecordIsWrittenOrLostAndTheNextOneIsWhole) {
    tests::FaultSweep<DaoLogWorld> sweep;
    sweep.arrange = [] {
        auto world = std::make_unique<DaoLogWorld>(DaoLogWorld::Schema::Modern);
        EXPECT_TRUE(world->open());
        return world;
    };
    sweep.scenario = [](DaoLogWorld& world) { world.add(u"first", u"first.err"); };
    sweep.check = [](DaoLogWorld& world, const tests::SweepRun& run) {
        EXPECT_FALSE(run.error) << "the host learns of no failing record";
        EXPECT_EQ(world.control->lvLog().rowCount(), 1);
        const std::size_t count = world.table().rows.size();
        ASSERT_LE(count, 1u);
        EXPECT_TRUE(run.armed || count == 1);
        world.add(u"second");
        ASSERT_EQ(world.table().rows.size(), count + 1);
        EXPECT_TRUE(endsWith(world.stored(count, u"LogMessage"), u". second"));
        EXPECT_EQ(world.stored(count, u"Errors"), Value(u"")) << "nothing is left of the first one";
        EXPECT_EQ(world.stored(count, u"ReturnMessage"), Value(7));
        world.close();
        EXPECT_EQ(world.machine.dao().openDatabases(), 0);
    };
    sweep.leastCalls = 20;
    sweep.run();
}

TEST(DaoFaults, aClosingLeavesNothingOpen) {
    tests::FaultSweep<DaoLogWorld> sweep;
    sweep.arrange = [] {
        auto world = std::make_unique<DaoLogWorld>(DaoLogWorld::Schema::Modern);
        EXPECT_TRUE(world->open());
        world->add(u"message");
        return world;
    };
    sweep.scenario = [](DaoLogWorld& world) { world.close(); };
    sweep.check = [](DaoLogWorld& world, const tests::SweepRun& run) {
        EXPECT_FALSE(run.error);
        EXPECT_FALSE(static_cast<bool>(world.globals.store.Workspace));
        EXPECT_EQ(world.machine.dao().openDatabases(), 0);
        EXPECT_EQ(world.machine.dao().alive(), 1);
        EXPECT_EQ(world.table().rows.size(), 1u);
        EXPECT_TRUE(world.open());
    };
    sweep.leastCalls = 2;
    sweep.run();
}

} // namespace cvlog::store::testbed
