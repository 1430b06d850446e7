#pragma once

#include "store/sqlite_engine.h"
#include "tests/store/store_files.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace cvlog::store::testing {

inline constexpr char16_t kFile[] = u"PrjData.mdb";
inline constexpr char16_t kAddRecordNum[] = u"alter table LogInfo add column RecordNum Counter";
inline constexpr char16_t kAddErrors[] = u"alter table LogInfo add column Errors Text(254)";
inline constexpr char kOldTable[] =
    "create table LogInfo (MethodName Text(50), ObjectName Text(50), ObjectType Text(50), "
    "LogMessage Text, ReturnMessage Integer)";

class SqliteFiles : public ::testing::Test {
protected:
    void make(const std::string& sql) { ASSERT_TRUE(StockDatabase(native()).run(sql)); }
    std::string native() const { return folder_.native(kFile); }
    std::shared_ptr<Database> open() { return engine_->open(folder_.path(kFile)); }
    std::string ask(const std::string& sql) { return StockDatabase(native(), true).ask(sql); }
    /// The rows as the stock library reads them after the database was closed, which finds the file whole.
    std::string askWhole(const std::string& sql) {
        EXPECT_EQ(ask("pragma integrity_check"), "ok");
        return ask(sql);
    }

    static void append(Database& database, std::u16string_view message) {
        const auto rows = database.openTable(u"LogInfo");
        rows->addNew();
        rows->assign(u"LogMessage", message);
        rows->update();
    }

    TestFolder folder_;
    MachineFiles files_;
    std::unique_ptr<Engine> engine_ = makeSqliteEngine(files_);
};

} // namespace cvlog::store::testing
