// The history over real files: what it does to them, and what becomes of it when others work on them. The
// command-line program reads the file after every scenario and agrees.

#include "tests/store/history_files.h"

#include <filesystem>

namespace cvlog::store {
namespace {

using testbed::HistoryFiles;
using testbed::kModernTable;
using testbed::kOldTable;
using testbed::rowNames;
using testbed::StockDatabase;

constexpr char kTableWithKey[] =
    "create table LogInfo (Id integer primary key, MethodName text, ObjectName text, "
    "ObjectType text, LogMessage text, ReturnMessage integer)";

class HistoryTables : public HistoryFiles, public ::testing::WithParamInterface<const char*> {};

TEST_P(HistoryTables, ShowRecordsDeleteThemAndNeverUseANumberTwice) {
    makeTwoSessions(GetParam());
    EXPECT_EQ(shown(), "1 2 S 3");
    inHistory([&](FrmLogHistory& window) { removeRows(window, {1, 4}); });
    EXPECT_EQ(shown(), "2 S");
    addEntry(u"d");
    EXPECT_EQ(shown(), "2 S 4");
    inHistory([&](FrmLogHistory& window) {
        ClearLogHistory(globals_, window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S");
    });
    addEntry(u"e");
    EXPECT_EQ(shown(), "S 5") << "a new number is above the session's start";
    closeLog();
    EXPECT_EQ(stored(), "5:e");
    ASSERT_TRUE(openLog());
    EXPECT_EQ(shown(), "5 S");
    closeLog();
}

INSTANTIATE_TEST_SUITE_P(Tables, HistoryTables, ::testing::Values(kModernTable, kOldTable, kTableWithKey));

TEST_F(HistoryFiles, DeletingAtTheSeparatorLeavesEveryRecord) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        removeRows(window, {3});
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 3");
    });
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFiles, ARecordThatAnotherProgramHoldsStaysAndItsRowGoes) {
    makeTwoSessions();
    StockDatabase other(native());
    ASSERT_TRUE(other.run("begin immediate"));
    inHistory([&](FrmLogHistory& window) {
        EXPECT_NE(tests::failureCode([&] { removeRows(window, {1, 2}); }), 0);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 S 3");
        ASSERT_TRUE(other.run("commit"));
        removeRows(window, {1});
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 3");
    });
    closeLog();
    EXPECT_EQ(stored(), "2:b\n3:c");
}

TEST_F(HistoryFiles, RecordsOfAnotherProgramComeWithTheNextLoad) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        StockDatabase other(native());
        ASSERT_TRUE(other.run("insert into LogInfo (LogMessage, ReturnMessage) values ('RC 7 other', 7)"));
        ASSERT_TRUE(other.run("delete from LogInfo where RecordNum = 1"));
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3");
        window.LoadHistory(globals_.store.LastRecordNum);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3 4");
        removeRows(window, {1});
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 3 4") << "a record that is gone already";
    });
    closeLog();
    EXPECT_EQ(ask("select count(*) from LogInfo"), "3");
}

TEST_F(HistoryFiles, ADatabaseThatTheHostClosesEndsItsCommands) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        automation::toObject(log_->get(u"LogDB"))->invoke(u"Close");
        EXPECT_NE(tests::failureCode([&] { removeRows(window, {1}); }), 0);
        EXPECT_NE(tests::failureCode([&] { ClearLogHistory(globals_, window); }), 0);
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
    });
    EXPECT_NE(inHistory([](FrmLogHistory&) { ADD_FAILURE() << "shown"; }), 0);
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFiles, AFileThatIsDeletedMeanwhileDoesNoHarm) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(native() + end);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3");
        base::ignoring([&] { removeRows(window, {1}); });
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 3");
        const bool cleared = base::ignoring([&] { ClearLogHistory(globals_, window); });
        EXPECT_EQ(rowNames(*window.lvHistory()), cleared ? "S" : "2 S 3");
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
    });
    EXPECT_FALSE(testbed::exists(native())) << "no new file has come";
    inHistory([](FrmLogHistory&) {});
    closeLog();
    EXPECT_FALSE(openLog());
    EXPECT_EQ(inHistory([](FrmLogHistory&) { ADD_FAILURE() << "shown"; }), automation::code::kObjectRequired);
    closeLog();
}

// Records of the same numbers there are others.
TEST_F(HistoryFiles, AFileThatComesInThePlaceOfTheirsIsNotTouched) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(native() + end);
        make(kModernTable);
        make("insert into LogInfo (LogMessage, ReturnMessage) values ('RC 7. x', 7), ('RC 7. y', 7), "
             "('RC 7. z', 7)");
        base::ignoring([&] { removeRows(window, {1, 2}); });
        base::ignoring([&] { ClearLogHistory(globals_, window); });
        EXPECT_EQ(stored(), "1:x\n2:y\n3:z");
    });
    base::ignoring([&] { closeLog(); });
    EXPECT_EQ(stored(), "1:x\n2:y\n3:z");
    ASSERT_TRUE(openLog());
    EXPECT_EQ(shown(), "1 2 3 S");
    closeLog();
}

// Another program writes and deletes while the history is open.
TEST_F(HistoryFiles, WhatAnotherProgramDidShowsWhenTheHistoryIsOpenedAgain) {
    makeTwoSessions();
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(testbed::askCommandLine(
                      native(),
                      "delete from LogInfo where RecordNum in (1, 3); update LogInfo set LogMessage = "
                      "'RC 7. changed' where RecordNum = 2; insert into LogInfo (LogMessage, "
                      "ReturnMessage) values ('RC 7. d', 0), ('RC 7. e', 1)"),
                  "");
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 3");
        EXPECT_TRUE(window.lvHistory()->row(2).text().toUtf8().ends_with("b"))
            << "as it was when it was opened";
        removeRows(window, {4});
    });
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 4 5");
        EXPECT_EQ(window.lvHistory()->row(1).text(), u"RC 7. changed");
        EXPECT_EQ(window.lvHistory()->row(4).smallIcon(), u"Suspect");
    });
    addEntry(u"f");
    EXPECT_EQ(shown(), "2 S 4 5 6") << "no number comes twice";
    closeLog();
    EXPECT_EQ(stored(), "2:changed\n4:d\n5:e\n6:f");
}

TEST_F(HistoryFiles, ValuesOfOtherTypesEndTheLoadWhereTheyStand) {
    makeTwoSessions();
    closeLog();
    const std::pair<const char*, const char*> cases[] = {
        {"LogMessage = x'00ff'", "1"},
        {"LogMessage = null", "1"},
        {"ReturnMessage = 'abc'", "1"},
        {"ReturnMessage = ' 1 '", "1 2 S 3"},
        {"ReturnMessage = 1.5", "1 2 S 3"},
        {"ReturnMessage = 99999999999", "1"},
        {"LogMessage = 42", "1 2 S 3"},
        {"ObjectName = null, ObjectType = null, Errors = null", "1 2 S 3"},
        {"LogMessage = zeroblob(3000000)", "1"},
    };
    for (const auto& [change, rows] : cases) {
        SCOPED_TRACE(change);
        make("create temp table kept as select * from LogInfo where RecordNum = 2; update LogInfo set " +
             std::string(change) +
             " where RecordNum = 2; create table if not exists Saved as select * from kept");
        ASSERT_TRUE(openLog());
        globals_.store.LastRecordNum = 2;
        EXPECT_EQ(shown(), rows);
        closeLog();
        make("delete from LogInfo where RecordNum = 2; insert into LogInfo select * from Saved");
    }
}

TEST_F(HistoryFiles, ALongTextIsShownWhole) {
    makeTwoSessions();
    make("update LogInfo set LogMessage = 'begin' || replace(hex(zeroblob(500000)), '0', 'm') || 'end' "
         "where RecordNum = 2");
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(window.lvHistory()->row(2).text().size(), 1'000'008U);
        EXPECT_TRUE(window.lvHistory()->row(2).text().toUtf8().ends_with("mend"));
    });
    closeLog();
}

TEST_F(HistoryFiles, ALogWhoseNumbersAreUsedUpIsStillShown) {
    makeTwoSessions();
    make("insert into LogInfo (RecordNum, LogMessage, ReturnMessage) values (2147483647, 'RC 7 last', 7)");
    addEntry(u"one too many");
    EXPECT_EQ(shown(), "1 2 S 3 2147483647");
    inHistory([&](FrmLogHistory& window) { removeRows(window, {5}); });
    closeLog();
    EXPECT_EQ(stored(), "1:a\n2:b\n3:c");
}

TEST_F(HistoryFiles, NumbersOfAForeignFileMayBeNegativeOrDouble) {
    make("create table LogInfo (RecordNum integer, MethodName text, ObjectName text, ObjectType text, "
         "LogMessage text, ReturnMessage integer, Errors Text(254))");
    make("insert into LogInfo (RecordNum, LogMessage, ReturnMessage) values (-5, 'RC 7. x', 7), (2, 'RC 7. "
         "y', "
         "7), "
         "(2, 'RC 7. z', 7)");
    ASSERT_TRUE(openLog());
    EXPECT_EQ(shown(), "2 2 S");
    inHistory([&](FrmLogHistory& window) {
        removeRows(window, {1});
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S");
    });
    closeLog();
    EXPECT_EQ(ask("select count(*) from LogInfo"), "1");
}

} // namespace
} // namespace cvlog::store
