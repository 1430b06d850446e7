#include "automation/error.h"
#include "tests/store/sqlite_files.h"

// Files that other tools made, read and written by the engine and read again by the stock library.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Value;

TEST_F(SqliteFiles, anOldTableIsUpgradedAndTheStockLibraryAgrees) {
    make(std::string(kOldTable) + "; insert into LogInfo (LogMessage) values ('one'), ('two'), ('three');"
                                  "delete from LogInfo where LogMessage = 'one'");
    const auto database = open();
    database->execute(kAddRecordNum);
    database->execute(kAddErrors);
    database->allowZeroLength(u"LogInfo", u"Errors");
    append(*database, u"four");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum || LogMessage from LogInfo order by RecordNum"),
              "1two\n2three\n3four");
    EXPECT_EQ(ask("select name || ':' || type from pragma_table_info('LogInfo')"),
              "MethodName:Text(50)\nObjectName:Text(50)\nObjectType:Text(50)\nLogMessage:TEXT\nReturnMessage:"
              "INTEGER\n"
              "RecordNum:INTEGER\nErrors:Text(254)");
}

TEST_F(SqliteFiles, theUpgradeKeepsAllElseOfTheTable) {
    make("create table \"Log \"\"( Info\" (A text collate nocase default 'x, (y)' not null, B integer check "
         "(B < 100), "
         "G as (B * 2) stored, C references Other (Id), unique (A, B) /* , end */);"
         "create index ByB on \"Log \"\"( Info\" (B desc) where B > 1;"
         "create table Other (Id, Seen);"
         "create trigger Watch after insert on \"Log \"\"( Info\" begin insert into Other values (new.B, "
         "new.A); end;"
         "create trigger Back after insert on Other begin update \"Log \"\"( Info\" set B = B where 0; end;"
         "create view Shown as select A, B from \"Log \"\"( Info\";"
         "insert into \"Log \"\"( Info\" (A, B) values ('a', 5), ('b', 6)");
    const std::string before = ask("select count(*) from sqlite_master");
    const auto database = open();
    database->execute(u"alter table [Log \"( Info] add column RecordNum Counter");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum || A || B || G from \"Log \"\"( Info\" order by RecordNum"),
              "1a510\n2b612");
    EXPECT_EQ(ask("select Id || Seen from Other"), "5a\n6b"); // the rebuilding fired no trigger
    EXPECT_EQ(ask("select A from Shown"), "a\nb");
    EXPECT_EQ(ask("select count(*) from sqlite_master where name <> 'sqlite_sequence'"), before);
    EXPECT_EQ(ask("select dflt_value from pragma_table_info('Log \"( Info') where name = 'A'"), "'x, (y)'");
    StockDatabase stock(native());
    EXPECT_FALSE(stock.run("insert into \"Log \"\"( Info\" (B) values (100)"));
    EXPECT_FALSE(stock.run("insert into \"Log \"\"( Info\" (A, B) values ('A', 5)"));
    EXPECT_TRUE(stock.run("insert into \"Log \"\"( Info\" (B) values (7)"));
    EXPECT_EQ(stock.ask("select Id from Other where Id = 7"), "7");
    EXPECT_NE(stock.ask("explain query plan select * from \"Log \"\"( Info\" where B = 5 and B > 1"), "");
}

TEST_F(SqliteFiles, aFailedUpgradeChangesNothing) {
    make("create table LogInfo (A, B, unique (A)); insert into LogInfo values (1, 2);"
         "create table Locked (A, RecordNum); create view V as select 1 as A");
    const auto database = open();
    const std::string before = ask("select sql from sqlite_master");
    EXPECT_THROW(database->execute(u"alter table Locked add column RecordNum Counter"), AutomationError);
    EXPECT_THROW(database->execute(u"alter table V add column RecordNum Counter"), AutomationError);
    EXPECT_THROW(database->execute(u"alter table Missing add column RecordNum Counter"), AutomationError);
    EXPECT_EQ(ask("select sql from sqlite_master"), before);
    database->execute(kAddRecordNum); // nothing was left begun
    database->close();
    EXPECT_EQ(askWhole("select RecordNum from LogInfo"), "1");
}

TEST_F(SqliteFiles, aTableWithAKeyKeepsItAndIsNumberedBesides) {
    make("create table LogInfo (Id integer primary key, LogMessage text);"
         "insert into LogInfo values (30, 'c'), (10, 'a'), (20, 'b')");
    const auto database = open();
    database->execute(kAddRecordNum);
    append(*database, u"d");
    database->execute(u"delete from LogInfo");
    append(*database, u"e");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum || LogMessage || (Id is not null) from LogInfo"), "5e1");
}

TEST_F(SqliteFiles, aModernTableIsNotTouched) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text, Errors text);"
         "insert into LogInfo (LogMessage) values ('a')");
    const std::string before = ask("select sql from sqlite_master");
    const auto database = open();
    database->requireColumn(u"LogInfo", u"RecordNum");
    database->requireColumn(u"LogInfo", u"Errors");
    EXPECT_TRUE(database->allowsZeroLength(u"LogInfo", u"Errors"));
    append(*database, u"b");
    database->close();
    EXPECT_EQ(ask("select sql from sqlite_master"), before);
    EXPECT_EQ(askWhole("select RecordNum || LogMessage from LogInfo"), "1a\n2b");
}

// Files whose own definition would use numbers again.
class ForeignCounter : public SqliteFiles, public ::testing::WithParamInterface<const char*> {};

TEST_P(ForeignCounter, noNumberIsUsedTwice) {
    make(std::string(GetParam()) +
         "; insert into LogInfo (RecordNum, LogMessage) values (5, 'a'), (-3, 'b'), (9, 'c')");
    auto database = open();
    append(*database, u"d");
    database->execute(u"delete from LogInfo where RecordNum >= 9");
    append(*database, u"e");
    database->execute(u"delete from LogInfo");
    database->close();
    ASSERT_TRUE(StockDatabase(native()).run("vacuum"));
    database = open();
    append(*database, u"f");
    ASSERT_TRUE(StockDatabase(native()).run("insert into LogInfo (RecordNum, LogMessage) values (40, 'g')"));
    append(*database, u"h");
    database->execute(u"insert into LogInfo (RecordNum, LogMessage) values (50, 'i')");
    append(*database, u"j");
    database->execute(u"delete from LogInfo where RecordNum > 12");
    append(*database, u"k");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum || LogMessage from LogInfo order by RecordNum"), "12f\n52k");
}

TEST_P(ForeignCounter, rowsDeletedBeforeAnythingWasAppendedCountToo) {
    make(std::string(GetParam()) + "; insert into LogInfo (RecordNum, LogMessage) values (7, 'a')");
    const auto database = open();
    database->execute(u"delete from LogInfo");
    append(*database, u"b");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum from LogInfo"), "8");
}

INSTANTIATE_TEST_SUITE_P(
    Sqlite, ForeignCounter,
    ::testing::Values("create table LogInfo (RecordNum integer primary key, LogMessage text)",
                      "create table LogInfo (LogMessage text, RecordNum int)",
                      "create table LogInfo (LogMessage text, RecordNum Counter)",
                      "create table LogInfo (LogMessage text, RecordNum int primary key)",
                      "create table LogInfo (RecordNum, LogMessage text)"));

TEST_F(SqliteFiles, duplicateAndNegativeNumbersAreLeftAlone) {
    make("create table LogInfo (RecordNum int, LogMessage text);"
         "insert into LogInfo values (2, 'a'), (2, 'b'), (-1, 'c'), ('x', 'd'), (null, 'e')");
    const auto database = open();
    append(*database, u"f");
    database->close();
    EXPECT_EQ(askWhole("select RecordNum from LogInfo order by rowid"), "2\n2\n-1\nx\nNULL\n3");
}

TEST_F(SqliteFiles, aCounterEndsAt32Bits) {
    for (const char* definition : {"integer primary key autoincrement", "integer primary key", "int"}) {
        TestFolder folder;
        ASSERT_TRUE(StockDatabase(folder.native(kFile))
                        .run("create table LogInfo (RecordNum " + std::string(definition) +
                             ", LogMessage text); insert into LogInfo values (2147483646, 'a')"));
        const auto database = engine_->open(folder.path(kFile));
        append(*database, u"last");
        EXPECT_THROW(append(*database, u"none left"), AutomationError);
        EXPECT_THROW(append(*database, u"none left"), AutomationError);
        const auto rows = database->openSnapshot(u"select RecordNum from LogInfo order by RecordNum desc");
        EXPECT_EQ(rows->value(u"RecordNum"), Value(2147483647));
        database->close();
        EXPECT_EQ(StockDatabase(folder.native(kFile)).ask("select count(*) from LogInfo"), "2");
    }
}

TEST_F(SqliteFiles, numbersThatAnotherProgramLetsJumpToTheEndAreNotPassed) {
    make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text)");
    const auto database = open();
    const auto rows = database->openTable(u"LogInfo");
    rows->addNew();
    rows->update();
    ASSERT_TRUE(StockDatabase(native()).run("insert into LogInfo values (2147483647, 'end')"));
    for (int i = 0; i < 3; ++i) {
        rows->addNew();
        EXPECT_THROW(rows->update(), AutomationError);
    }
    EXPECT_EQ(ask("select RecordNum from LogInfo order by RecordNum"), "1\n2147483647");
}

TEST_F(SqliteFiles, zeroLengthOutlivesTheStockVacuumAndEndsWithItsColumn) {
    make(kOldTable);
    auto database = open();
    database->execute(kAddErrors);
    database->allowZeroLength(u"LogInfo", u"Errors");
    database->close();
    ASSERT_TRUE(StockDatabase(native()).run("vacuum"));
    database = open();
    EXPECT_TRUE(database->allowsZeroLength(u"LogInfo", u"Errors"));
    database->execute(u"alter table LogInfo drop column Errors");
    database->execute(kAddErrors);
    EXPECT_FALSE(database->allowsZeroLength(u"LogInfo", u"Errors"));
    database->allowZeroLength(u"LogInfo", u"Errors");
    database->execute(u"drop table LogInfo");
    database->execute(u"create table LogInfo (Errors Text(254))");
    EXPECT_FALSE(database->allowsZeroLength(u"LogInfo", u"Errors"));
}

TEST_F(SqliteFiles, ordinaryTextIsOrdinaryTextToTheStockLibrary) {
    make(std::string(kOldTable) + "; insert into LogInfo (LogMessage) values ('\xC3\xA4\xF0\x9F\x98\x80')");
    const auto database = open();
    append(*database, u"\u00E9\U0001F600");
    EXPECT_EQ(database->openSnapshot(u"select * from LogInfo")->value(u"LogMessage"),
              Value(u"\u00E4\U0001F600"));
    database->close();
    EXPECT_EQ(askWhole("select typeof(LogMessage) || LogMessage from LogInfo where rowid = 2"),
              "text\xC3\xA9\xF0\x9F\x98\x80");
}

} // namespace cvlog::store::testbed
