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

/// The highest number that a counter column ever gave, where the table itself cannot remember it.
std::optional<std::int64_t> lastNumberIn(SqliteConnection& connection, std::u16string_view table,
                                         std::u16string_view column);
void setLastNumberIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                     std::int64_t number);

/// Forgets a column, or a whole table when `column` is empty: what is made anew starts without a past.
void forgetProperties(SqliteConnection& connection, std::u16string_view table, std::u16string_view column);

/// The same of one column whose number is remembered already, with statements prepared once: for each record.
class LastNumber {
public:
    LastNumber(SqliteConnection& connection, std::u16string_view table, std::u16string_view column);

    std::int64_t get();
    /// False, and nothing done, when no number is remembered any more.
    bool set(std::int64_t number);

private:
    SqliteConnection& connection_;
    SqliteStatement get_;
    SqliteStatement set_;
};

} // namespace cvlog::store
