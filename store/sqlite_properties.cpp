#include "store/sqlite_properties.h"

namespace cvlog::store {

namespace {

bool hasPropertiesTable(SqliteConnection& connection) {
    return connection.integer("select count(*) from sqlite_master where type = 'table' and name = "
                              "'SysColumnProperties'") != 0;
}

std::optional<std::int64_t> property(SqliteConnection& connection, const char* sql, std::u16string_view table,
                                     std::u16string_view column) {
    if (!hasPropertiesTable(connection)) return std::nullopt;
    SqliteStatement statement = connection.prepare(std::string_view(sql));
    statement.bind(1, table).bind(2, column);
    if (!statement.step() || statement.value(0).is<automation::Null>()) return std::nullopt;
    return statement.integer(0);
}

void setProperty(SqliteConnection& connection, const char* sql, std::u16string_view table,
                 std::u16string_view column, std::int64_t value) {
    connection.run(
        "create table if not exists SysColumnProperties ("
        "TableName text not null collate nocase, ColumnName text not null collate nocase, "
        "AllowZeroLength integer, LastNumber integer, primary key (TableName, ColumnName)) without rowid");
    connection.prepare(std::string_view(sql)).bind(1, table).bind(2, column).bind(3, value).run();
}

} // namespace

bool allowsZeroLengthIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column) {
    return property(
               connection,
               "select AllowZeroLength from SysColumnProperties where TableName = ?1 and ColumnName = ?2",
               table, column)
               .value_or(0) != 0;
}

void setZeroLengthIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                     bool allow) {
    setProperty(
        connection,
        "insert into SysColumnProperties (TableName, ColumnName, AllowZeroLength) values (?1, ?2, ?3) "
        "on conflict do update set AllowZeroLength = ?3",
        table, column, allow ? 1 : 0);
}

std::optional<std::int64_t> lastNumberIn(SqliteConnection& connection, std::u16string_view table,
                                         std::u16string_view column) {
    return property(connection,
                    "select LastNumber from SysColumnProperties where TableName = ?1 and ColumnName = ?2",
                    table, column);
}

void setLastNumberIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                     std::int64_t number) {
    setProperty(connection,
                "insert into SysColumnProperties (TableName, ColumnName, LastNumber) values (?1, ?2, ?3) "
                "on conflict do update set LastNumber = ?3",
                table, column, number);
}

void lowerLastNumberIn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column,
                       std::int64_t number, std::int64_t fileVersion) {
    connection
        .prepare(
            u"update SysColumnProperties set LastNumber = ?3 where TableName = ?1 and ColumnName = ?2 and " +
            std::u16string(SqliteConnection::kFileVersion) + u" = ?4")
        .bind(1, table)
        .bind(2, column)
        .bind(3, number)
        .bind(4, fileVersion)
        .run();
}

void forgetProperties(SqliteConnection& connection, std::u16string_view table, std::u16string_view column) {
    if (!hasPropertiesTable(connection)) return;
    connection
        .prepare(std::string_view("delete from SysColumnProperties where TableName = ?1 and "
                                  "(?2 = '' or ColumnName = ?2)"))
        .bind(1, table)
        .bind(2, column)
        .run();
}

} // namespace cvlog::store
