#include "tests/store/store_files.h"

#include "base/text.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace cvlog::store::testbed {

namespace fs = std::filesystem;

bool MachineFiles::fileExists(std::u16string_view path) { return exists(nativePath(path)); }

std::string MachineFiles::nativePath(std::u16string_view path) {
    std::string native = base::toUtf8(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::vector<std::byte> MachineFiles::firstBytes(std::u16string_view path, std::size_t count) {
    const std::string whole = readWhole(nativePath(path)).substr(0, count);
    const auto* bytes = reinterpret_cast<const std::byte*>(whole.data());
    return {bytes, bytes + whole.size()};
}

namespace {

// In memory where the machine has such a folder: the tests flush a lot.
fs::path parentFolder() {
    std::error_code ignored;
    return fs::is_directory("/dev/shm", ignored) ? fs::path("/dev/shm") : fs::temp_directory_path();
}

} // namespace

TestFolder::TestFolder() {
    std::random_device random;
    root_ = (parentFolder() / ("cvlog-store-" + std::to_string(random()) + std::to_string(random())))
                .generic_string();
    fs::create_directory(root_);
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

std::u16string TestFolder::path(std::u16string_view name) const {
    std::u16string path = base::fromUtf8(root_);
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path + u"\\" + std::u16string(name);
}

std::string TestFolder::native(std::u16string_view name) const { return root_ + "/" + base::toUtf8(name); }

std::string readWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void writeWhole(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

StockDatabase::StockDatabase(const std::string& path, bool readOnly) {
    const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3_open_v2(path.c_str(), &handle_, flags, nullptr);
}

StockDatabase::~StockDatabase() { sqlite3_close_v2(handle_); }

bool StockDatabase::run(const std::string& sql) {
    return sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::string StockDatabase::ask(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    std::string lines;
    int result = sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr);
    while (result == SQLITE_OK || result == SQLITE_ROW) {
        result = sqlite3_step(statement);
        if (result != SQLITE_ROW) break;
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        lines += (lines.empty() ? "" : "\n") + (text ? std::string(text) : std::string("NULL"));
    }
    if (result != SQLITE_DONE) lines = std::string("failed: ") + sqlite3_errmsg(handle_);
    sqlite3_finalize(statement);
    return lines;
}

} // namespace cvlog::store::testbed
