#pragma once

#include "store/sqlite_connection.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::store {

/// How a column gets its numbers.
enum class Numbering {
    None,
    ByEngine, // the table's automatic key; by us as well, where the rows are ours
    ByMark,   // by us, above the highest number ever given
};

struct ColumnInfo {
    std::u16string name;
    bool textual = false; // numbers are kept as text
    bool generated = false;
    Numbering numbering = Numbering::None;
    std::optional<std::size_t> textLimit; // of Text(n), in UTF-16 code units
    bool zeroLength = true;
};

struct TableInfo {
    std::u16string name; // as the file spells it
    std::vector<ColumnInfo> columns;

    std::optional<std::size_t> indexOf(std::u16string_view column) const noexcept;
    /// Throws when there is none.
    const ColumnInfo& column(std::u16string_view column) const;
};

/// Reads a table's definition. A counter is a column declared so (an automatic key is one), and one that is
/// named RecordNum and takes whole numbers: hosts that made their file with other tools number their records
/// in it. Throws when there is no such table.
TableInfo readTable(SqliteConnection& connection, std::u16string_view table);

/// The tables of the file, without the library's and this engine's own.
std::vector<std::u16string> tableNames(SqliteConnection& connection);

/// n of a type declared as Text(n).
std::optional<std::size_t> textLimitOf(std::u16string_view declaredType);

} // namespace cvlog::store
