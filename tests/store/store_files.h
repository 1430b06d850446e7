#pragma once

#include "ports/file_system.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace cvlog::store::testbed {

inline constexpr char16_t kFile[] = u"PrjData.mdb";
inline constexpr char16_t kAddRecordNum[] = u"alter table LogInfo add column RecordNum Counter";
inline constexpr char16_t kAddErrors[] = u"alter table LogInfo add column Errors Text(254)";

/// The file system of the machine that runs the test: "\" is its separator whatever that is called here.
class MachineFiles final : public ports::FileSystem {
public:
    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
};

/// A folder of the test's own, removed with all that is in it.
class TestFolder {
public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    std::u16string path(std::u16string_view name) const;
    std::string native(std::u16string_view name) const;
    std::string native() const { return root_; }

private:
    std::string root_;
};

std::string readWhole(const std::string& path);
void writeWhole(const std::string& path, std::string_view bytes);
bool exists(const std::string& path);

/// The stock library, used directly: another program that works on the same file.
class StockDatabase {
public:
    explicit StockDatabase(const std::string& path, bool readOnly = false);
    StockDatabase(const StockDatabase&) = delete;
    StockDatabase& operator=(const StockDatabase&) = delete;
    ~StockDatabase();

    /// False on failure.
    bool run(const std::string& sql);
    /// The first column of all rows, one a line, as the command-line tool prints it; "failed: ..." on
    /// failure.
    std::string ask(const std::string& sql);
    sqlite3* handle() const { return handle_; }

private:
    sqlite3* handle_ = nullptr;
};

} // namespace cvlog::store::testbed
