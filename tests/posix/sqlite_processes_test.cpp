#include "automation/error.h"
#include "base/text.h"
#include "store/sqlite_engine.h"
#include "tests/posix/child_process.h"
#include "tests/store/command_line.h"
#include "tests/store/failing_disk.h"
#include "tests/store/store_files.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

// The file shared by processes: two that write, one that is killed, one that may not write. A child
// neither flushes nor closes anything at its end.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Value;
using tests::exitCodeOf;
using tests::startChild;

namespace {

int environmentNumber(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

class Pipe {
public:
    Pipe() { opened_ = pipe(ends_) == 0; }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeReading();
        closeWriting();
    }
    bool opened() const { return opened_; }
    void closeReading() { closeEnd(0); }
    void closeWriting() { closeEnd(1); }
    void put(int number) const { EXPECT_EQ(write(ends_[1], &number, sizeof number), ssize_t(sizeof number)); }
    bool get(int& number) const { return read(ends_[0], &number, sizeof number) == ssize_t(sizeof number); }

private:
    void closeEnd(int which) {
        if (ends_[which] >= 0) ::close(ends_[which]);
        ends_[which] = -1;
    }
    int ends_[2] = {-1, -1};
    bool opened_ = false;
};

class SqliteProcesses : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(StockDatabase(native()).run("create table LogInfo (RecordNum integer primary key "
                                                "autoincrement, LogMessage Text, Number Integer)"));
    }
    /// The command-line program reads what the processes left, and agrees with the library.
    void TearDown() override {
        EXPECT_EQ(askCommandLine(native(), "pragma integrity_check"), "ok");
        const char* const kCounts = "select count(*) || ' ' || ifnull(max(RecordNum), 0) from LogInfo";
        EXPECT_EQ(askCommandLine(native(), kCounts), StockDatabase(native()).ask(kCounts));
    }
    std::string native() const { return folder_.native(kFile); }
    std::shared_ptr<Database> open() { return makeSqliteEngine(files_)->open(folder_.path(kFile)); }

    static std::u16string messageOf(int number) {
        return u"record " + base::decimal(number) + u" " +
               std::u16string(static_cast<std::size_t>(number % 700), u'm');
    }
    static void append(Recordset& rows, int number) {
        rows.addNew();
        rows.assign(u"LogMessage", messageOf(number));
        rows.assign(u"Number", number);
        rows.update();
    }
    /// Every number from 0 to below `count` is there once with its own message, and at most one more.
    void expectWhole(int count) {
        EXPECT_EQ(StockDatabase(native()).ask("pragma integrity_check"), "ok");
        const auto database = open();
        const auto rows =
            database->openSnapshot(u"select * from LogInfo where RecordNum > 0 order by RecordNum");
        int expected = 0;
        for (; !rows->atEnd(); rows->moveNext(), ++expected) {
            ASSERT_EQ(rows->value(u"Number"), Value(expected));
            ASSERT_EQ(rows->value(u"LogMessage"), Value(messageOf(expected)));
        }
        EXPECT_GE(expected, count);
        EXPECT_LE(expected, count + 1);
    }

    TestFolder folder_;
    MachineFiles files_;
};

} // namespace

TEST_F(SqliteProcesses, twoWriteAndReadAtOnce) {
    constexpr int kCount = 300;
    const auto writer = [this](int start) {
        const auto database = open();
        const auto rows = database->openTable(u"LogInfo");
        for (int i = 0; i < kCount; ++i) {
            append(*rows, start + i);
            const auto read = database->openSnapshot(u"select Number from LogInfo order by RecordNum desc");
            if (read->atEnd()) return 1;
        }
        database->close();
        return 0;
    };
    const pid_t first = startChild([&] { return writer(0); });
    const pid_t second = startChild([&] { return writer(1000); });
    EXPECT_EQ(exitCodeOf(first), 0);
    EXPECT_EQ(exitCodeOf(second), 0);
    StockDatabase stock(native());
    EXPECT_EQ(stock.ask("select count(distinct Number) || ' ' || count(distinct RecordNum) from LogInfo"),
              "600 600");
    EXPECT_EQ(stock.ask("pragma integrity_check"), "ok");
}

TEST_F(SqliteProcesses, aKilledWriterLosesNothingThatWasAcknowledged) {
    const int kills = environmentNumber("CVLOG_TEST_KILLS", 1000);
    const auto seed = static_cast<unsigned>(environmentNumber("CVLOG_TEST_SEED", 20260101));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    int next = 0;
    for (int kill = 0; kill < kills; ++kill) {
        Pipe acknowledged;
        ASSERT_TRUE(acknowledged.opened());
        const int start = next;
        const pid_t child = startChild([&] {
            const auto database = open();
            const auto rows = database->openTable(u"LogInfo");
            for (int number = start;; ++number) {
                append(*rows, number);
                acknowledged.put(number);
            }
            return 0;
        });
        acknowledged.closeWriting();
        int number = 0;
        const int wanted = static_cast<int>(random() % 40);
        for (int i = 0; i <= wanted && acknowledged.get(number); ++i) next = number + 1;
        for (auto spin = random() % 20000; spin > 0; --spin) // kills in the middle of a record, too
            asm volatile("");
        ::kill(child, SIGKILL);
        exitCodeOf(child);
        while (acknowledged.get(number)) next = number + 1;
        const auto database = open();
        const auto rows = database->openSnapshot(u"Select Number From LogInfo order by RecordNum desc");
        ASSERT_FALSE(rows->atEnd());
        const int last = toInt32(rows->value(u"Number"));
        ASSERT_GE(last, next - 1);
        ASSERT_LE(last, next);
        next = last + 1;
    }
    expectWhole(next);
}

// The numbers come in blocks, whether the table has a key of its own beside them or they are its key.
class NumberedTable : public SqliteProcesses, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ASSERT_TRUE(StockDatabase(native()).run(std::string("create table LogInfo (") + GetParam() +
                                                "LogMessage Text, Number Integer)"));
        open()->execute(u"alter table LogInfo add column RecordNum Counter");
    }
};

INSTANTIATE_TEST_SUITE_P(Sqlite, NumberedTable, ::testing::Values("Id integer primary key, ", ""),
                         [](const auto& tested) { return *tested.param ? "KeyOfItsOwn" : "NumberIsTheKey"; });

TEST_P(NumberedTable, twoThatWriteGiveEachNumberOnceInTheOrderOfTheirRecords) {
    constexpr int kCount = 400;
    const auto writer = [this](int start) {
        const auto database = open();
        const auto rows = database->openTable(u"LogInfo");
        for (int i = 0; i < kCount; ++i) append(*rows, start + i);
        database->close();
        return 0;
    };
    const pid_t first = startChild([&] { return writer(0); });
    const pid_t second = startChild([&] { return writer(1000); });
    EXPECT_EQ(exitCodeOf(first), 0);
    EXPECT_EQ(exitCodeOf(second), 0);
    StockDatabase stock(native());
    EXPECT_EQ(stock.ask("select count(*) || ' ' || count(distinct RecordNum) from LogInfo"), "800 800");
    for (const char* order : {"rowid", "Number"}) // of all records, of each writer's own
        EXPECT_EQ(stock.ask("select count(*) from LogInfo a join LogInfo b on b." + std::string(order) +
                            " = a." + order + " + 1 where b.RecordNum <= a.RecordNum"),
                  "0");
    EXPECT_EQ(stock.ask("pragma integrity_check"), "ok");
}

TEST_P(NumberedTable, aKilledWriterLeavesAGapAndNoNumberIsGivenTwice) {
    const int kills = environmentNumber("CVLOG_TEST_KILLS", 1000) / 5;
    const auto seed = static_cast<unsigned>(environmentNumber("CVLOG_TEST_SEED", 20260101));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    int highest = 0;
    bool gap = false;
    for (int kill = 0; kill < kills; ++kill) {
        Pipe acknowledged;
        ASSERT_TRUE(acknowledged.opened());
        const pid_t child = startChild([&] {
            const auto database = open();
            const auto rows = database->openTable(u"LogInfo");
            for (int number = 0;; ++number) {
                append(*rows, number);
                acknowledged.put(number);
            }
            return 0;
        });
        acknowledged.closeWriting();
        int number = -1;
        const int wanted = static_cast<int>(random() % 40);
        for (int i = 0; i <= wanted; ++i) ASSERT_TRUE(acknowledged.get(number));
        ::kill(child, SIGKILL);
        exitCodeOf(child);
        while (acknowledged.get(number)) {
        }
        // The rows go each time, so that only the mark tells what was given.
        StockDatabase stock(native());
        const int lowest = std::stoi(stock.ask("select min(RecordNum) from LogInfo"));
        ASSERT_GT(lowest, highest);
        gap = gap || lowest > highest + 1;
        highest = std::stoi(stock.ask("select max(RecordNum) from LogInfo"));
        ASSERT_GT(highest - lowest, number - 1);
        ASSERT_EQ(
            stock.ask("select count(*) from LogInfo where RecordNum <> Number + " + std::to_string(lowest)),
            "0");
        ASSERT_TRUE(stock.run("delete from LogInfo"));
    }
    EXPECT_TRUE(gap) << "no writer was killed within a block";
}

TEST_F(SqliteProcesses, aWriterThatEndsAtAnyWriteOrFlushLosesNothing) {
    constexpr int kRecords = 4;
    for (int ending = 1;; ++ending) {
        TestFolder folder;
        ASSERT_TRUE(StockDatabase(folder.native(kFile)).run("create table LogInfo (LogMessage Text)"));
        Pipe acknowledged;
        ASSERT_TRUE(acknowledged.opened());
        const pid_t child = startChild([&] {
            FailingDisk disk;
            disk.watch([ending](DiskAction, int number) -> bool {
                if (number == ending) _exit(7);
                return false;
            });
            const auto database = makeSqliteEngine(files_)->open(folder.path(kFile));
            database->execute(u"alter table LogInfo add column RecordNum Counter");
            const auto rows = database->openTable(u"LogInfo");
            for (int i = 1; i <= kRecords; ++i) {
                rows->addNew();
                rows->assign(u"LogMessage", base::decimal(i));
                rows->update();
                acknowledged.put(i);
            }
            database->close();
            return 0;
        });
        acknowledged.closeWriting();
        const int code = exitCodeOf(child);
        int last = 0;
        while (acknowledged.get(last)) {
        }
        StockDatabase stock(folder.native(kFile));
        ASSERT_EQ(stock.ask("pragma integrity_check"), "ok") << "ending at " << ending;
        const int count = std::stoi(stock.ask("select count(*) from LogInfo"));
        EXPECT_TRUE(count == last || count == last + 1) << "ending at " << ending;
        if (count > 0) {
            EXPECT_EQ(stock.ask("select count(*) from LogInfo where RecordNum = cast(LogMessage as integer)"),
                      std::to_string(count));
        }
        if (code == 0) break;
        ASSERT_EQ(code, 7);
    }
}

TEST_F(SqliteProcesses, aFolderThatCannotBeWrittenIsRead) {
    open()->openTable(u"LogInfo")->close();
    {
        const auto database = open();
        append(*database->openTable(u"LogInfo"), 0);
        database->close();
    }
    ASSERT_EQ(chmod(native().c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder_.native().c_str(), 0555), 0);
    const int code = exitCodeOf(startChild([this] {
        if (!tests::becomeNobody()) return 50;
        const auto database = open();
        const auto read = database->openSnapshot(u"Select RecordNum From LogInfo order by RecordNum desc");
        if (read->atEnd() || read->value(u"RecordNum") != Value(1)) return 1;
        const auto rows = database->openTable(u"LogInfo");
        for (int i = 0; i < 2; ++i) {
            try {
                append(*rows, 5);
                return 2;
            } catch (const AutomationError&) {
            }
        }
        try {
            database->execute(u"alter table LogInfo add column Errors Text(254)");
            return 3;
        } catch (const AutomationError&) {
        }
        database->close();
        return 0;
    }));
    EXPECT_EQ(chmod(folder_.native().c_str(), 0755), 0);
    EXPECT_EQ(code, 0) << "50: the test could not become another user";
    EXPECT_EQ(StockDatabase(native(), true).ask("select count(*) from LogInfo"), "1");
}

TEST_F(SqliteProcesses, aSecondOpeningDoesNotDropTheLocksOfTheFirst) {
    const auto database = open();
    database->execute(u"begin immediate");
    open()->close();
    const int code =
        exitCodeOf(startChild([this] { return StockDatabase(native()).run("begin immediate") ? 1 : 0; }));
    EXPECT_EQ(code, 0);
    database->execute(u"rollback");
}

} // namespace cvlog::store::testbed
