#pragma once

#include "store/sqlite_connection.h"

#include <optional>

namespace cvlog::store {

/// The table of the file that keeps what a column has beyond its declaration. It is made when first written
/// to.
inline constexpr std::u16string_view kPropertiesTable = u"SysColumnProperties";

bool allowsZeroLengthIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column);
void setZeroLengthIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                     bool allow);

/// What no number that a counter column ever gave is above, where the table itself cannot remember one.
std::optional<std::int64_t> lastNumberIn(SqliteConnection& connection, std::u16string_view table,
                                         std::u16string_view column);
void setLastNumberIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                     std::int64_t number);

/// Sets it to a lower number, unless the file has another version by then.
void lowerLastNumberIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                       std::int64_t number, std::int64_t fileVersion);

/// Forgets a column, or a whole table when `column` is empty: what is made anew starts without a past.
void forgetProperties(SqliteConnection& connection, std::u16string_view table, std::u16string_view column);

} // namespace cvlog::store
