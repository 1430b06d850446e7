#pragma once

#include "store/sqlite_connection.h"
#include "store/sqlite_schema.h"

namespace cvlog::store {

/// A counter is a 32-bit number.
inline constexpr std::int64_t kLastCounter = 0x7FFFFFFF;

/// Adds a counter column and numbers the rows that are there from 1, in the order in which they were stored.
/// All or nothing. The table is made anew with the column as its automatic key, everything else of it kept; a
/// table that has a primary key keeps that and gets an indexed column whose numbers this engine gives.
void addCounterColumn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column);

/// The highest whole number in a column, 0 where there is none.
std::int64_t highestInTable(SqliteConnection& connection, const std::u16string& table,
                            const std::u16string& column);

/// Makes sure that the highest number of each column which is numbered by mark is remembered, whatever happens to its
/// row afterwards. To be called within a transaction; nothing happens for a table that does not exist.
void refreshMarks(SqliteConnection& connection, std::u16string_view table);

} // namespace cvlog::store
