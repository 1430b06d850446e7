#include "automation/error.h"
#include "tests/store/sqlite_program.h"

#include <string>
#include <vector>

// The numbers of a table that has a key of its own, so that the engine gives them, in blocks.

namespace cvlog::store::testbed {

using automation::AutomationError;

namespace {

constexpr int kLastNumber = 0x7FFFFFFF;

class SqliteNumbers : public SqliteFiles {
protected:
    void SetUp() override {
        make("create table LogInfo (Id integer primary key, LogMessage text)");
        const auto database = open();
        database->execute(kAddRecordNum);
        database->close();
    }
    Program program() { return Program(open()); }
    int number(const std::string& sql) { return std::stoi(ask(sql)); }
    int mark() { return number("select LastNumber from SysColumnProperties where ColumnName = 'RecordNum'"); }
    /// The number of the row that was stored last, as any other program sees it.
    int newest() { return number("select RecordNum from LogInfo order by Id desc limit 1"); }
    std::string numbers() { return ask("select group_concat(RecordNum, ' ') from LogInfo order by Id"); }
};

} // namespace

TEST_F(SqliteNumbers, aBlockDoublesUpTo256SoThatMostRecordsLeaveTheMarkAlone) {
    Program log = program();
    log.append(); // makes the table of the marks, which begins anew
    std::vector<int> marks{1};
    for (int i = 2; i <= 1024; ++i) {
        log.append();
        ASSERT_EQ(newest(), i);
        ASSERT_GE(mark(), i);
        if (mark() != marks.back()) marks.push_back(mark());
    }
    EXPECT_EQ(marks, (std::vector<int>{1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 768, 1024}));
}

TEST_F(SqliteNumbers, whatIsLeftOfABlockIsGivenBackWhenTheTableIsClosed) {
    for (int opening = 0; opening < 3; ++opening) {
        Program log = program();
        log.append(5);
        EXPECT_GT(mark(), newest());
        log.close();
        EXPECT_EQ(mark(), newest());
    }
    EXPECT_EQ(numbers(), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15");
}

TEST_F(SqliteNumbers, twoProgramsThatTakeTurnsNeverGiveANumberTwiceAndKeepTheOrder) {
    Program first = program();
    Program second = program();
    int highest = 0;
    for (int turn = 0; turn < 60; ++turn) {
        Program& writer = turn % 2 == 0 ? first : second;
        for (int i = 0; i <= turn % 7; ++i) {
            writer.append();
            const int given = newest();
            ASSERT_GT(given, highest) << "turn " << turn;
            highest = given;
            // Deleted behind both their backs, so that only the mark tells what was given.
            if (turn % 3 == 0) make("delete from LogInfo where Id > 1");
        }
    }
    first.close();
    second.close();
    Program third = program();
    third.append();
    EXPECT_GT(newest(), highest);
}

TEST_F(SqliteNumbers, aBlockThatOthersHaveGoneBeyondIsNotGivenBack) {
    Program first = program();
    first.append(5);
    Program second = program();
    second.append();
    const int given = newest();
    ASSERT_TRUE(StockDatabase(native()).run("delete from LogInfo where Id > 5"));
    second.close();
    first.close();
    Program third = program();
    third.append();
    EXPECT_GT(newest(), given);
}

TEST_F(SqliteNumbers, rowsOfAnotherToolAreNeverNumberedAgain) {
    Program log = program();
    log.append(5); // 6 and 7 are left of the block
    ASSERT_TRUE(StockDatabase(native()).run("insert into LogInfo (RecordNum) values (6)"));
    log.append();
    EXPECT_GT(newest(), 6);
    ASSERT_TRUE(StockDatabase(native()).run("insert into LogInfo (RecordNum) values (100)"));
    log.append();
    EXPECT_EQ(newest(), 101);
    ASSERT_TRUE(StockDatabase(native()).run("insert into LogInfo (RecordNum) values (102)"));
    log.close();
    Program next = program();
    next.append();
    EXPECT_EQ(newest(), 103);
}

TEST_F(SqliteNumbers, whatAnotherToolDeletesIsNotNumberedAgain) {
    Program log = program();
    log.append(10);
    ASSERT_TRUE(StockDatabase(native()).run("delete from LogInfo; vacuum"));
    log.append();
    EXPECT_GT(newest(), 10);
}

TEST_F(SqliteNumbers, rowsOfAnotherToolBetweenTwoDeletionsAreNotNumberedAgain) {
    Program log = program();
    log.append(3);
    log.execute(u"delete from LogInfo where RecordNum = 3");
    ASSERT_TRUE(
        StockDatabase(native()).run("insert into LogInfo (RecordNum, LogMessage) values (10, 'other')"));
    log.execute(u"delete from LogInfo where RecordNum = 10");
    log.append();
    EXPECT_EQ(newest(), 11);
}

TEST_F(SqliteNumbers, rowsThatADeletionBringsAreNotNumberedAgain) {
    Program log = program();
    log.execute(u"create trigger Kept after delete on LogInfo when old.RecordNum < 20 begin "
                u"insert into LogInfo (RecordNum, LogMessage) values (20, 'kept'); end");
    log.append(2);
    log.execute(u"delete from LogInfo where RecordNum = 1");
    log.execute(u"delete from LogInfo where RecordNum = 20");
    log.append();
    EXPECT_EQ(newest(), 21);
}

TEST_F(SqliteNumbers, rowsOfTheHostsTransactionBetweenTwoDeletionsAreNotNumberedAgain) {
    Program log = program();
    log.append(3);
    log.execute(u"delete from LogInfo where RecordNum = 3");
    log.execute(u"begin");
    log.execute(u"insert into LogInfo (RecordNum, LogMessage) values (30, 'host')");
    log.execute(u"delete from LogInfo where RecordNum = 30");
    log.execute(u"commit");
    log.append();
    EXPECT_EQ(newest(), 31);
}

TEST_F(SqliteNumbers, aMarkThatTheHostLowersBetweenTwoDeletionsIsSetAnew) {
    Program log = program();
    log.append(5);
    log.execute(u"delete from LogInfo where RecordNum = 1");
    log.execute(u"delete from SysColumnProperties");
    log.execute(u"delete from LogInfo where RecordNum = 5");
    log.append();
    EXPECT_EQ(newest(), 6);
}

TEST_F(SqliteNumbers, theHostsStatementsLeaveNoGap) {
    Program log = program();
    log.append(5);
    log.execute(u"delete from LogInfo");
    log.append();
    EXPECT_EQ(newest(), 6);
    log.append(5);
    log.execute(u"delete from LogInfo where RecordNum > 8");
    log.append();
    EXPECT_EQ(newest(), 12);
    log.append(2);
    log.execute(u"insert into LogInfo (RecordNum) values (15)");
    log.append();
    EXPECT_EQ(newest(), 16);
}

TEST_F(SqliteNumbers, twoRowSetsOfOneDatabaseNumberInTheOrderOfTheirRecordsWithoutGaps) {
    Program log = program();
    const auto other = log.database().openTable(u"LogInfo");
    for (int i = 0; i < 20; ++i) {
        log.append(3);
        other->addNew();
        other->update();
    }
    EXPECT_EQ(ask("select count(*) from LogInfo where Id = RecordNum"), "80");
}

TEST_F(SqliteNumbers, aRowThatFailsTakesNoNumber) {
    make("create unique index OnlyOnce on LogInfo (LogMessage) where LogMessage = 'twice'");
    Program log = program();
    const auto rows = log.database().openTable(u"LogInfo");
    const auto append = [&](const char16_t* message) {
        rows->addNew();
        rows->assign(u"LogMessage", message);
        rows->update();
    };
    append(u"twice");
    for (int i = 2; i <= 40; ++i) { // within blocks and where one begins
        EXPECT_THROW(append(u"twice"), AutomationError);
        append(u"m");
    }
    EXPECT_EQ(ask("select count(*) from LogInfo where Id = RecordNum"), "40");
}

TEST_F(SqliteNumbers, aRecordLostToALockTakesNoNumber) {
    Program log = program();
    log.append(5);
    {
        StockDatabase other(native());
        ASSERT_TRUE(other.run("begin immediate"));
        EXPECT_THROW(log.append(), AutomationError);
    }
    log.append();
    EXPECT_EQ(newest(), 6);
}

TEST_F(SqliteNumbers, numbersOfATransactionThatTheHostTakesBackAreFreeForAll) {
    Program first = program();
    Program second = program();
    first.append(2);
    first.execute(u"begin");
    first.append(3);
    first.execute(u"rollback");
    EXPECT_EQ(mark(), 2);
    second.append(4); // gives the numbers that were taken back
    EXPECT_EQ(newest(), 6);
    second.execute(u"delete from LogInfo where RecordNum > 3");
    first.append();
    EXPECT_GT(newest(), 6);
}

TEST_F(SqliteNumbers, aTransactionThatTheHostCommitsKeepsItsNumbersAndLeavesNoGap) {
    Program log = program();
    log.append(5);
    log.execute(u"begin");
    log.append(5);
    log.execute(u"savepoint part");
    log.append(5);
    log.execute(u"rollback to part");
    log.append(5);
    log.execute(u"commit");
    log.append(5);
    EXPECT_EQ(ask("select count(*) from LogInfo where Id = RecordNum"), "20");
    EXPECT_EQ(newest(), 20);
}

TEST_F(SqliteNumbers, aTransactionThatTheLibraryTakesBackLeavesNoBlockBehind) {
    make("create table Guard (Number integer unique on conflict rollback); insert into Guard values (1)");
    Program first = program();
    Program second = program();
    first.execute(u"begin");
    first.append(5);
    EXPECT_THROW(first.execute(u"insert into Guard values (1)"), AutomationError); // ends the transaction
    second.append(4);
    second.execute(u"delete from LogInfo");
    first.append();
    EXPECT_EQ(newest(), 5);
}

TEST_F(SqliteNumbers, aTableMadeAnewDoesNotLoseItsMarkToTheProgramThatKnewTheOldOne) {
    Program old = program();
    old.append(5); // its block ends at 7
    {
        const auto database = open();
        database->execute(u"drop table LogInfo");
        database->execute(u"create table LogInfo (Id integer primary key, LogMessage text)");
        database->execute(kAddRecordNum);
        Program fresh(database);
        fresh.append(7);
        EXPECT_EQ(mark(), 7);
        fresh.execute(u"delete from LogInfo where RecordNum > 5");
    }
    old.close();
    Program next = program();
    next.append();
    EXPECT_EQ(newest(), 8);
}

TEST_F(SqliteNumbers, aTableMadeAnewIsNumberedAboveAllItsOwnRows) {
    Program old = program();
    old.append(5);
    const auto database = open();
    database->execute(u"drop table LogInfo");
    database->execute(u"create table LogInfo (Id integer primary key, LogMessage text)");
    database->execute(kAddRecordNum);
    Program fresh(database);
    fresh.append(7);
    ASSERT_TRUE(StockDatabase(native()).run("delete from LogInfo where RecordNum > 5"));
    old.append();
    EXPECT_EQ(newest(), 8);
}

TEST_F(SqliteNumbers, theLastNumbersAreAllGivenAndThenNoMore) {
    make("insert into LogInfo (RecordNum) values (" + std::to_string(kLastNumber - 20) + ")");
    Program log = program();
    log.append(20); // blocks of 1, 2, 4, 8 and what is left
    EXPECT_EQ(newest(), kLastNumber);
    EXPECT_EQ(mark(), kLastNumber);
    for (int i = 0; i < 3; ++i) EXPECT_THROW(log.append(), AutomationError);
    log.execute(u"delete from LogInfo");
    EXPECT_THROW(log.append(), AutomationError) << "all have been given";
    EXPECT_EQ(ask("select count(*) from LogInfo"), "0");
}

TEST_F(SqliteNumbers, aMarkBeyondTheLastNumberIsTheEnd) {
    make("insert into LogInfo (RecordNum) values (4294967296)");
    Program log = program();
    EXPECT_THROW(log.append(), AutomationError);
    make("delete from LogInfo");
    log.append();
    EXPECT_EQ(newest(), 1) << "the other tool's row was never ours to remember";
}

TEST_F(SqliteNumbers, aReaderSeesTheNumbersGrow) {
    Program log = program();
    const auto reader = open();
    int highest = 0;
    for (int i = 0; i < 300; ++i) {
        log.append();
        const auto rows = reader->openSnapshot(u"Select RecordNum From LogInfo order by RecordNum desc");
        const int seen = toInt32(rows->value(u"RecordNum"));
        ASSERT_GT(seen, highest);
        highest = seen;
    }
    EXPECT_EQ(highest, 300) << "a reader disturbs nobody";
}

} // namespace cvlog::store::testbed
