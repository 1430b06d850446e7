#pragma once

#include "store/sqlite_connection.h"
#include "store/sqlite_schema.h"

#include <string>

namespace cvlog::store {

/// What no number that a counter column ever gave is above: the library's own note of an automatic key, where other
/// programs look as well, and a property of ours for any other column.
struct NumberMark {
    std::u16string table; // as the file spells it
    std::u16string column;
    Numbering numbering;

    /// 0 when there is none.
    std::int64_t read(SqliteConnection& connection) const;
    void set(SqliteConnection& connection, std::int64_t number) const;
    /// Sets it to a lower number, unless the file has another version by then.
    void lower(SqliteConnection& connection, std::int64_t number, std::int64_t fileVersion) const;
};

} // namespace cvlog::store
