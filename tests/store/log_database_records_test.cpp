#include "core/series_report.h"
#include "tests/store/failing_disk.h"
#include "tests/store/stored_log.h"

// Records that are hard to keep, and records that cannot be kept: the next one is always whole, the earlier ones
// stay, the rows are shown and the event is raised all the same.

namespace cvlog::store::testbed {

namespace {

class StoredRecords : public StoredLog {
protected:
    void SetUp() override {
        make(kOldTable);
        ASSERT_TRUE(openLog());
        core::SeriesStart(globals_); // the rows then stay
        addEntry(u"first");
    }
    /// An entry whose record is lost, and nothing else of it.
    void loseEntry() {
        const int rows = rowCount();
        const std::size_t events = sink_->ids.size();
        EXPECT_NO_THROW(addEntry(u"lost", u"lost.errors"));
        EXPECT_GT(rowCount(), rows);
        EXPECT_EQ(sink_->ids.size(), events + 1);
        EXPECT_TRUE(saidNothing());
    }
};

} // namespace

TEST_F(StoredRecords, keepTheMessageExactly) {
    using namespace std::string_literals; // counts the NUL in
    const std::u16string message = u"a\r\nb\t 'c' \"d\" \u00E4\U0001F600 \0e"s + u"\xD800";
    ASSERT_EQ(message.size(), 21U);
    addEntry(message);
    const auto rows = globals_.store.LogDatabase->openSnapshot(u"select * from LogInfo where RecordNum = 2");
    const std::u16string kept = automation::toText(rows->value(u"LogMessage"));
    EXPECT_EQ(kept.substr(kept.size() - message.size()), message);
    rows->close();
    closeLog();
    EXPECT_EQ(askWhole("select count(*) from LogInfo"), "2");
}

TEST_F(StoredRecords, leaveOutAnErrorsFileNameThatIsTooLong) {
    addEntry(u"fits", std::u16string(254, u'e'));
    addEntry(u"too long", std::u16string(255, u'e'));
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2:fits\n3:too long");
    EXPECT_EQ(ask("select ifnull(length(Errors), 'none') from LogInfo order by RecordNum"), "0\n254\nnone");
    EXPECT_TRUE(saidNothing());
}

TEST_F(StoredRecords, areVisibleToTheHostAtOnce) {
    const auto database = automation::toObject(log_->get(u"LogDB"));
    const auto rows =
        automation::toObject(database->invoke(u"OpenRecordset", u"select count(*) as N from LogInfo"));
    const auto fields = automation::toObject(rows->get(u"Fields"));
    EXPECT_EQ(automation::toInt32(automation::toObject(fields->invoke(u"Item", u"N"))->get(u"Value")), 1);
}

TEST_F(StoredRecords, areLostSilentlyOnceTheHostHasClosedTheDatabase) {
    automation::toObject(log_->get(u"LogDB"))->invoke(u"Close");
    loseEntry();
    EXPECT_NO_THROW(closeLog());
    EXPECT_EQ(stored(), "1:first");
}

TEST_F(StoredRecords, areLostSilentlyWhileAnotherProgramLocksTheFile) {
    StockDatabase other(native());
    ASSERT_TRUE(other.run("begin immediate"));
    loseEntry();
    ASSERT_TRUE(other.run("commit"));
    addEntry(u"next");
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2:next");
    EXPECT_EQ(ask("select Errors from LogInfo where RecordNum = 2"), "") << "nothing of the lost one";
}

TEST_F(StoredRecords, areLostSilentlyWhenTheDatabaseMayOnlyBeRead) {
    executeAsHost(u"pragma query_only = on");
    loseEntry();
    executeAsHost(u"pragma query_only = off");
    addEntry(u"next");
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2:next");
}

TEST_F(StoredRecords, loseOnlyAColumnThatAnotherProgramDrops) {
    ASSERT_TRUE(StockDatabase(native()).run("alter table LogInfo drop column ObjectName"));
    addEntry(u"second");
    addEntry(u"third", u"e.errors");
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2:second\n3:third");
    EXPECT_EQ(ask("select MethodName || ObjectType || Errors from LogInfo where RecordNum = 3"),
              "CompilePROGe.errors");
}

TEST_F(StoredRecords, areLostSilentlyWhenTheCounterHasEnded) {
    ASSERT_TRUE(
        StockDatabase(native()).run("insert into LogInfo (RecordNum, LogMessage) values (2147483647, 'RC "
                                    "7. end')"));
    loseEntry();
    loseEntry();
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2147483647:end");
    ASSERT_TRUE(openLog());
    EXPECT_EQ(globals_.store.LastRecordNum, 2147483647);
}

TEST_F(StoredLog, survivesADiskThatIsFullForAWhile) {
    make(kOldTable);
    FailingDisk disk;
    ASSERT_TRUE(openLog());
    addEntry(u"first");
    disk.watch([](DiskAction, int) { return true; });
    for (int i = 0; i < 3; ++i) addEntry(u"lost", u"lost.errors");
    EXPECT_GT(disk.changes(), 0);
    disk.watch(nullptr);
    addEntry(u"next");
    EXPECT_EQ(sink_->ids.size(), 5U);
    EXPECT_TRUE(saidNothing());
    closeLog();
    EXPECT_EQ(stored(), "1:first\n2:next");
    EXPECT_EQ(ask("select Errors from LogInfo where RecordNum = 2"), "");
}

TEST_F(StoredLog, opensNothingThatCannotBeUpgraded) {
    make(kOldTable);
    {
        FailingDisk disk;
        disk.watch([](DiskAction, int) { return true; });
        EXPECT_FALSE(openLog());
        EXPECT_TRUE(saidNothing());
        EXPECT_NO_THROW(closeLog());
    }
    EXPECT_EQ(askWhole("select count(*) from pragma_table_info('LogInfo')"), "5");
    EXPECT_TRUE(openLog());
}

} // namespace cvlog::store::testbed
