#include "automation/error.h"
#include "store/dao_engine.h"
#include "store/engine_error.h"
#include "tests/store/dao_files.h"
#include "tests/support/script_object.h"

#include <gtest/gtest.h>

// What is particular to driving DAO, against a double of its object model.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Null;
using automation::ObjectRef;
using automation::Value;
using tests::DaoDouble;

namespace {

class DaoEngineTest : public ::testing::Test {
protected:
    std::shared_ptr<Database> open() { return engine_->open(folder_.path(kFile)); }
    std::shared_ptr<Database> openWithTable() {
        machine_.installOld();
        machine_.makeFile(folder_, kFile);
        const auto database = open();
        database->execute(u"create table LogInfo (LogMessage LongText, Code Integer not null)");
        return database;
    }
    static void append(Recordset& rows, const char16_t* message) {
        rows.addNew();
        rows.assign(u"LogMessage", message);
        rows.assign(u"Code", 1);
        rows.update();
    }
    std::int32_t codeOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const AutomationError& error) {
            return error.code();
        }
        return 0;
    }
    std::int32_t openingFailure() {
        return codeOf([&] { open(); });
    }

    TestFolder folder_;
    tests::CallCounter calls_;
    DaoMachine machine_{calls_};
    std::unique_ptr<Engine> engine_ = makeDaoEngine(machine_.objects());
};

} // namespace

TEST_F(DaoEngineTest, withoutAnInstalledVersionNothingOpens) {
    machine_.makeFile(folder_, kFile);
    try {
        open();
        FAIL();
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.code(), errorCode(EngineError::UnknownFormat));
        EXPECT_EQ(error.description(), u"No engine for databases of this format is installed.");
    }
    machine_.installOld(); // while the log is loaded
    EXPECT_NO_THROW(open());
}

TEST_F(DaoEngineTest, theVersionIsMadeWithTheFirstOpeningAndKept) {
    machine_.installOld();
    machine_.installNew();
    machine_.makeFile(folder_, kFile);
    EXPECT_EQ(machine_.enginesMade(), 0);
    for (int i = 0; i < 3; ++i) open();
    EXPECT_EQ(machine_.enginesMade(), 1) << "the newer one was never needed";
    engine_.reset();
    EXPECT_EQ(machine_.dao().alive(), 0);
}

TEST_F(DaoEngineTest, theNewerVersionOpensWhatTheOlderDoesNotKnow) {
    machine_.makeFile(folder_, kFile, DaoDouble::Format::Ace);
    machine_.installOld();
    EXPECT_EQ(openingFailure(), errorCode(EngineError::UnknownFormat));
    machine_.installNew();
    EXPECT_NO_THROW(open());
    EXPECT_EQ(machine_.enginesMade(), 2);
}

TEST_F(DaoEngineTest, theNewerVersionAloneOpensBothFormats) {
    machine_.installNew();
    for (const auto format : {DaoDouble::Format::Jet, DaoDouble::Format::Ace}) {
        machine_.makeFile(folder_, kFile, format);
        EXPECT_NO_THROW(open());
    }
}

TEST_F(DaoEngineTest, aFileThatOneVersionCannotOpenNowIsNotTriedWithAnother) {
    machine_.installOld();
    machine_.installNew();
    EXPECT_EQ(openingFailure(), errorCode(EngineError::FileNotFound));
    EXPECT_EQ(machine_.enginesMade(), 1);
}

TEST_F(DaoEngineTest, aPathThatCouldMeanAnotherFileIsNotPassedOn) {
    machine_.installOld();
    EXPECT_THROW(engine_->open(u""), AutomationError);
    EXPECT_THROW(engine_->open(std::u16string(u"a\0b", 3)), AutomationError);
    EXPECT_EQ(calls_.count(), 0);
}

TEST_F(DaoEngineTest, whatWasAcknowledgedSurvivesTheProgram) {
    const auto database = openWithTable();
    append(*database->openTable(u"LogInfo"), u"kept");
    machine_.dao().crash();
    EXPECT_EQ(open()->openSnapshot(u"select * from LogInfo")->value(u"LogMessage"), Value(u"kept"));
}

TEST_F(DaoEngineTest, theDoubleLosesWhatIsNotWrittenAtOnce) {
    machine_.makeFile(folder_, kFile);
    const ObjectRef dao = machine_.dao().makeEngine(DaoDouble::Format::Jet);
    const ObjectRef database = toObject(dao->invoke(u"OpenDatabase", folder_.path(kFile)));
    database->invoke(u"Execute", u"create table T (A Integer)");
    machine_.dao().crash();
    EXPECT_FALSE(machine_.dao().file(folder_.path(kFile)).hasTable(u"T"));
    EXPECT_THROW(database->get(u"Name"), AutomationError);
}

TEST_F(DaoEngineTest, aVersionThatCannotWriteAtOnceIsNotUsed) {
    machine_.installOld();
    machine_.makeFile(folder_, kFile);
    calls_.insideCall = [](const std::string& name) {
        if (name == "DAO.DBEngine.SetOption") throw AutomationError(automation::code::kFailure);
    };
    EXPECT_THROW(open(), AutomationError);
    EXPECT_EQ(calls_.countOf("DAO.DBEngine.OpenDatabase"), 0);
    calls_.insideCall = nullptr;
    EXPECT_NO_THROW(open());
}

TEST_F(DaoEngineTest, theHostGetsDaosOwnDatabaseAndKeepsIt) {
    auto database = openWithTable();
    auto rows = database->openTable(u"LogInfo");
    const ObjectRef object = database->automationObject();
    calls_.restart();
    EXPECT_EQ(object->get(u"Name"), Value(folder_.path(kFile)));
    EXPECT_EQ(calls_.journal(), std::vector<std::string>{"DAO.Database.Name"});
    database.reset();
    engine_.reset();
    EXPECT_THROW(rows->addNew(), AutomationError) << "what we have opened ends with us";
    EXPECT_NO_THROW(object->invoke(u"Execute", u"alter table LogInfo add column More Integer"));
    EXPECT_EQ(machine_.dao().openDatabases(), 1);
}

TEST_F(DaoEngineTest, aDroppedDatabaseIsClosedByDaoWhenNobodyHoldsIt) {
    auto database = openWithTable();
    const auto rows = database->openTable(u"LogInfo");
    database.reset();
    EXPECT_EQ(machine_.dao().openDatabases(), 0);
    EXPECT_EQ(machine_.dao().alive(), 1) << "the engine";
}

TEST_F(DaoEngineTest, errorsReachTheCallerAsDaoGivesThem) {
    const auto database = openWithTable();
    EXPECT_EQ(codeOf([&] { database->openTable(u"Missing"); }), errorCode(EngineError::TableNotFound));
    EXPECT_EQ(codeOf([&] { database->requireColumn(u"LogInfo", u"Missing"); }),
              errorCode(EngineError::ItemNotFound));
    EXPECT_EQ(codeOf([&] { database->openTable(u"LogInfo")->assign(u"Code", 1); }),
              errorCode(EngineError::UpdateWithoutAddNew));
    EXPECT_EQ(codeOf([&] { database->openTable(u"LogInfo")->value(u"Code"); }),
              errorCode(EngineError::NoCurrentRecord));
    database->close();
    EXPECT_EQ(codeOf([&] { database->execute(u"delete from LogInfo"); }), errorCode(EngineError::Closed));
}

TEST_F(DaoEngineTest, collectionsThatDaoRemembersAreLookedAtAnew) {
    const auto database = openWithTable();
    const ObjectRef tables = toObject(database->automationObject()->get(u"TableDefs"));
    EXPECT_NO_THROW(database->requireColumn(u"LogInfo", u"Code"));
    const Value count = tables->get(u"Count");
    database->execute(u"create table Other (A Integer)");
    EXPECT_EQ(tables->get(u"Count"), count) << "as DAO does, the double shows what it showed";
    EXPECT_NO_THROW(database->requireColumn(u"Other", u"A"));
    database->execute(u"alter table Other add column B Integer");
    EXPECT_NO_THROW(database->requireColumn(u"Other", u"B"));
}

TEST_F(DaoEngineTest, aRefusedRowIsCancelledThere) {
    const auto database = openWithTable();
    const auto rows = database->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"LogMessage", u"without a code");
    EXPECT_EQ(codeOf([&] { rows->update(); }), errorCode(EngineError(3314)));
    EXPECT_EQ(calls_.countOf("DAO.Recordset.CancelUpdate"), 1);
    EXPECT_EQ(codeOf([&] { rows->update(); }), errorCode(EngineError::UpdateWithoutAddNew));
    calls_.restart();
    append(*rows, u"m");
    EXPECT_EQ(calls_.countOf("DAO.Recordset.CancelUpdate"), 0);
    EXPECT_EQ(machine_.dao().file(folder_.path(kFile)).table(u"LogInfo").rows.size(), 1u);
}

TEST_F(DaoEngineTest, aStatementThatCouldBeCutIsNotPassedOn) {
    const auto database = openWithTable();
    append(*database->openTable(u"LogInfo"), u"m");
    const std::u16string cut(u"delete from LogInfo\0 where Code = 0", 35);
    calls_.restart();
    EXPECT_EQ(codeOf([&] { database->execute(cut); }), errorCode(EngineError::Syntax));
    EXPECT_EQ(codeOf([&] { database->openSnapshot(cut); }), errorCode(EngineError::Syntax));
    EXPECT_EQ(calls_.count(), 0);
    database->automationObject()->invoke(u"Execute", cut); // what it would have done
    EXPECT_TRUE(machine_.dao().file(folder_.path(kFile)).table(u"LogInfo").rows.empty());
}

TEST_F(DaoEngineTest, onlyPlainValuesReachDao) {
    const auto database = openWithTable();
    const auto rows = database->openTable(u"LogInfo");
    const auto shared = std::make_shared<tests::ScriptObject>("Object", calls_);
    shared->set(u"", u"its default value");
    rows->addNew();
    EXPECT_THROW(rows->assign(u"LogMessage", automation::Missing{}), AutomationError);
    EXPECT_THROW(rows->assign(u"LogMessage", ObjectRef()), AutomationError);
    EXPECT_THROW(rows->assign(u"LogMessage", automation::ErrorCode{7}), AutomationError);
    rows->assign(u"LogMessage", ObjectRef(shared));
    EXPECT_EQ(rows->value(u"LogMessage"), Value(u"its default value"));
    rows->assign(u"LogMessage", automation::Empty{});
    EXPECT_EQ(rows->value(u"LogMessage"), Value(Null{}));
    EXPECT_EQ(codeOf([&] { rows->assign(u"Code", u"no number"); }), errorCode(EngineError::Conversion));
    EXPECT_EQ(codeOf([&] { rows->assign(u"LogMessage", u""); }), errorCode(EngineError::ZeroLength));
}

TEST_F(DaoEngineTest, aRowSetMayBeClosedTwice) {
    const auto rows = openWithTable()->openTable(u"LogInfo");
    EXPECT_THROW(rows->atEnd(), AutomationError) << "its database has gone";
    const auto database = open();
    const auto other = database->openTable(u"LogInfo");
    other->close();
    EXPECT_NO_THROW(other->close());
}

} // namespace cvlog::store::testbed
