#include "automation/object.h"
#include "store/dao_engine.h"
#include "store/engine_selection.h"
#include "tests/store/dao_files.h"
#include "tests/store/engine_contract.h"

namespace cvlog::store::testbed {

namespace {

using automation::ObjectRef;

class DaoSource : public EngineSource {
public:
    DaoSource() { machine_.installOld(); }

    std::unique_ptr<Engine> makeEngine(ports::FileSystem&) override {
        return makeDaoEngine(machine_.objects());
    }
    void makeEmptyFile(const TestFolder& folder, std::u16string_view name) override {
        machine_.makeFile(folder, name);
    }
    // Its language has no defaults.
    void makeTableWithDefaults(Database& database) override {
        database.execute(u"create table T (RecordNum Counter, A Text(10), B Integer)");
        const ObjectRef tables = toObject(database.automationObject()->get(u"TableDefs"));
        const ObjectRef table = toObject(tables->invoke(u"Item", u"T"));
        toObject(table->invoke(u"Fields", u"A"))->put(u"DefaultValue", u"'none'");
        toObject(table->invoke(u"Fields", u"B"))->put(u"DefaultValue", u"3");
    }

protected:
    tests::CallCounter calls_;
    DaoMachine machine_{calls_};
};

class SelectedDaoSource final : public DaoSource {
public:
    std::unique_ptr<Engine> makeEngine(ports::FileSystem& files) override {
        return makeLogEngine(files, machine_.objects());
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Dao, EngineContract,
    ::testing::Values(EngineUnderTest{"Direct", [] { return std::make_unique<DaoSource>(); }, false},
                      EngineUnderTest{"Selected", [] { return std::make_unique<SelectedDaoSource>(); },
                                      false}),
    [](const ::testing::TestParamInfo<EngineUnderTest>& tested) { return tested.param.name; });

} // namespace cvlog::store::testbed
