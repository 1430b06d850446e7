// The history over a real file that others write, lock or close while it loads and while it is open, and over a full
// disk. The command-line program reads the file after every scenario and agrees.

#include "tests/store/failing_disk.h"
#include "tests/store/history_files.h"

#include <filesystem>

namespace cvlog::store {
namespace {

using testbed::DiskAction;
using testbed::FailingDisk;
using testbed::kModernTable;
using testbed::rowNames;
using testbed::StockDatabase;

class HistoryFileFaults : public testbed::HistoryFiles {
protected:
    std::string shownNumbers() { return ask("select ifnull(group_concat(RecordNum, ' '), '') from LogInfo"); }
    void removeCompanions() {
        for (const char* end : {"-wal", "-shm"}) std::filesystem::remove(native() + end);
    }

    /// Opens the history of a new file again and again, each time with the disk failing one write later, once or for
    /// good, until none is left to fail.
    template <class InHistory, class Afterwards>
    void atEachFailure(InHistory act, Afterwards afterwards) {
        for (const bool forGood : {false, true})
            for (int failing = 1;; ++failing) {
                SCOPED_TRACE(failing);
                removeCompanions();
                std::filesystem::remove(native());
                FailingDisk disk;
                makeTwoSessions();
                bool failed = false;
                inHistory([&](FrmLogHistory& window) {
                    disk.watch([&](DiskAction, int number) {
                        failed = failed || number == failing;
                        return number == failing || (forGood && number > failing);
                    });
                    act(window, disk);
                });
                closeLog();
                afterwards();
                if (!failed) break;
                ASSERT_LT(failing, 200);
            }
    }
};

TEST_F(HistoryFileFaults, AnotherProcessMayWriteWhileItLoads) {
    makeTwoSessions();
    atRun(1, [&] {
        EXPECT_EQ(testbed::askCommandLine(native(),
                                          "delete from LogInfo where RecordNum = 2; insert into LogInfo "
                                          "(LogMessage, ReturnMessage) values ('RC 7 d', 7)"),
                  "");
    });
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3") << "the records as they were";
        window.LoadHistory(globals_.store.LastRecordNum);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3 4");
        EXPECT_EQ(testbed::askCommandLine(native(), "delete from LogInfo where RecordNum = 4"), "");
        removeRows(window, {5, 2});
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 S 3") << "both records were gone already";
    });
    closeLog();
    EXPECT_EQ(stored(), "1:a\n3:c");
}

TEST_F(HistoryFileFaults, EntriesThatComeWhileItLoadsComeWithTheNextLoad) {
    makeTwoSessions();
    for (const int run : {1, 2, 3}) {
        SCOPED_TRACE(run);
        atRun(run, [&] { addEntry(u"meanwhile"); });
        std::string before;
        inHistory([&](FrmLogHistory& window) {
            before = rowNames(*window.lvHistory());
            window.LoadHistory(globals_.store.LastRecordNum);
            EXPECT_EQ(rowNames(*window.lvHistory()), before + " " + std::to_string(run + 3));
        });
    }
    closeLog();
    EXPECT_EQ(ask("select count(*) from LogInfo"), "6");
}

TEST_F(HistoryFileFaults, RecordsThatTheHostDeletesWhileItLoadsAreShown) {
    makeTwoSessions();
    atRun(1, [&] { executeAsHost(u"delete from LogInfo"); });
    EXPECT_EQ(shown(), "1 2 S 3");
    EXPECT_EQ(shown(), "S");
    closeLog();
}

TEST_F(HistoryFileFaults, ADatabaseThatTheHostClosesWhileItLoadsLeavesTheRowsUpToThere) {
    makeTwoSessions();
    for (int run = 1; run <= 3; ++run) {
        SCOPED_TRACE(run);
        atRun(run, [&] { automation::toObject(log_->get(u"LogDB"))->invoke(u"Close"); });
        inHistory([&](FrmLogHistory& window) {
            const bool hasRead = run == 3; // the rows of all records
            EXPECT_EQ(rowNames(*window.lvHistory()), hasRead ? "1 2 S 3" : "1 2 S");
            EXPECT_EQ(window.progress().LastLoaded, hasRead ? 3 : 0);
        });
        closeLog();
        ASSERT_TRUE(openLog());
        globals_.store.LastRecordNum = 2;
    }
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFileFaults, ALogThatClosesWhileItLoadsTakesItAlong) {
    makeTwoSessions();
    for (int run = 1; run <= 3; ++run) {
        SCOPED_TRACE(run);
        atRun(run, [&] { closeLog(); });
        EXPECT_EQ(inHistory([](FrmLogHistory&) { ADD_FAILURE() << "shown"; }), 0);
        ASSERT_TRUE(openLog());
        globals_.store.LastRecordNum = 2;
    }
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFileFaults, RecordsOfAFileThatAnotherProgramLocksAreShown) {
    makeTwoSessions();
    StockDatabase other(native());
    ASSERT_TRUE(other.run("begin exclusive; delete from LogInfo"));
    EXPECT_EQ(shown(), "1 2 S 3");
    inHistory([&](FrmLogHistory& window) {
        EXPECT_NE(tests::failureCode([&] { ClearLogHistory(globals_, window); }), 0);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3");
    });
    ASSERT_TRUE(other.run("rollback"));
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFileFaults, RecordsOfAReadOnlyDatabaseAreShownAndStay) {
    makeTwoSessions();
    executeAsHost(u"pragma query_only = on"); // what a read-only file answers, whoever runs the test
    inHistory([&](FrmLogHistory& window) {
        EXPECT_NE(tests::failureCode([&] { ClearLogHistory(globals_, window); }), 0);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3");
        EXPECT_NE(tests::failureCode([&] { removeRows(window, {1, 2}); }), 0);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 S 3") << "the last of them goes, its record stays";
        EXPECT_TRUE(window.lvHistory()->isSelected(1)) << "the one above is untouched";
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        executeAsHost(u"pragma query_only = off");
        DeleteHistoryRecords(globals_, window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 3");
    });
    EXPECT_EQ(shown(), "2 S 3") << "the record that stayed is there again";
    closeLog();
    EXPECT_EQ(stored(), "2:b\n3:c");
}

TEST_F(HistoryFileFaults, AFullDiskKeepsTheRecordsAndAllGoesOnWhenThereIsRoom) {
    FailingDisk disk;
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        disk.watch([](DiskAction, int) { return true; });
        EXPECT_NE(tests::failureCode([&] { removeRows(window, {1}); }), 0);
        EXPECT_NE(tests::failureCode([&] { ClearLogHistory(globals_, window); }), 0);
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 3");
        EXPECT_GT(disk.changes(), 0);
        disk.watch(nullptr);
        removeRows(window, {1});
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 3");
    });
    EXPECT_EQ(shown(), "1 S 3");
    closeLog();
    EXPECT_EQ(stored(), "1:a\n3:c");
}

TEST_F(HistoryFileFaults, ADiskThatFillsUpStopsADeletionAtOneRecordAndTheNextGoesOn) {
    FailingDisk disk;
    makeTwoSessions();
    addEntry(u"d");
    addEntry(u"e");
    bool isFull = false;
    disk.watch([&](DiskAction, int) { return isFull; });
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3 4 5");
        int removed = 0;
        platform_.gate.watcher = [&](std::string_view name) {
            if (name == "List.rowsRemoved") isFull = ++removed == 2;
        };
        EXPECT_NE(tests::failureCode([&] { removeRows(window, {1, 2, 4, 6}); }), 0);
        platform_.gate.watcher = nullptr;
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 4") << "5 and 3 are gone, 3 from the list alone";
        EXPECT_TRUE(window.lvHistory()->isSelected(1) && window.lvHistory()->isSelected(2));
        EXPECT_EQ(window.lvHistory()->selectedCount(), 2);
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        EXPECT_EQ(testbed::askCommandLine(native(), "select RecordNum from LogInfo order by RecordNum"),
                  "1\n2\n3\n4");
        isFull = false;
        DeleteHistoryRecords(globals_, window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 4");
        EXPECT_EQ(globals_.store.LastRecordNum, 2);
    });
    EXPECT_EQ(shown(), "S 3 4");
    disk.watch(nullptr);
    closeLog();
    EXPECT_EQ(stored(), "3:c\n4:d");
}

TEST_F(HistoryFileFaults, ClearingThatFailsAtAnyWriteTakesAllRecordsOrNone) {
    atEachFailure(
        [this](FrmLogHistory& window, FailingDisk& disk) {
            const bool done = base::ignoring([&] { ClearLogHistory(globals_, window); });
            disk.watch(nullptr);
            EXPECT_EQ(rowNames(*window.lvHistory()), done ? "S" : "1 2 S 3");
            EXPECT_EQ(shownNumbers(), done ? "" : "1 2 3");
            EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
            ClearLogHistory(globals_, window);
            EXPECT_EQ(rowNames(*window.lvHistory()), "S");
        },
        [this] { EXPECT_EQ(stored(), ""); });
}

TEST_F(HistoryFileFaults, ADeletionThatFailsAtAnyWriteTakesARecordWhollyOrNotAtAll) {
    atEachFailure(
        [this](FrmLogHistory& window, FailingDisk& disk) {
            base::ignoring([&] { removeRows(window, {1, 2, 4}); });
            disk.watch(nullptr);
            const std::string left = rowNames(*window.lvHistory());
            // One row goes before its record; the next load of the file tells which.
            const std::string stayed = shownNumbers();
            EXPECT_TRUE(left == "S"     ? stayed.empty() || stayed == "1"
                        : left == "1 S" ? stayed == "1" || stayed == "1 2"
                                        : left == "1 2 S" && (stayed == "1 2" || stayed == "1 2 3"))
                << left << " | " << stayed;
        },
        [this] { EXPECT_EQ(askWhole("pragma integrity_check"), "ok"); });
}

} // namespace
} // namespace cvlog::store
