#pragma once

#include "store/engine.h"
#include "tests/support/call_counter.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::tests {

struct FakeColumn {
    enum class Kind { Counter, Text, Number };
    std::u16string name;
    Kind kind = Kind::Text;
    std::size_t length = 255;
    bool zeroLength = true;
};

using FakeRecord =
    std::map<std::u16string, automation::Value>; // by column name; Null where nothing was assigned

struct FakeTable {
    std::vector<FakeColumn> columns;
    std::vector<FakeRecord> records;
    std::int32_t lastNumber = 0;

    FakeColumn* column(std::u16string_view name);
};

using FakeFile = std::map<std::u16string, FakeTable>;

/// Databases in memory. Knows the statements that the log executes, and no others. Every call goes through the
/// counter as "Engine.", "Database." or "Recordset." with its name; a failed call has no effect.
class FakeEngine : public store::Engine {
public:
    explicit FakeEngine(CallCounter& calls) : calls_(calls) {}

    std::shared_ptr<store::Database> open(std::u16string_view path) override;

    /// What a log file can lack.
    enum class Schema { Modern, NoZeroLength, NoErrors, Old, NoTable };
    FakeFile& addLogFile(std::u16string_view path, Schema schema = Schema::Modern);
    FakeFile& file(std::u16string_view path);
    /// The records of LogInfo.
    std::vector<FakeRecord>& records(std::u16string_view path = u"C:\\Proj\\PrjData.mdb");

    int openDatabases = 0;
    int openRecordsets = 0;

private:
    CallCounter& calls_;
    std::map<std::u16string, FakeFile> files_;
};

} // namespace cvlog::tests
