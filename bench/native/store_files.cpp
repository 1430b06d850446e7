#include "bench/native/store_files.h"

#include "base/text.h"
#include "bench/native/store_log.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace cvlog::bench {

namespace fs = std::filesystem;

namespace {

const fs::path kFolder = "build/bench-store";

void require(bool holds, sqlite3* handle) {
    if (holds) return;
    std::fprintf(stderr, "The database library failed: %s\n", sqlite3_errmsg(handle));
    std::exit(2);
}

} // namespace

bool NativePaths::fileExists(std::u16string_view path) { return fs::is_regular_file(nativePath(path)); }

std::string NativePaths::nativePath(std::u16string_view path) { return base::toUtf8(path); }

std::vector<std::byte> NativePaths::firstBytes(std::u16string_view, std::size_t) { return {}; }

DiskFolder::DiskFolder() {
    fs::remove_all(kFolder);
    fs::create_directories(kFolder);
}

DiskFolder::~DiskFolder() {
    std::error_code ignored;
    fs::remove_all(kFolder, ignored);
}

std::string DiskFolder::file(std::string_view name) const { return (kFolder / name).string(); }

BareDatabase::BareDatabase(const std::string& path) {
    require(sqlite3_open(path.c_str(), &handle_) == SQLITE_OK, handle_);
}

BareDatabase::~BareDatabase() {
    sqlite3_finalize(insert_);
    sqlite3_close(handle_);
}

void BareDatabase::run(const std::string& sql) {
    require(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, handle_);
}

void BareDatabase::fill(int rows) {
    sqlite3_stmt* statement =
        prepare("with recursive numbers (n) as (select 1 union all select n + 1 from numbers where n < ?7) "
                "insert into LogInfo (MethodName, ObjectName, ObjectType, LogMessage, ReturnMessage) "
                "select ?1, ?2, ?3, ?4, ?5 from numbers where ?6 is not null");
    sqlite3_bind_int(statement, 7, rows);
    insert(statement);
    sqlite3_finalize(statement);
}

void BareDatabase::requireCount(int rows) {
    const std::int64_t found = number("select count(*) from LogInfo");
    if (found == rows) return;
    std::fprintf(stderr, "%d records should be there, %d are\n", rows, static_cast<int>(found));
    std::exit(2);
}

void BareDatabase::insertRecords(int count) {
    if (!insert_) {
        insert_ = prepare("insert into LogInfo (RecordNum, MethodName, ObjectName, ObjectType, LogMessage, "
                          "ReturnMessage, Errors) values (?7, ?1, ?2, ?3, ?4, ?5, ?6)");
        const bool numbersItself =
            number("select count(*) from pragma_table_info('LogInfo') where name = 'RecordNum' and pk > 0") !=
            0;
        if (!numbersItself) lastNumber_ = static_cast<int>(number("select max(RecordNum) from LogInfo"));
    }
    for (int i = 0; i < count; ++i) {
        if (lastNumber_ > 0) sqlite3_bind_int(insert_, 7, ++lastNumber_);
        insert(insert_);
    }
}

std::int64_t BareDatabase::number(const std::string& sql) {
    sqlite3_stmt* statement = prepare(sql.c_str());
    require(sqlite3_step(statement) == SQLITE_ROW, handle_);
    const std::int64_t result = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    return result;
}

sqlite3_stmt* BareDatabase::prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr) == SQLITE_OK, handle_);
    return statement;
}

void BareDatabase::insert(sqlite3_stmt* statement) {
    sqlite3_bind_text(statement, 1, kWrittenMethod, -1, SQLITE_STATIC);
    sqlite3_bind_text(statement, 2, kWrittenObject, -1, SQLITE_STATIC);
    sqlite3_bind_text(statement, 3, kWrittenType, -1, SQLITE_STATIC);
    sqlite3_bind_text(statement, 4, kWrittenMessage, -1, SQLITE_STATIC);
    sqlite3_bind_int(statement, 5, kWrittenCode);
    sqlite3_bind_text(statement, 6, kWrittenErrors, -1, SQLITE_STATIC);
    const bool inserted = sqlite3_step(statement) == SQLITE_DONE;
    require(inserted && sqlite3_reset(statement) == SQLITE_OK, handle_);
}

} // namespace cvlog::bench
