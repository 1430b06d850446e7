#include "store/sqlite_database.h"

#include "store/database_object.h"
#include "store/engine_error.h"
#include "store/sql_statement.h"
#include "store/sqlite_counter.h"
#include "store/sqlite_properties.h"
#include "store/sqlite_schema.h"
#include "store/sqlite_snapshot.h"
#include "store/sqlite_table.h"

#include <algorithm>

namespace cvlog::store {

namespace {

bool isQuery(const SqliteStatement& statement, std::u16string_view sql) {
    if (statement.columnCount() == 0 || !statement.readsOnly()) return false;
    const std::vector<SqlToken> tokens = sqlTokens(sql);
    return tokens.empty() || !tokens.front().isWord(u"pragma");
}

// The library's and the engine's own.
bool isInnerTable(const std::u16string& table) {
    return table.starts_with(u"sqlite_") || table == kPropertiesTable;
}

} // namespace

SqliteDatabase::SqliteDatabase(std::u16string name, std::unique_ptr<SqliteConnection> connection)
    : name_(std::move(name)), session_(std::make_shared<SqliteSession>(std::move(connection))) {}

SqliteDatabase::~SqliteDatabase() { session_->close(); }

void SqliteDatabase::execute(std::u16string_view sql) {
    SqliteConnection& connection = session_->forWriting();
    session_->noteStatement();
    if (const auto added = parseAddColumn(sql)) {
        if (added->isCounter)
            addCounterColumn(connection, added->table, added->column);
        else
            addColumn(connection, sql, added->table, added->column);
    } else if (const auto created = parseCreateTable(sql)) {
        createTable(connection, created->sql, created->table);
    } else {
        runVerbatim(connection, sql);
    }
}

void SqliteDatabase::addColumn(SqliteConnection& connection, std::u16string_view sql,
                               std::u16string_view table, std::u16string_view column) {
    SqliteTransaction transaction(connection);
    connection.prepare(sql).run();
    forgetProperties(connection, table, column);
    transaction.commit();
}

void SqliteDatabase::createTable(SqliteConnection& connection, std::u16string_view sql,
                                 std::u16string_view table) {
    SqliteTransaction transaction(connection);
    if (hasTable(table)) {
        connection.prepare(sql).run(); // "if not exists"; anything else fails by itself
    } else {
        connection.prepare(sql).run();
        forgetProperties(connection, table, {});
    }
    transaction.commit();
}

void SqliteDatabase::runVerbatim(SqliteConnection& connection, std::u16string_view sql) {
    TouchedTables touched;
    SqliteStatement statement = connection.prepareNoting(sql, touched);
    if (isQuery(statement, sql)) fail(EngineError::StatementGivesRows, u"Cannot execute a select query.");
    std::sort(touched.names.begin(), touched.names.end());
    touched.names.erase(std::unique(touched.names.begin(), touched.names.end()), touched.names.end());
    if (std::erase_if(touched.names, isInnerTable) > 0) touched.onlyDeletes = false;
    if (touched.names.empty() || connection.isReadOnly()) return statement.run();
    runMarked(connection, statement, touched);
}

// The numbers of rows that go are remembered in the same transaction. Rows that have gone since change nothing about
// what is remembered, so that many deletions in a row look once.
void SqliteDatabase::runMarked(SqliteConnection& connection, SqliteStatement& statement,
                               const TouchedTables& touched) {
    const bool ownTransaction = !connection.inTransaction();
    SqliteTransaction transaction(connection);
    const bool isMarked =
        ownTransaction && marked_.tables == touched.names && marked_.fileVersion == connection.fileVersion();
    if (!isMarked)
        for (const std::u16string& table : touched.names) refreshMarks(connection, table);
    statement.run();
    transaction.commit();
    if (!ownTransaction || !touched.onlyDeletes) return marked_.tables.clear();
    marked_.tables = touched.names;
    marked_.fileVersion = connection.fileVersion();
}

std::shared_ptr<Recordset> SqliteDatabase::openSnapshot(std::u16string_view sql) {
    return openDescribedSnapshot(sql);
}

std::shared_ptr<Recordset> SqliteDatabase::openTable(std::u16string_view table) {
    return openDescribedTable(table);
}

void SqliteDatabase::requireColumn(std::u16string_view table, std::u16string_view column) {
    readTable(session_->forReading(), table).column(column);
}

bool SqliteDatabase::allowsZeroLength(std::u16string_view table, std::u16string_view column) {
    return readTable(session_->forReading(), table).column(column).zeroLength;
}

void SqliteDatabase::allowZeroLength(std::u16string_view table, std::u16string_view column) {
    setZeroLength(table, column, true);
}

automation::ObjectRef SqliteDatabase::automationObject() {
    automation::ObjectRef object = object_.lock();
    if (!object) {
        object = makeDatabaseObject(shared_from_this());
        object_ = object;
    }
    return object;
}

void SqliteDatabase::close() {
    session_->forReading();
    session_->close();
}

std::u16string SqliteDatabase::name() {
    session_->forReading();
    return name_;
}

std::vector<std::u16string> SqliteDatabase::tableNames() { return store::tableNames(session_->forReading()); }

std::vector<std::u16string> SqliteDatabase::columnNames(std::u16string_view table) {
    std::vector<std::u16string> names;
    for (const ColumnInfo& column : readTable(session_->forReading(), table).columns)
        names.push_back(column.name);
    return names;
}

bool SqliteDatabase::hasTable(std::u16string_view table) {
    SqliteStatement statement = session_->forReading().prepare(std::string_view(
        "select count(*) from sqlite_master where type in ('table', 'view') and name = ?1 collate nocase"));
    return statement.bind(1, table).step() && statement.integer(0) != 0;
}

void SqliteDatabase::setZeroLength(std::u16string_view table, std::u16string_view column, bool allow) {
    SqliteConnection& connection = session_->forWriting();
    const TableInfo info = readTable(connection, table);
    const ColumnInfo& found = info.column(column);
    if (!found.textLimit) {
        if (!allow) fail(EngineError::NotAvailable, u"The column takes any text.");
        return;
    }
    SqliteTransaction transaction(connection);
    setZeroLengthIn(connection, info.name, found.name, allow);
    transaction.commit();
    session_->noteColumnChange();
}

std::shared_ptr<DescribedRecordset> SqliteDatabase::openDescribedSnapshot(std::u16string_view sql) {
    session_->forReading();
    return std::make_shared<SqliteSnapshot>(session_, sql);
}

std::shared_ptr<DescribedRecordset> SqliteDatabase::openDescribedTable(std::u16string_view table) {
    session_->forReading();
    return std::make_shared<SqliteTable>(session_, table);
}

} // namespace cvlog::store
