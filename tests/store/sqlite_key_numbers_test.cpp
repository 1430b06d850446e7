#include "automation/error.h"
#include "tests/store/failing_disk.h"
#include "tests/store/sqlite_program.h"

#include <string>
#include <vector>

// The numbers of a table whose key they are. The library notes the highest one; here that note moves ahead in blocks.

namespace cvlog::store::testbed {

namespace {

class SqliteKeyNumbers : public SqliteFiles {
protected:
    void SetUp() override {
        make("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage text)");
    }
    Program program() { return Program(open()); }
    int number(const std::string& sql) { return std::stoi(ask(sql)); }
    int mark() { return number("select max(seq) from sqlite_sequence where name = 'LogInfo'"); }
    int newest() { return number("select max(RecordNum) from LogInfo"); }
    void byAnotherTool(const std::string& sql) { ASSERT_TRUE(StockDatabase(native()).run(sql)); }
};

} // namespace

TEST_F(SqliteKeyNumbers, aBlockDoublesUpTo256SoThatMostRecordsLeaveTheMarkAlone) {
    Program log = program();
    std::vector<int> marks;
    for (int i = 1; i <= 1024; ++i) {
        log.append();
        ASSERT_EQ(newest(), i);
        ASSERT_GE(mark(), i);
        if (marks.empty() || mark() != marks.back()) marks.push_back(mark());
    }
    EXPECT_EQ(marks, (std::vector<int>{1, 3, 7, 15, 31, 63, 127, 255, 511, 767, 1023, 1279}));
}

TEST_F(SqliteKeyNumbers, aRecordWithinABlockWritesOnePage) {
    FailingDisk disk;
    Program log(makeSqliteEngine(files_)->open(folder_.path(kFile)));
    log.append(300); // up to 511 belong to a block
    disk.watch(nullptr);
    log.append();
    EXPECT_EQ(disk.changes(), 2) << "a page of the journal and its header";
    log.close();
}

TEST_F(SqliteKeyNumbers, whatIsLeftOfABlockIsGivenBackWhenTheTableIsClosed) {
    for (int opening = 1; opening <= 3; ++opening) {
        Program log = program();
        log.append(5);
        EXPECT_GT(mark(), newest());
        log.close();
        EXPECT_EQ(mark(), newest());
        EXPECT_EQ(newest(), 5 * opening);
    }
}

TEST_F(SqliteKeyNumbers, rowsOfAnotherToolComeAboveTheBlockAndOursAboveThem) {
    Program log = program();
    log.append(5); // 6 and 7 are left of the block
    byAnotherTool("insert into LogInfo (LogMessage) values ('other')");
    EXPECT_EQ(newest(), 8);
    log.append();
    EXPECT_EQ(newest(), 9);
    byAnotherTool("insert into LogInfo values (100, 'other'); delete from LogInfo where RecordNum = 100");
    log.append();
    EXPECT_EQ(newest(), 101);
}

TEST_F(SqliteKeyNumbers, aBlockThatOthersHaveGoneBeyondIsNotGivenBack) {
    Program log = program();
    log.append(5);
    byAnotherTool("insert into LogInfo (LogMessage) values ('other'); delete from LogInfo");
    log.close();
    Program next = program();
    next.append();
    EXPECT_EQ(newest(), 9);
}

TEST_F(SqliteKeyNumbers, whatAnotherToolDeletesIsNotNumberedAgain) {
    Program log = program();
    log.append(10);
    byAnotherTool("delete from LogInfo; vacuum");
    log.append();
    EXPECT_GT(newest(), 10);
}

TEST_F(SqliteKeyNumbers, aMarkThatAnotherToolDropsIsMadeAnew) {
    Program log = program();
    log.append(5);
    byAnotherTool("delete from sqlite_sequence");
    log.append();
    EXPECT_EQ(newest(), 6);
    EXPECT_EQ(mark(), 6);
}

TEST_F(SqliteKeyNumbers, theHostsStatementsLeaveNoGap) {
    Program log = program();
    log.append(5);
    log.execute(u"delete from LogInfo");
    log.append();
    EXPECT_EQ(newest(), 6);
    log.append(5);
    log.execute(u"insert into LogInfo (LogMessage) values ('by the host')");
    EXPECT_EQ(newest(), 12);
    log.append();
    EXPECT_EQ(newest(), 13);
}

TEST_F(SqliteKeyNumbers, numbersOfATransactionThatTheHostTakesBackAreFreeForAll) {
    Program log = program();
    log.append(2);
    log.execute(u"begin");
    log.append(3);
    log.execute(u"rollback");
    EXPECT_EQ(mark(), 2);
    log.append();
    EXPECT_EQ(newest(), 3);
}

TEST_F(SqliteKeyNumbers, twoProgramsThatTakeTurnsNeverGiveANumberTwice) {
    Program first = program();
    Program second = program();
    int highest = 0;
    for (int turn = 0; turn < 40; ++turn) {
        Program& writer = turn % 2 == 0 ? first : second;
        for (int i = 0; i <= turn % 7; ++i) {
            writer.append();
            ASSERT_GT(newest(), highest) << "turn " << turn;
            highest = newest();
            // Deleted behind both their backs, so that only the mark tells what was given.
            if (turn % 3 == 0)
                byAnotherTool("delete from LogInfo where RecordNum < " + std::to_string(highest));
        }
    }
}

} // namespace cvlog::store::testbed
