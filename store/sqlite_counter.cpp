#include "store/sqlite_counter.h"

#include "automation/error.h"
#include "base/text.h"
#include "store/engine_error.h"
#include "store/sqlite_properties.h"

#include <algorithm>
#include <vector>

namespace cvlog::store {

namespace {

// The library is made to write the new column into the table's definition, in its right place, with a default
// that nobody has; that text is then replaced.
constexpr std::u16string_view kPlaceholder = u"integer default 7046029254386353131";
constexpr std::u16string_view kAutomaticKey = u"integer primary key autoincrement";

// Renaming a table then leaves views, triggers and references that name it as they are.
class PlainRenames {
public:
    explicit PlainRenames(SqliteConnection& connection) : connection_(connection) { set("on"); }
    PlainRenames(const PlainRenames&) = delete;
    PlainRenames& operator=(const PlainRenames&) = delete;
    ~PlainRenames() {
        try {
            set("off");
        } catch (const automation::AutomationError&) {
            // Only out of memory can fail it; later renames are then plain as well.
        }
    }

private:
    void set(const char* state) { connection_.run(std::string("pragma legacy_alter_table = ") + state); }

    SqliteConnection& connection_;
};

std::vector<std::u16string> definitionsOf(SqliteConnection& connection, const std::u16string& table,
                                          bool ofTable) {
    SqliteStatement statement = connection.prepare(std::string_view(
        "select sql from sqlite_master where tbl_name = ?1 collate nocase and sql is not null and "
        "(type = 'table') = ?2 and type <> 'view' order by rowid"));
    statement.bind(1, table).bind(2, ofTable ? 1 : 0);
    std::vector<std::u16string> definitions;
    while (statement.step()) definitions.push_back(statement.text(0));
    return definitions;
}

bool hasPrimaryKey(SqliteConnection& connection, const std::u16string& table) {
    SqliteStatement statement =
        connection.prepare(std::string_view("select count(*) from pragma_table_xinfo(?1) where pk > 0"));
    statement.bind(1, table);
    return statement.step() && statement.integer(0) > 0;
}

std::u16string columnList(const TableInfo& table) {
    std::u16string list;
    for (const ColumnInfo& column : table.columns) {
        if (column.generated) continue;
        if (!list.empty()) list += u", ";
        list += quotedName(column.name);
    }
    return list;
}

std::u16string unusedName(SqliteConnection& connection, const std::u16string& table) {
    std::u16string name = table + u"_before";
    SqliteStatement statement = connection.prepare(
        std::string_view("select count(*) from sqlite_master where name = ?1 collate nocase"));
    for (;;) {
        statement.bind(1, name);
        const bool used = statement.step() && statement.integer(0) != 0;
        statement.reset();
        if (!used) return name;
        name += u'_';
    }
}

// The rows' order is that of rowid; a column that took its name away leaves another of its names.
std::u16string rowOrder(const TableInfo& table) {
    for (const std::u16string_view name : {u"rowid", u"_rowid_", u"oid"})
        if (!table.indexOf(name)) return std::u16string(name);
    fail(EngineError::NotAvailable, u"The table's rows have no order to be numbered in.");
}

void refreshMark(SqliteConnection& connection, const std::u16string& table, const std::u16string& column) {
    const std::int64_t highest = highestInTable(connection, table, column);
    if (highest > lastNumberIn(connection, table, column).value_or(0))
        setLastNumberIn(connection, table, column, highest);
}

void execute(SqliteConnection& connection, const std::u16string& sql) { connection.prepare(sql).run(); }

void rebuildWithKey(SqliteConnection& connection, const TableInfo& before, const std::u16string& column) {
    const std::u16string name = quotedName(before.name);
    const std::vector<std::u16string> others = definitionsOf(connection, before.name, false);
    execute(connection,
            u"alter table " + name + u" add column " + column + u" " + std::u16string(kPlaceholder));
    const std::u16string made = definitionsOf(connection, before.name, true).at(0);
    if (made.find(kPlaceholder) == std::u16string::npos)
        fail(EngineError::Failed, u"The column cannot be added to this table.");
    const std::u16string old = quotedName(unusedName(connection, before.name));
    execute(connection, u"alter table " + name + u" rename to " + old);
    execute(connection, base::replaceFirst(made, kPlaceholder, kAutomaticKey));
    const std::u16string columns = columnList(before);
    execute(connection, u"insert into " + name + u" (" + columns + u") select " + columns + u" from " + old +
                            u" order by " + rowOrder(before));
    execute(connection, u"drop table " + old);
    for (const std::u16string& definition : others) execute(connection, definition);
}

void addMarkedColumn(SqliteConnection& connection, const TableInfo& before, const std::u16string& column) {
    const std::u16string name = quotedName(before.name);
    execute(connection, u"alter table " + name + u" add column " + column + u" Counter");
    // One statement a row in the order of the rows; a window function would have to be joined back by a key
    // whose shape differs from table to table.
    // The place needs its type: without one the comparison below would not use the index.
    execute(connection,
            u"create temp table log_numbering (number integer primary key, place integer unique)");
    execute(connection, u"insert into log_numbering (place) select " + rowOrder(before) + u" from " + name +
                            u" order by " + rowOrder(before));
    execute(connection, u"update " + name + u" set " + column +
                            u" = (select number from log_numbering where place = " + name + u"." +
                            rowOrder(before) + u")");
    execute(connection, u"drop table temp.log_numbering");
    execute(connection, u"create unique index " +
                            quotedName(unusedName(connection, before.name + u"_numbers")) + u" on " + name +
                            u" (" + column + u")");
}

} // namespace

void addCounterColumn(SqliteConnection& connection, std::u16string_view table, std::u16string_view column) {
    PlainRenames renames(connection);
    SqliteTransaction transaction(connection);
    const TableInfo before = readTable(connection, table);
    if (before.indexOf(column))
        fail(EngineError::Failed, u"The table has a column '" + std::u16string(column) + u"' already.");
    forgetProperties(connection, before.name, column);
    if (hasPrimaryKey(connection, before.name))
        addMarkedColumn(connection, before, quotedName(column));
    else
        rebuildWithKey(connection, before, quotedName(column));
    refreshMarks(connection, before.name);
    transaction.commit();
}

std::int64_t highestInTable(SqliteConnection& connection, const std::u16string& table,
                            const std::u16string& column) {
    const std::u16string name = quotedName(column);
    const std::u16string from = u" from " + quotedName(table);
    SqliteStatement highest = connection.prepare(u"select max(" + name + u")" + from);
    automation::Value found = highest.step() ? highest.value(0) : automation::Value(automation::Null{});
    if (!found.is<std::int32_t>() && !found.is<std::int64_t>() && !found.is<automation::Null>()) {
        highest = connection.prepare(u"select max(" + name + u")" + from + u" where typeof(" + name +
                                     u") = 'integer'");
        found = highest.step() ? highest.value(0) : automation::Value(automation::Null{});
    }
    return found.is<automation::Null>() ? 0 : std::max<std::int64_t>(highest.integer(0), 0);
}

void refreshMarks(SqliteConnection& connection, std::u16string_view table) {
    TableInfo info;
    try {
        info = readTable(connection, table);
    } catch (const automation::AutomationError&) {
        return;
    }
    for (const ColumnInfo& column : info.columns)
        if (column.numbering == Numbering::ByMark) refreshMark(connection, info.name, column.name);
}

} // namespace cvlog::store
