#pragma once

#include "store/sqlite_engine.h"
#include "tests/store/command_line.h"
#include "tests/store/store_files.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace cvlog::store::testbed {

inline constexpr char kOldTable[] =
    "create table LogInfo (MethodName Text(50), ObjectName Text(50), ObjectType Text(50), "
    "LogMessage Text, ReturnMessage Integer)";

class SqliteFiles : public ::testing::Test {
protected:
    /// Whatever a test has done to the file, the command-line program sees in it what the library sees.
    void TearDown() override {
        if (!exists(native())) return;
        for (const char* sql : {"pragma integrity_check", "select sql from sqlite_master",
                                "select count(*) from LogInfo", "select RecordNum from LogInfo"}) {
            const std::string seen = ask(sql);
            const std::string printed = askCommandLine(native(), sql);
            if (seen.starts_with("failed: "))
                EXPECT_TRUE(printed.starts_with("failed: ")) << sql << ": " << printed;
            else
                EXPECT_EQ(printed, seen) << sql;
        }
    }

    void make(const std::string& sql) { ASSERT_TRUE(StockDatabase(native()).run(sql)); }
    std::string native() const { return folder_.native(kFile); }
    std::shared_ptr<Database> open() { return engine_->open(folder_.path(kFile)); }
    std::string ask(const std::string& sql) { return StockDatabase(native(), true).ask(sql); }
    /// The rows as the stock library reads them after the database was closed, which finds the file whole. The
    /// command-line program agrees.
    std::string askWhole(const std::string& sql) {
        EXPECT_EQ(askCommandLine(native(), "pragma integrity_check"), "ok");
        EXPECT_EQ(askCommandLine(native(), sql), ask(sql));
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

} // namespace cvlog::store::testbed
