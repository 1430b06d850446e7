#include "automation/error.h"
#include "tests/store/engine_contract.h"

// The engine contract: opening, closing, failing, and the object that the host sees.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::ObjectRef;
using automation::Value;

TEST_P(EngineContract, missingTablesAndColumnsFail) {
    EXPECT_THROW(database_->requireColumn(u"LogInfo", u"RecordNum"), AutomationError);
    EXPECT_THROW(database_->requireColumn(u"Missing", u"RecordNum"), AutomationError);
    EXPECT_THROW(database_->allowsZeroLength(u"LogInfo", u"Errors"), AutomationError);
    EXPECT_THROW(database_->allowZeroLength(u"Missing", u"Errors"), AutomationError);
    EXPECT_THROW(database_->openTable(u"Missing"), AutomationError);
    EXPECT_THROW(database_->openSnapshot(u"select * from Missing"), AutomationError);
    EXPECT_THROW(database_->execute(u"delete from Missing"), AutomationError);
    EXPECT_NO_THROW(database_->requireColumn(u"loginfo", u"methodname"));
}

TEST_P(EngineContract, aStatementOfTheWrongKindIsRefused) {
    database_->execute(kAddRecordNum);
    append(u"a");
    EXPECT_THROW(database_->execute(u"select * from LogInfo"), AutomationError);
    EXPECT_THROW(database_->openSnapshot(u"delete from LogInfo"), AutomationError);
    EXPECT_THROW(database_->execute(u""), AutomationError);
    EXPECT_THROW(database_->execute(u"nonsense"), AutomationError);
    EXPECT_THROW(database_->execute(std::u16string(u"delete from LogInfo\0 where RecordNum = 0", 40)),
                 AutomationError);
    EXPECT_THROW(database_->execute(u"delete from LogInfo; delete from LogInfo"), AutomationError);
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"a"}));
}

TEST_P(EngineContract, afterCloseEverythingFails) {
    database_->execute(kAddRecordNum);
    append(u"a");
    const auto table = database_->openTable(u"LogInfo");
    const auto rows = database_->openSnapshot(u"select * from LogInfo");
    const ObjectRef object = database_->automationObject();
    table->addNew();
    database_->close();
    EXPECT_THROW(table->assign(u"LogMessage", u"x"), AutomationError);
    EXPECT_THROW(table->update(), AutomationError);
    EXPECT_THROW(table->addNew(), AutomationError);
    EXPECT_THROW(rows->value(u"LogMessage"), AutomationError);
    EXPECT_THROW(rows->moveNext(), AutomationError);
    EXPECT_THROW(database_->execute(u"delete from LogInfo"), AutomationError);
    EXPECT_THROW(database_->openSnapshot(u"select * from LogInfo"), AutomationError);
    EXPECT_THROW(database_->openTable(u"LogInfo"), AutomationError);
    EXPECT_THROW(database_->requireColumn(u"LogInfo", u"RecordNum"), AutomationError);
    EXPECT_THROW(database_->close(), AutomationError);
    EXPECT_THROW(object->get(u"Name"), AutomationError);
    EXPECT_THROW(object->invoke(u"Execute", u"delete from LogInfo"), AutomationError);
    database_ = open();
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"a"}));
}

TEST_P(EngineContract, rowSetsOutliveADroppedDatabaseAsClosedOnes) {
    const auto rows = database_->openTable(u"LogInfo");
    const auto snapshot = database_->openSnapshot(u"select * from LogInfo");
    database_.reset();
    EXPECT_THROW(rows->addNew(), AutomationError);
    EXPECT_THROW(snapshot->atEnd(), AutomationError);
}

TEST_P(EngineContract, theSameFileOpenTwiceIsOneFile) {
    database_->execute(kAddRecordNum);
    const auto second = open();
    append(u"from the first");
    const auto rows = second->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"LogMessage", u"from the second");
    rows->update();
    EXPECT_EQ(column(u"RecordNum"), (std::vector<Value>{1, 2}));
    EXPECT_EQ(column(u"LogMessage").at(1), Value(u"from the second"));
}

TEST_P(EngineContract, theAutomationObjectWorksOnTheSameDatabase) {
    const ObjectRef object = database_->automationObject();
    EXPECT_TRUE(sameObject(object, database_->automationObject()));
    object->invoke(u"Execute", kAddRecordNum);
    object->invoke(u"Execute", kAddErrors, 128);
    EXPECT_EQ(object->get(u"Name"), Value(folder_.path(u"PrjData.mdb")));

    const ObjectRef rows = toObject(object->invoke(u"OpenRecordset", u"LogInfo"));
    rows->invoke(u"AddNew");
    toObject(rows->invoke(u"Fields", u"LogMessage"))->put(u"Value", u"by the host");
    rows->invoke(u"Update");
    EXPECT_EQ(column(u"LogMessage"), (std::vector<Value>{u"by the host"}));

    const ObjectRef read = toObject(object->invoke(u"OpenRecordset", kHighWater));
    EXPECT_EQ(read->get(u"EOF"), Value(false));
    EXPECT_EQ(toObject(read->get(u"Fields"))->get(u"Count"), Value(1));
    const ObjectRef field = toObject(toObject(read->get(u"Fields"))->invoke(u"Item", 0));
    EXPECT_EQ(field->get(u"Name"), Value(u"RecordNum"));
    EXPECT_EQ(field->get(u""), Value(1));
    read->invoke(u"MoveNext");
    EXPECT_EQ(read->get(u"EOF"), Value(true));
    read->invoke(u"Close");
    EXPECT_THROW(read->get(u"EOF"), AutomationError);
    EXPECT_THROW(field->get(u"Value"), AutomationError);
}

TEST_P(EngineContract, theAutomationObjectDescribesTheTables) {
    database_->execute(kAddErrors);
    const ObjectRef object = database_->automationObject();
    const ObjectRef tables = toObject(object->get(u"TableDefs"));
    const Value count = tables->get(u"Count"); // an engine may show tables of its own as well
    const ObjectRef table = toObject(tables->invoke(u"", u"loginfo"));
    EXPECT_EQ(table->get(u"Name"), Value(u"LogInfo"));
    EXPECT_EQ(toObject(table->get(u"Fields"))->get(u"Count"), Value(6));
    const ObjectRef errors = toObject(table->invoke(u"Fields", u"errors"));
    EXPECT_EQ(errors->get(u"AllowZeroLength"), Value(false));
    errors->put(u"AllowZeroLength", true);
    EXPECT_TRUE(database_->allowsZeroLength(u"LogInfo", u"Errors"));
    EXPECT_EQ(tables->get(u"Count"), count);
    EXPECT_THROW(tables->invoke(u"Item", u"Missing"), AutomationError);
    EXPECT_THROW(tables->invoke(u"Item", count), AutomationError);
    EXPECT_THROW(tables->invoke(u"Item", -1), AutomationError);
    EXPECT_THROW(object->get(u"Unknown"), AutomationError);
}

TEST_P(EngineContract, theHostCanCloseTheDatabase) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openTable(u"LogInfo");
    database_->automationObject()->invoke(u"Close");
    EXPECT_THROW(rows->addNew(), AutomationError);
    EXPECT_THROW(database_->close(), AutomationError);
}

TEST_P(EngineContract, missingForeignAndEmptyFilesFailAndNothingIsMade) {
    EXPECT_THROW(engine_->open(folder_.path(u"Missing.mdb")), AutomationError);
    EXPECT_FALSE(exists(folder_.native(u"Missing.mdb")));
    EXPECT_THROW(engine_->open(folder_.path(u"no\\such\\Missing.mdb")), AutomationError);
    EXPECT_THROW(engine_->open(folder_.path(u"")), AutomationError);
    EXPECT_THROW(engine_->open(u""), AutomationError);
    writeWhole(folder_.native(u"Empty.mdb"), "");
    EXPECT_THROW(engine_->open(folder_.path(u"Empty.mdb")), AutomationError);
    EXPECT_EQ(readWhole(folder_.native(u"Empty.mdb")), "");
    writeWhole(folder_.native(u"Foreign.mdb"), std::string(5000, 'x'));
    EXPECT_THROW(engine_->open(folder_.path(u"Foreign.mdb")), AutomationError);
    EXPECT_EQ(readWhole(folder_.native(u"Foreign.mdb")), std::string(5000, 'x'));
}

TEST_P(EngineContract, aTruncatedFileFailsOrReadsWhole) {
    database_->execute(kAddRecordNum);
    for (int i = 0; i < 100; ++i) append(std::u16string(200, u'm'));
    database_->close();
    const std::string whole = readWhole(folder_.native(u"PrjData.mdb"));
    for (const std::size_t size : {std::size_t(1), std::size_t(15), std::size_t(50), std::size_t(99),
                                   std::size_t(1024), whole.size() / 2, whole.size() - 1}) {
        writeWhole(folder_.native(u"Part.mdb"), whole.substr(0, size));
        EXPECT_THROW(engine_->open(folder_.path(u"Part.mdb")), AutomationError) << size;
    }
}

} // namespace cvlog::store::testbed
