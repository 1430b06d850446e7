#include "automation/object.h"
#include "platform/headless/headless_objects.h"
#include "store/engine_selection.h"
#include "store/sqlite_engine.h"
#include "tests/store/engine_contract.h"

namespace cvlog::store::testbed {

namespace {

class SqliteSource : public EngineSource {
public:
    explicit SqliteSource(std::string encoding) : encoding_(std::move(encoding)) {}

    std::unique_ptr<Engine> makeEngine(ports::FileSystem& files) override { return makeSqliteEngine(files); }
    void makeEmptyFile(const TestFolder& folder, std::u16string_view name) override {
        StockDatabase stock(folder.native(name));
        stock.run("pragma encoding = '" + encoding_ + "'");
        stock.run("create table Made (x); drop table Made;");
    }
    void makeTableWithDefaults(Database& database) override {
        database.execute(
            u"create table T (RecordNum Counter, A Text(10) default 'none', B Integer default 3)");
    }

private:
    std::string encoding_;
};

class SelectedSource final : public SqliteSource {
public:
    SelectedSource() : SqliteSource("UTF-8") {}

    std::unique_ptr<Engine> makeEngine(ports::FileSystem& files) override {
        return makeLogEngine(files, nothingInstalled_);
    }

private:
    platform::headless::CallGate gate_;
    platform::headless::HeadlessObjects nothingInstalled_{gate_};
};

EngineUnderTest withEncoding(const char* name, const char* encoding) {
    return {name, [encoding] { return std::make_unique<SqliteSource>(encoding); }, true};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Sqlite, EngineContract,
    ::testing::Values(withEncoding("Utf8", "UTF-8"), withEncoding("Utf16le", "UTF-16le"),
                      withEncoding("Utf16be", "UTF-16be"),
                      EngineUnderTest{"Selected", [] { return std::make_unique<SelectedSource>(); }, true}),
    [](const ::testing::TestParamInfo<EngineUnderTest>& tested) { return tested.param.name; });

class SqliteContractOnly : public EngineContract {};

TEST_P(SqliteContractOnly, theTableOfItsOwnIsHidden) {
    database_->execute(kAddErrors);
    database_->allowZeroLength(u"LogInfo", u"Errors");
    const auto tables = toObject(database_->automationObject()->get(u"TableDefs"));
    EXPECT_EQ(tables->get(u"Count"), automation::Value(1));
}

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteContractOnly, ::testing::Values(withEncoding("Utf8", "UTF-8")),
                         [](const ::testing::TestParamInfo<EngineUnderTest>& tested) {
                             return tested.param.name;
                         });

} // namespace cvlog::store::testbed
