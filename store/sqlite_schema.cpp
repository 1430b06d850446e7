#include "store/sqlite_schema.h"

#include "base/text.h"
#include "store/engine_error.h"
#include "store/sql_statement.h"
#include "store/sqlite_properties.h"

#include <sqlite3.h>

#include <algorithm>

namespace cvlog::store {

namespace {

constexpr std::u16string_view kNumberedByName = u"RecordNum";

bool contains(const std::u16string& foldedType, std::u16string_view word) {
    return foldedType.find(word) != std::u16string::npos;
}

// The library's own rule, in its order.
bool keepsText(const std::u16string& foldedType) {
    return !contains(foldedType, u"INT") &&
           (contains(foldedType, u"CHAR") || contains(foldedType, u"CLOB") || contains(foldedType, u"TEXT"));
}

bool isAutomaticKey(SqliteConnection& connection, const std::u16string& table, const std::u16string& column) {
    int automatic = 0;
    const std::string tableName = base::toUtf8(table);
    const std::string columnName = base::toUtf8(column);
    return sqlite3_table_column_metadata(connection.handle(), "main", tableName.c_str(), columnName.c_str(),
                                         nullptr, nullptr, nullptr, nullptr, &automatic) == SQLITE_OK &&
           automatic != 0;
}

Numbering numberingOf(const std::u16string& name, const std::u16string& foldedType, bool hasDefault) {
    if (foldedType == u"COUNTER") return Numbering::ByMark;
    const bool named = base::equalsIgnoringCase(name, kNumberedByName);
    return named && !hasDefault && !keepsText(foldedType) ? Numbering::ByMark : Numbering::None;
}

std::u16string tableNameInFile(SqliteConnection& connection, std::u16string_view table) {
    SqliteStatement statement = connection.prepare(std::string_view(
        "select name from sqlite_master where type in ('table', 'view') and name = ?1 collate nocase"));
    statement.bind(1, table);
    if (!statement.step())
        fail(EngineError::TableNotFound, u"The database has no table '" + std::u16string(table) + u"'.");
    return statement.text(0);
}

} // namespace

std::optional<std::size_t> TableInfo::indexOf(std::u16string_view column) const noexcept {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& info) {
        return base::equalsIgnoringCase(info.name, column);
    });
    if (found == columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

const ColumnInfo& TableInfo::column(std::u16string_view column) const {
    const auto index = indexOf(column);
    if (!index)
        fail(EngineError::ItemNotFound, u"Item not found in this collection: " + std::u16string(column));
    return columns[*index];
}

TableInfo readTable(SqliteConnection& connection, std::u16string_view table) {
    TableInfo info;
    info.name = tableNameInFile(connection, table);
    SqliteStatement statement = connection.prepare(
        std::string_view("select name, type, dflt_value is not null, hidden from pragma_table_xinfo(?1)"));
    statement.bind(1, info.name);
    while (statement.step()) {
        const std::int64_t hidden = statement.integer(3);
        if (hidden == 1) continue; // a virtual table's inner column
        ColumnInfo column;
        column.name = statement.text(0);
        const std::u16string type = base::folded(base::trimBlanks(statement.text(1)));
        column.textual = keepsText(type);
        column.generated = hidden != 0;
        column.textLimit = textLimitOf(type);
        column.numbering = numberingOf(column.name, type, statement.integer(2) != 0);
        info.columns.push_back(std::move(column));
    }
    for (ColumnInfo& column : info.columns) {
        if (isAutomaticKey(connection, info.name, column.name)) column.numbering = Numbering::ByEngine;
        if (column.textLimit) column.zeroLength = allowsZeroLengthIn(connection, info.name, column.name);
    }
    return info;
}

std::vector<std::u16string> tableNames(SqliteConnection& connection) {
    SqliteStatement statement = connection.prepare(std::string_view(
        "select name from sqlite_master where type = 'table' and name not like 'sqlite\\_%' escape "
        "'\\' and name <> 'SysColumnProperties' order by name collate nocase"));
    std::vector<std::u16string> names;
    while (statement.step()) names.push_back(statement.text(0));
    return names;
}

std::optional<std::size_t> textLimitOf(std::u16string_view declaredType) {
    const std::vector<SqlToken> tokens = sqlTokens(declaredType);
    const bool fits = tokens.size() == 4 && tokens[0].isWord(u"Text") && tokens[1].isMark(u'(') &&
                      tokens[2].kind == SqlToken::Kind::Number && tokens[3].isMark(u')') &&
                      tokens[2].text.size() < 10;
    if (!fits) return std::nullopt;
    std::size_t limit = 0;
    for (const char16_t digit : tokens[2].text) {
        if (digit < u'0' || digit > u'9') return std::nullopt;
        limit = limit * 10 + (digit - u'0');
    }
    return limit > 0 ? std::optional(limit) : std::nullopt;
}

} // namespace cvlog::store
