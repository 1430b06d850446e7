#include "tests/store/stored_log.h"

// The whole way from an entry to the file and back, over files in the states that a project can leave them in.

namespace cvlog::store::testbed {

namespace {

struct Made {
    const char* name;
    const char* sql;
};

void PrintTo(const Made& made, std::ostream* out) { *out << made.name; }

class MadeFile : public StoredLog, public ::testing::WithParamInterface<Made> {};

} // namespace

TEST_P(MadeFile, isUpgradedAndTakesEveryEntry) {
    make(GetParam().sql);
    const int before = std::stoi(ask("select count(*) from LogInfo"));
    ASSERT_TRUE(openLog());
    EXPECT_EQ(globals_.store.LastRecordNum, before);
    addEntry(u"one", u"e.errors");
    addEntry(u"two");
    closeLog();
    EXPECT_EQ(
        askWhole("select MethodName || '|' || ObjectName || '|' || ObjectType || '|' || LogMessage || '|' "
                 "|| ReturnMessage || '|' || Errors from LogInfo where RecordNum = " +
                 std::to_string(before + 1)),
        "Compile|PAYROLL|PROG|2024-01-02 09:05:07 Compile applied to Payroll program (Program) - RC 7. "
        "one|7|e.errors");
    EXPECT_EQ(ask("select Errors from LogInfo order by RecordNum desc limit 1"), "") << "empty, not missing";
    EXPECT_EQ(ask("select count(*) from LogInfo"), std::to_string(before + 2));
    EXPECT_EQ(ask("select min(RecordNum) || '-' || max(RecordNum) from LogInfo"),
              "1-" + std::to_string(before + 2));
    const std::string schema = ask("select sql from sqlite_master");
    ASSERT_TRUE(openLog());
    EXPECT_EQ(globals_.store.LastRecordNum, before + 2);
    closeLog();
    EXPECT_EQ(ask("select sql from sqlite_master"), schema) << "once is enough";
}

INSTANTIATE_TEST_SUITE_P(
    Sqlite, MadeFile,
    ::testing::Values(
        Made{"Modern", kModernTable}, Made{"WithoutNumbersAndErrors", kOldTable},
        Made{"WithRows",
             "create table LogInfo (MethodName Text, ObjectName Text, ObjectType Text, LogMessage "
             "Text, ReturnMessage Integer); insert into LogInfo (LogMessage) values ('a'), ('b'), "
             "('c')"},
        Made{"WithAKey", "create table LogInfo (Id integer primary key, MethodName Text, ObjectName Text, "
                         "ObjectType Text, LogMessage Text, ReturnMessage Integer); insert into LogInfo "
                         "(LogMessage) values ('a'), ('b')"},
        Made{"WithoutErrors",
             "create table LogInfo (RecordNum integer primary key, MethodName Text, ObjectName "
             "Text, ObjectType Text, LogMessage Text, ReturnMessage Integer); insert into "
             "LogInfo (LogMessage) values ('a')"},
        Made{"Utf16", "pragma encoding = 'UTF-16le'; create table LogInfo (MethodName Text, ObjectName Text, "
                      "ObjectType Text, LogMessage Text, ReturnMessage Integer)"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(StoredLog, makesNoFileWhereThereIsNone) {
    EXPECT_FALSE(openLog());
    EXPECT_FALSE(exists(native()));
    EXPECT_TRUE(saidNothing());
    closeLog();
    EXPECT_FALSE(exists(native()));
}

TEST_F(StoredLog, makesNoTableWhereThereIsNone) {
    make("create table Other (A)");
    EXPECT_FALSE(openLog());
    EXPECT_TRUE(saidNothing());
    EXPECT_EQ(globals_.store.CurrentLog, nullptr);
    EXPECT_NE(globals_.store.LogDatabase, nullptr);
    closeLog();
    EXPECT_EQ(askWhole("select name from sqlite_master"), "Other");
}

TEST_F(StoredLog, opensNothingThatIsNoDatabase) {
    make(std::string(kModernTable) + "; insert into LogInfo (LogMessage) values (zeroblob(20000))");
    const std::string whole = readWhole(native());
    for (const std::string& bytes : {std::string(), std::string("x"), std::string(5000, '\0'),
                                     std::string("SQLite format 3"), whole.substr(0, whole.size() / 2),
                                     whole.substr(0, 100), std::string("SQLite format 2\0", 16) + whole}) {
        writeWhole(native(), bytes);
        EXPECT_FALSE(openLog()) << bytes.size();
        EXPECT_TRUE(saidNothing());
        EXPECT_EQ(globals_.store.CurrentLog, nullptr);
        closeLog();
        EXPECT_EQ(readWhole(native()), bytes) << "it is left as it was";
    }
}

TEST_F(StoredLog, opensNothingThatAnotherProgramHoldsAlone) {
    make(kModernTable);
    StockDatabase other(native());
    ASSERT_TRUE(
        other.run("pragma locking_mode = exclusive; begin exclusive; insert into LogInfo default values"));
    EXPECT_FALSE(openLog());
    EXPECT_TRUE(saidNothing());
    closeLog();
    ASSERT_TRUE(other.run("rollback; pragma locking_mode = normal; select * from LogInfo"));
    EXPECT_TRUE(openLog());
}

TEST_F(StoredLog, keepsTheMarkOfItsOpeningAndUsesNoNumberTwice) {
    make(kOldTable);
    ASSERT_TRUE(openLog());
    for (int i = 0; i < 3; ++i) addEntry(u"x");
    executeAsHost(u"delete from LogInfo");
    EXPECT_EQ(globals_.store.LastRecordNum, 0);
    closeLog();
    ASSERT_TRUE(openLog());
    EXPECT_EQ(globals_.store.LastRecordNum, 0) << "an empty table";
    addEntry(u"y");
    closeLog();
    EXPECT_EQ(stored(), "4:y");
}

TEST_F(StoredLog, isAsGoodWhenItIsOpenedAgainWithoutClosing) {
    make(kOldTable);
    ASSERT_TRUE(openLog());
    addEntry(u"a");
    const int icons = globals_.frmLogResources->ilLog->count();
    ASSERT_TRUE(openLog());
    EXPECT_EQ(globals_.store.LastRecordNum, 1);
    EXPECT_EQ(globals_.frmLogResources->ilLog->count(), icons);
    addEntry(u"b");
    closeLog();
    closeLog();
    EXPECT_FALSE(exists(native() + "-wal")) << "the last connection is closed";
    EXPECT_EQ(stored(), "1:a\n2:b");
}

TEST_F(StoredLog, isSharedWithAnotherProgramThatWrites) {
    make(kOldTable);
    ASSERT_TRUE(openLog());
    StockDatabase other(native());
    for (int i = 0; i < 3; ++i) {
        addEntry(u"ours");
        ASSERT_TRUE(other.run("insert into LogInfo (LogMessage) values ('RC 7. theirs')"));
    }
    closeLog();
    EXPECT_EQ(stored(), "1:ours\n2:theirs\n3:ours\n4:theirs\n5:ours\n6:theirs");
}

} // namespace cvlog::store::testbed
