#include "tests/store/engine_contract.h"

#include "automation/error.h"

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Null;
using automation::Value;

namespace {

constexpr char16_t kTableBeforeNumbers[] = u"create table LogInfo (MethodName Text(50), ObjectName Text(50), "
                                           u"ObjectType Text(50), LogMessage LongText, "
                                           u"ReturnMessage Integer)";

} // namespace

void EngineContract::SetUp() {
    source_ = GetParam().makeSource();
    source_->makeEmptyFile(folder_, u"PrjData.mdb");
    engine_ = source_->makeEngine(files_);
    database_ = open();
    database_->execute(kTableBeforeNumbers);
}

std::shared_ptr<Database> EngineContract::open() { return engine_->open(folder_.path(u"PrjData.mdb")); }

void EngineContract::reopen() {
    database_->close();
    database_ = open();
}

std::int32_t EngineContract::append(std::u16string_view message) {
    const auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"LogMessage", message);
    rows->update();
    rows->close();
    return toInt32(database_->openSnapshot(kHighWater)->value(u"RecordNum"));
}

std::vector<Value> EngineContract::column(std::u16string_view name) {
    std::vector<Value> values;
    const auto rows =
        database_->openSnapshot(u"select * from LogInfo where RecordNum > 0 order by RecordNum");
    Value again;
    for (; !rows->atEnd(); rows->moveNext()) {
        values.push_back(rows->value(name));
        rows->read(name, again);
        EXPECT_EQ(again, values.back()) << "read into memory that is used again";
    }
    return values;
}

TEST_P(EngineContract, counterNumbersTheRowsThatAreThereInTheirOrder) {
    const auto rows = database_->openTable(u"LogInfo");
    for (const char16_t* message : {u"first", u"second", u"third"}) {
        rows->addNew();
        rows->assign(u"LogMessage", message);
        rows->update();
    }
    rows->close();
    database_->execute(kAddRecordNum);
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"first", u"second", u"third"}));
    EXPECT_EQ(column(u"RecordNum"), (std::vector<Value>{1, 2, 3}));
    EXPECT_EQ(append(u"fourth"), 4);
}

TEST_P(EngineContract, counterNeverUsesANumberTwice) {
    database_->execute(kAddRecordNum);
    EXPECT_EQ(append(u"a"), 1);
    EXPECT_EQ(append(u"b"), 2);
    database_->execute(u"delete from LogInfo where RecordNum = 2");
    EXPECT_EQ(append(u"c"), 3);
    database_->execute(u"delete from LogInfo");
    reopen();
    EXPECT_EQ(append(u"d"), 4);
    database_->execute(u"delete from LogInfo where RecordNum <= 4");
    EXPECT_EQ(append(u"e"), 5);
}

TEST_P(EngineContract, deleteTakesOnlyTheRowsItNames) {
    database_->execute(kAddRecordNum);
    for (const char16_t* message : {u"a", u"b", u"c"}) append(message);
    database_->execute(u"delete from LogInfo where RecordNum <= 0");
    EXPECT_EQ(column(u"RecordNum").size(), 3u);
    database_->execute(u"delete from LogInfo where RecordNum = 2");
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"a", u"c"}));
}

TEST_P(EngineContract, anAddedColumnCannotBeAddedAgain) {
    database_->execute(kAddRecordNum);
    append(u"kept");
    EXPECT_THROW(database_->execute(kAddRecordNum), AutomationError);
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"kept"}));
    EXPECT_THROW(database_->execute(u"alter table Missing add column RecordNum Counter"), AutomationError);
}

TEST_P(EngineContract, statementsAreReadWhateverTheirCaseAndBlanks) {
    database_->execute(u"  ALTER\tTABLE loginfo\n ADD COLUMN recordnum COUNTER ;");
    EXPECT_EQ(append(u"a"), 1);
    database_->requireColumn(u"LOGINFO", u"RECORDNUM");
}

TEST_P(EngineContract, aTableIsMadeWithItsColumnTypes) {
    database_->execute(u"create table Notes (RecordNum Counter, Remark Text(3))");
    const auto rows = database_->openTable(u"Notes");
    for (int i = 0; i < 2; ++i) {
        rows->addNew();
        rows->assign(u"Remark", u"abc");
        EXPECT_THROW(rows->assign(u"Remark", u"abcd"), AutomationError);
        rows->update();
    }
    database_->execute(u"delete from Notes");
    rows->addNew();
    rows->update();
    EXPECT_EQ(database_->openSnapshot(u"select RecordNum from Notes")->value(u"RecordNum"), Value(3));
}

TEST_P(EngineContract, anUnfinishedRowIsForgotten) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"MethodName", u"stale");
    rows->addNew();
    rows->assign(u"LogMessage", u"fresh");
    rows->update();
    EXPECT_EQ(column(u"MethodName"), (std::vector<Value>{Null{}}));
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"fresh"}));
}

TEST_P(EngineContract, updateNeedsANewRow) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openTable(u"LogInfo");
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_THROW(rows->assign(u"LogMessage", u"x"), AutomationError);
    rows->addNew();
    rows->update();
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_EQ(column(u"RecordNum").size(), 1u);
}

TEST_P(EngineContract, aFailedUpdateDropsItsRowAndPoisonsNothing) {
    database_->execute(u"create table T (RecordNum Counter, A Integer not null, B Text(10))");
    const auto rows = database_->openTable(u"T");
    rows->addNew();
    rows->assign(u"B", u"lost");
    EXPECT_THROW(rows->update(), AutomationError);
    EXPECT_THROW(rows->update(), AutomationError);
    rows->addNew();
    rows->assign(u"A", 1);
    rows->update();
    const auto read = database_->openSnapshot(u"select * from T");
    EXPECT_EQ(read->value(u"B"), Value(Null{}));
    read->moveNext();
    EXPECT_TRUE(read->atEnd());
}

TEST_P(EngineContract, aSnapshotStaysAsItWasWhileRowsAreAppendedAndDeleted) {
    database_->execute(kAddRecordNum);
    for (const char16_t* message : {u"a", u"b", u"c"}) append(message);
    const auto rows =
        database_->openSnapshot(u"select * from LogInfo where RecordNum > 0 order by RecordNum");
    rows->moveNext();
    append(u"d");
    database_->execute(u"delete from LogInfo where RecordNum = 3");
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"b"));
    rows->moveNext();
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"c"));
    rows->moveNext();
    EXPECT_TRUE(rows->atEnd());
    EXPECT_THROW(rows->moveNext(), AutomationError);
    EXPECT_THROW(rows->value(u"LogMessage"), AutomationError);
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"a", u"b", u"d"}));
}

TEST_P(EngineContract, aTableInUseIsUpgradedOrLeftAsItIs) {
    const auto table = database_->openTable(u"LogInfo");
    table->addNew();
    table->assign(u"LogMessage", u"a");
    table->update();
    auto rows = database_->openSnapshot(u"select LogMessage from LogInfo");
    if (GetParam().changesTablesInUse) {
        database_->execute(kAddRecordNum);
    } else {
        EXPECT_THROW(database_->execute(kAddRecordNum), AutomationError);
        EXPECT_THROW(database_->requireColumn(u"LogInfo", u"RecordNum"), AutomationError);
    }
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"a"));
    table->addNew();
    table->assign(u"LogMessage", u"b");
    table->update();
    if (!GetParam().changesTablesInUse) {
        rows->close();
        table->close();
        database_->execute(kAddRecordNum);
    }
    EXPECT_EQ(column(u"RecordNum"), (std::vector<Value>{1, 2}));
}

TEST_P(EngineContract, anEmptyResultIsAtItsEnd) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openSnapshot(kHighWater);
    EXPECT_TRUE(rows->atEnd());
    EXPECT_THROW(rows->value(u"RecordNum"), AutomationError);
    EXPECT_THROW(rows->addNew(), AutomationError);
    rows->close();
    EXPECT_THROW(rows->atEnd(), AutomationError);
}

TEST_P(EngineContract, aTableCanBeReadForward) {
    database_->execute(kAddRecordNum);
    append(u"a");
    append(u"b");
    const auto rows = database_->openTable(u"LogInfo");
    std::vector<Value> messages;
    for (; !rows->atEnd(); rows->moveNext()) messages.push_back(rows->value(u"logmessage"));
    EXPECT_EQ(messages, (std::vector<Value>{u"a", u"b"}));
}

} // namespace cvlog::store::testbed
