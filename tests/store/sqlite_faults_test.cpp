#include "automation/error.h"
#include "store/sqlite_engine.h"
#include "tests/store/command_line.h"
#include "tests/store/failing_disk.h"
#include "tests/store/store_files.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

// Every write and flush of a session fails in its turn, once or from then on: nothing that was acknowledged
// is lost, nothing else appears, and what follows works.

namespace cvlog::store::testbed {

using automation::AutomationError;

namespace {

constexpr int kRecords = 12;

std::set<std::string> linesOf(const std::string& text) {
    std::set<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.insert(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

template <class Statement>
bool succeeds(Statement statement) {
    try {
        statement();
        return true;
    } catch (const AutomationError&) {
        return false;
    }
}

class SqliteFaults : public ::testing::TestWithParam<bool> {
protected:
    void makeOldFile(const TestFolder& folder) {
        ASSERT_TRUE(StockDatabase(folder.native(kFile))
                        .run("create table LogInfo (LogMessage Text); insert into LogInfo values ('r0')"));
    }

    /// Opens, upgrades, adds records and closes; returns the messages whose saving was acknowledged.
    std::set<std::string> runSession(const TestFolder& folder) {
        std::set<std::string> acknowledged = {"r0"};
        std::shared_ptr<Database> database;
        if (!succeeds([&] { database = makeSqliteEngine(files_)->open(folder.path(kFile)); }))
            return acknowledged;
        succeeds([&] { database->execute(u"alter table LogInfo add column RecordNum Counter"); });
        succeeds([&] { database->execute(u"alter table LogInfo add column Errors Text(254)"); });
        succeeds([&] { database->allowZeroLength(u"LogInfo", u"Errors"); });
        std::shared_ptr<Recordset> rows;
        succeeds([&] { rows = database->openTable(u"LogInfo"); });
        for (char number = 'A'; rows && number < 'A' + kRecords; ++number) {
            succeeds([&] { rows->addNew(); });
            succeeds([&] { rows->assign(u"LogMessage", std::u16string(1, static_cast<char16_t>(number))); });
            if (succeeds([&] { rows->update(); })) acknowledged.insert(std::string(1, number));
        }
        succeeds([&] { database->close(); });
        return acknowledged;
    }

    MachineFiles files_;
};

} // namespace

TEST_P(SqliteFaults, whatWasAcknowledgedIsThereAndNothingElse) {
    const bool forGood = GetParam();
    FailingDisk disk;
    int count = 0;
    {
        TestFolder folder;
        makeOldFile(folder);
        disk.watch(nullptr);
        EXPECT_EQ(runSession(folder).size(), kRecords + 1u);
        count = disk.changes();
    }
    ASSERT_GT(count, 20);
    for (int failing = 1; failing <= count; ++failing) {
        TestFolder folder;
        makeOldFile(folder);
        disk.watch(
            [&](DiskAction, int number) { return number == failing || (forGood && number > failing); });
        const std::set<std::string> acknowledged = runSession(folder);
        disk.watch(nullptr);
        StockDatabase stock(folder.native(kFile));
        EXPECT_EQ(stock.ask("pragma integrity_check"), "ok") << "failing " << failing;
        EXPECT_EQ(linesOf(askCommandLine(folder.native(kFile), "select LogMessage from LogInfo")),
                  acknowledged)
            << "failing " << failing;
        EXPECT_EQ(linesOf(stock.ask("select LogMessage from LogInfo")), acknowledged)
            << "failing " << failing;
    }
}

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteFaults, ::testing::Bool(),
                         [](const auto& tested) { return tested.param ? "ForGood" : "Once"; });

TEST(SqliteFlushes, areFewerThanOneInAHundredRecords) {
    FailingDisk disk;
    TestFolder folder;
    MachineFiles files;
    ASSERT_TRUE(
        StockDatabase(folder.native(kFile))
            .run("create table LogInfo (RecordNum integer primary key autoincrement, LogMessage Text, "
                 "Errors Text(254))"));
    const auto database = makeSqliteEngine(files)->open(folder.path(kFile));
    const auto rows = database->openTable(u"LogInfo");
    disk.watch(nullptr);
    constexpr int kCount = 20000;
    for (int i = 0; i < kCount; ++i) {
        rows->addNew();
        rows->assign(u"LogMessage", u"2026-01-02 03:04:05 Check applied to Customer (Table) - Done. " +
                                        std::u16string(100, u'm'));
        rows->update();
    }
    EXPECT_GT(disk.syncs(), 0); // the log did go into the file on the way
    EXPECT_LE(disk.syncs(), kCount / 100);
    database->close();
}

} // namespace cvlog::store::testbed
