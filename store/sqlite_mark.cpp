#include "store/sqlite_mark.h"

#include "store/sqlite_properties.h"

namespace cvlog::store {

namespace {

std::int64_t keyMark(SqliteConnection& connection, const std::u16string& table) {
    SqliteStatement statement =
        connection.prepare(std::string_view("select max(seq) from sqlite_sequence where name = ?1"));
    statement.bind(1, table);
    return statement.step() ? statement.integer(0) : 0;
}

void setKeyMark(SqliteConnection& connection, const std::u16string& table, std::int64_t number) {
    connection.prepare(std::string_view("update sqlite_sequence set seq = ?2 where name = ?1"))
        .bind(1, table)
        .bind(2, number)
        .run();
    if (connection.changes() > 0) return;
    connection.prepare(std::string_view("insert into sqlite_sequence (name, seq) values (?1, ?2)"))
        .bind(1, table)
        .bind(2, number)
        .run();
}

void lowerKeyMark(SqliteConnection& connection, const std::u16string& table, std::int64_t number,
                  std::int64_t fileVersion) {
    connection
        .prepare(u"update sqlite_sequence set seq = ?2 where name = ?1 and " +
                 std::u16string(SqliteConnection::kFileVersion) + u" = ?3")
        .bind(1, table)
        .bind(2, number)
        .bind(3, fileVersion)
        .run();
}

} // namespace

std::int64_t NumberMark::read(SqliteConnection& connection) const {
    if (numbering == Numbering::ByEngine) return keyMark(connection, table);
    return lastNumberIn(connection, table, column).value_or(0);
}

void NumberMark::set(SqliteConnection& connection, std::int64_t number) const {
    if (numbering == Numbering::ByEngine)
        setKeyMark(connection, table, number);
    else
        setLastNumberIn(connection, table, column, number);
}

void NumberMark::lower(SqliteConnection& connection, std::int64_t number, std::int64_t fileVersion) const {
    if (numbering == Numbering::ByEngine)
        lowerKeyMark(connection, table, number, fileVersion);
    else
        lowerLastNumberIn(connection, table, column, number, fileVersion);
}

} // namespace cvlog::store
