#include "automation/error.h"
#include "tests/store/sqlite_files.h"

#include <sqlite3.h>

// Files that change, are held, are damaged or belong to others while the engine works on them.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Value;

TEST_F(SqliteFiles, aColumnDroppedByAnotherProgramFailsAloneAndTheRestIsWritten) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text, Errors text, "
         "Last text)");
    const auto database = open();
    const auto rows = database->openTable(u"LogInfo");
    const auto write = [&] {
        rows->assign(u"LogMessage", u"m");
        try {
            rows->assign(u"Errors", u"e");
        } catch (const AutomationError&) {
        }
        rows->assign(u"Last", u"l");
        rows->update();
    };
    rows->addNew();
    write();
    ASSERT_TRUE(StockDatabase(native()).run("alter table LogInfo drop column Errors"));
    rows->addNew();
    write(); // noticed when this one is saved
    rows->addNew();
    EXPECT_THROW(rows->assign(u"Errors", u"e"), AutomationError);
    write();
    ASSERT_TRUE(StockDatabase(native()).run("alter table LogInfo add column Errors text"));
    rows->addNew();
    rows->assign(u"Last", u"l");
    EXPECT_NO_THROW(rows->assign(u"Errors", u"e")); // it came back
    write();
    rows->addNew();
    ASSERT_TRUE(StockDatabase(native()).run("alter table LogInfo drop column Errors"));
    write(); // it went while the row was being filled
    database->close();
    // The number 4 was left of a block when the other program changed the file.
    EXPECT_EQ(askWhole("select RecordNum || LogMessage || Last from LogInfo"), "1ml\n2ml\n3ml\n5ml\n6ml");
}

TEST_F(SqliteFiles, aTableDroppedByAnotherProgramFailsUntilItIsBack) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text)");
    const auto database = open();
    const auto rows = database->openTable(u"LogInfo");
    ASSERT_TRUE(StockDatabase(native()).run("drop table LogInfo"));
    rows->addNew();
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_THROW(rows->addNew(), AutomationError);
    EXPECT_THROW(rows->update(), AutomationError);
    ASSERT_TRUE(StockDatabase(native()).run("create table LogInfo (LogMessage text, RecordNum Counter)"));
    for (int i = 0; i < 2; ++i) {
        rows->addNew();
        rows->assign(u"LogMessage", u"m");
        rows->update();
    }
    EXPECT_EQ(ask("select RecordNum || LogMessage from LogInfo"), "1m\n2m");
}

TEST_F(SqliteFiles, bytesThatAreNoTextFailWhenReadAndNotBefore) {
    make("create table LogInfo (RecordNum integer primary key, LogMessage text);"
         "insert into LogInfo values (1, x'00ff'), (2, 'b')");
    const auto database = open();
    const auto rows = database->openSnapshot(u"select * from LogInfo order by RecordNum");
    database->execute(u"delete from LogInfo"); // the rows are now kept in memory
    EXPECT_EQ(rows->value(u"RecordNum"), Value(1));
    EXPECT_THROW(rows->value(u"LogMessage"), AutomationError);
    rows->moveNext();
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"b"));
}

TEST_F(SqliteFiles, aFileHeldByAnotherProgramFailsAndOpensAgainLater) {
    make(kOldTable);
    StockDatabase other(native());
    ASSERT_TRUE(
        other.run("pragma locking_mode = exclusive; begin exclusive; insert into LogInfo default values"));
    EXPECT_THROW(open(), AutomationError);
    ASSERT_TRUE(other.run("rollback; pragma locking_mode = normal; select * from LogInfo"));
    EXPECT_NO_THROW(open());
}

TEST_F(SqliteFiles, aWriteLockFailsTheRecordAndNotTheNextOne) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text)");
    const auto database = open();
    const auto rows = database->openTable(u"LogInfo");
    StockDatabase other(native());
    ASSERT_TRUE(other.run("begin immediate"));
    rows->addNew();
    rows->assign(u"LogMessage", u"lost");
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_NO_THROW(database->openSnapshot(u"select * from LogInfo")); // readers do not wait
    ASSERT_TRUE(other.run("commit"));
    rows->addNew();
    rows->update();
    EXPECT_EQ(ask("select RecordNum || ifnull(LogMessage, '-') from LogInfo"), "1-");
}

TEST_F(SqliteFiles, aSnapshotHoldsNobodyUp) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text);"
         "insert into LogInfo (LogMessage) values ('a'), ('b')");
    const auto database = open();
    const auto rows = database->openSnapshot(u"select * from LogInfo order by RecordNum");
    StockDatabase other(native());
    ASSERT_TRUE(other.run("insert into LogInfo (LogMessage) values ('c')"));
    append(*database, u"d"); // after a change by another program, in the middle of our reading
    rows->moveNext();
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"b"));
    rows->moveNext();
    EXPECT_TRUE(rows->atEnd());
    EXPECT_EQ(ask("select group_concat(LogMessage, '') from LogInfo"), "abcd");
}

TEST_F(SqliteFiles, aFileMarkedReadOnlyIsReadAndRefusesWriting) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text);"
         "insert into LogInfo (LogMessage) values ('a')");
    const auto database = open();
    database->execute(u"pragma query_only = on"); // what a read-only file answers, whoever runs the test
    const auto rows = database->openTable(u"LogInfo");
    rows->addNew();
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_THROW(database->execute(u"delete from LogInfo"), AutomationError);
    EXPECT_THROW(database->execute(kAddErrors), AutomationError);
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"a"));
}

TEST_F(SqliteFiles, theHostsOwnTransactionIsKeptWhole) {
    make(kOldTable);
    const auto database = open();
    database->execute(u"begin");
    database->execute(kAddRecordNum);
    append(*database, u"a");
    EXPECT_THROW(database->execute(kAddRecordNum), AutomationError);
    EXPECT_EQ(database->openSnapshot(u"select * from LogInfo")->value(u"RecordNum"), Value(1));
    database->execute(u"rollback");
    EXPECT_THROW(database->requireColumn(u"LogInfo", u"RecordNum"), AutomationError);
}

TEST_F(SqliteFiles, theBitsOfASmallFileFlippedOneByOneNeverCrash) {
    make("pragma page_size = 512; create table LogInfo (RecordNum integer primary key autoincrement, "
         "LogMessage text);"
         "create index ByMessage on LogInfo (LogMessage);"
         "insert into LogInfo (LogMessage) values ('alpha'), ('beta'), ('" +
         std::string(700, 'g') + "')");
    const std::string whole = readWhole(native());
    int opened = 0, refused = 0;
    for (std::size_t place = 0; place < whole.size(); place += place < 700 ? 1 : 5) {
        std::string bytes = whole;
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << (place % 8)));
        writeWhole(native(), bytes);
        try {
            const auto database = open();
            ++opened;
            const auto rows =
                database->openSnapshot(u"select * from LogInfo where RecordNum > 0 order by RecordNum");
            for (; !rows->atEnd(); rows->moveNext()) rows->value(u"LogMessage");
            append(*database, u"more");
            database->execute(u"delete from LogInfo");
        } catch (const AutomationError&) {
            ++refused;
        }
        for (const char* companion : {"-wal", "-shm", "-journal"})
            sqlite3_vfs_find(nullptr)->xDelete(sqlite3_vfs_find(nullptr), (native() + companion).c_str(), 0);
    }
    EXPECT_GT(opened, 0);
    EXPECT_GT(refused, 50);
}

} // namespace cvlog::store::testbed
