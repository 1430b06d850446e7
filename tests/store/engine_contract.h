#pragma once

#include "store/engine.h"
#include "tests/store/store_files.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace cvlog::store::testbed {

inline constexpr char16_t kHighWater[] = u"Select RecordNum From LogInfo order by RecordNum desc";

/// Where an engine comes from, with what it needs for as long as it lives.
class EngineSource {
public:
    virtual ~EngineSource() = default;
    virtual std::unique_ptr<Engine> makeEngine(ports::FileSystem& files) = 0;
    /// A database without tables, in the folder.
    virtual void makeEmptyFile(const TestFolder& folder, std::u16string_view name) = 0;
    /// Table T with a counter RecordNum, a text A that is 'none' by default, and a whole number B that is 3.
    virtual void makeTableWithDefaults(Database& database) = 0;
};

/// What the contract is run against. Another engine joins by one more INSTANTIATE_TEST_SUITE_P.
struct EngineUnderTest {
    std::string name;
    std::function<std::unique_ptr<EngineSource>()> makeSource;
    /// A table gets a column while row sets are open on it. An engine that cannot refuses, and changes nothing.
    bool changesTablesInUse;
};

inline void PrintTo(const EngineUnderTest& engine, std::ostream* out) { *out << engine.name; }

class EngineContract : public ::testing::TestWithParam<EngineUnderTest> {
protected:
    void SetUp() override;

    std::shared_ptr<Database> open();
    /// Closes the database and opens it again.
    void reopen();
    /// Appends a row with the one column set and gives its RecordNum.
    std::int32_t append(std::u16string_view message);
    /// The column's values in the order of RecordNum.
    std::vector<automation::Value> column(std::u16string_view name);

    TestFolder folder_;
    MachineFiles files_;
    std::unique_ptr<EngineSource> source_;
    std::unique_ptr<Engine> engine_;
    std::shared_ptr<Database> database_;
};

} // namespace cvlog::store::testbed
