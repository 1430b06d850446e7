#pragma once

#include "store/sqlite_connection.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::store {

/// Up to `count` bytes from the start of a file. Read through the library: closing a file by other means
/// drops the locks that this process holds on it. `path` is a native path in UTF-8.
std::vector<std::byte> readFileStart(const std::string& path, std::size_t count);

/// Opens an existing database file and makes sure that it is one: its schema reads, and a small file is
/// checked page by page. Turns on the write-ahead log. A file that cannot be written is opened for reading.
std::unique_ptr<SqliteConnection> openSqliteFile(const std::string& path);

} // namespace cvlog::store
