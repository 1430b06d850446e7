#pragma once

#include "ports/file_system.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace cvlog::bench {

/// Native paths, used as they are.
class NativePaths final : public ports::FileSystem {
public:
    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
};

/// A folder below the working directory, so on the disk that the project lies on; removed at the end.
class DiskFolder {
public:
    DiskFolder();
    DiskFolder(const DiskFolder&) = delete;
    DiskFolder& operator=(const DiskFolder&) = delete;
    ~DiskFolder();

    std::string file(std::string_view name) const;
};

/// The database library used without anything between. Ends the program when a call fails.
class BareDatabase {
public:
    explicit BareDatabase(const std::string& path);
    BareDatabase(const BareDatabase&) = delete;
    BareDatabase& operator=(const BareDatabase&) = delete;
    ~BareDatabase();

    void run(const std::string& sql);
    /// Inserts rows without what opening a log adds to a table, all in one transaction.
    void fill(int rows);
    /// Ends the program unless the table holds so many rows.
    void requireCount(int rows);
    /// Inserts the record that the measured log writes, so many times, each a transaction of its own. Rows of a table
    /// that does not number them itself are numbered from above the highest number there was at the first call.
    void insertRecords(int count);
    /// The one number that a query answers.
    std::int64_t number(const std::string& sql);

private:
    sqlite3_stmt* prepare(const char* sql);
    void insert(sqlite3_stmt* statement);

    sqlite3* handle_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    int lastNumber_ = 0;
};

} // namespace cvlog::bench
