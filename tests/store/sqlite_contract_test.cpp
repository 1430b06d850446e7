#include "store/engine_selection.h"
#include "store/sqlite_engine.h"
#include "tests/store/engine_contract.h"

namespace cvlog::store::testing {

namespace {

auto fileWithEncoding(const std::string& encoding) {
    return [encoding](const std::string& path) {
        StockDatabase stock(path);
        stock.run("pragma encoding = '" + encoding + "'");
        stock.run("create table Made (x); drop table Made;");
    };
}

std::unique_ptr<Engine> engineForEveryFile(ports::FileSystem& files) { return makeLogEngine(files); }

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Sqlite, EngineContract,
    ::testing::Values(EngineUnderTest{"Utf8", makeSqliteEngine, fileWithEncoding("UTF-8")},
                      EngineUnderTest{"Utf16le", makeSqliteEngine, fileWithEncoding("UTF-16le")},
                      EngineUnderTest{"Utf16be", makeSqliteEngine, fileWithEncoding("UTF-16be")},
                      EngineUnderTest{"Selected", engineForEveryFile, fileWithEncoding("UTF-8")}),
    [](const ::testing::TestParamInfo<EngineUnderTest>& tested) { return tested.param.name; });

} // namespace cvlog::store::testing
