#include "store/sqlite_table.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/engine_error.h"
#include "store/sqlite_counter.h"
#include "store/sqlite_snapshot.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cvlog::store {

namespace {

// Statements that are kept for rows made of different columns.
constexpr std::size_t kStatements = 32;

} // namespace

SqliteTable::SqliteTable(std::shared_ptr<SqliteSession> session, std::u16string_view table)
    : session_(std::move(session)) {
    table_.name = table;
    readAnew();
    session_->add(*this);
}

SqliteTable::~SqliteTable() { close(); }

bool SqliteTable::atEnd() { return rows().atEnd(); }

void SqliteTable::moveNext() {
    adding_ = false;
    rows().moveNext();
}

automation::Value SqliteTable::value(std::u16string_view column) {
    session();
    if (!adding_) return rows().value(column);
    return newRow_[indexOf(column)].value_or(automation::Null{});
}

void SqliteTable::addNew() {
    session();
    adding_ = false;
    if (doubted_ || session_->ownChanges() != ownChanges_) readAnewIfChanged();
    newRow_.assign(table_.columns.size(), std::nullopt);
    adding_ = true;
}

void SqliteTable::assign(std::u16string_view column, const automation::Value& value) {
    session();
    if (!adding_) fail(EngineError::UpdateWithoutAddNew, u"Update or CancelUpdate without AddNew or Edit.");
    const std::size_t index = indexOf(column);
    newRow_[index] = storableValue(table_.columns[index], value);
}

void SqliteTable::update() {
    session();
    if (!adding_) fail(EngineError::UpdateWithoutAddNew, u"Update or CancelUpdate without AddNew or Edit.");
    adding_ = false;
    NewRow row = std::exchange(newRow_, {});
    SqliteConnection& connection = session_->forWriting(this);
    try {
        insert(connection, row);
    } catch (const automation::AutomationError&) {
        // A column may have gone since the row was begun; it is left out as if its assignment had failed.
        doubted_ = true;
        const TableInfo old = table_;
        if (!readAnewIfChanged()) throw;
        insert(connection, movedToNewColumns(std::move(row), old));
    }
}

void SqliteTable::close() {
    if (!session_) return;
    session_->remove(*this);
    endWithSession();
}

std::vector<std::u16string> SqliteTable::columnNames() {
    session();
    readAnewIfChanged();
    std::vector<std::u16string> names;
    for (const ColumnInfo& column : table_.columns) names.push_back(column.name);
    return names;
}

std::u16string SqliteTable::tableName() {
    session();
    return table_.name;
}

void SqliteTable::endWithSession() noexcept {
    if (rows_ && session_) rows_->close();
    rows_.reset();
    statements_.clear();
    releaseNumbers();
    adding_ = false;
    session_.reset();
}

void SqliteTable::releaseNumbers() noexcept {
    if (numbers_ && session_) base::ignoring([&] { numbers_->giveBack(session_->forReading()); });
    numbers_.reset();
}

SqliteSession& SqliteTable::session() const {
    if (!session_) fail(EngineError::Closed, u"The row set is closed.");
    return *session_;
}

SqliteSnapshot& SqliteTable::rows() {
    session();
    if (!rows_)
        rows_ = std::make_shared<SqliteSnapshot>(session_, u"select * from " + quotedName(table_.name));
    return *rows_;
}

void SqliteTable::readAnew() {
    SqliteConnection& connection = session_->forReading();
    const std::int64_t version = session_->schemaVersion();
    TableInfo table = readTable(connection, table_.name);
    statements_.clear();
    table_ = std::move(table);
    schemaVersion_ = version;
    ownChanges_ = session_->ownChanges();
    doubted_ = false;
    numbers_.reset(); // of a column that may be another one now
    counter_.reset();
    for (std::size_t i = 0; i < table_.columns.size() && !counter_; ++i)
        if (table_.columns[i].numbering != Numbering::None) counter_ = i;
}

bool SqliteTable::readAnewIfChanged() {
    const bool changed = session_->schemaVersion() != schemaVersion_;
    if (changed) readAnew();
    ownChanges_ = session_->ownChanges();
    doubted_ = false;
    return changed;
}

// A column that is not known may have come since the definition was read.
std::size_t SqliteTable::indexOf(std::u16string_view column) {
    if (const auto index = table_.indexOf(column)) return *index;
    const TableInfo before = table_;
    if (readAnewIfChanged()) newRow_ = movedToNewColumns(std::move(newRow_), before);
    table_.column(column);
    return *table_.indexOf(column);
}

SqliteTable::NewRow SqliteTable::movedToNewColumns(NewRow row, const TableInfo& before) const {
    NewRow moved(table_.columns.size());
    for (std::size_t i = 0; i < row.size(); ++i)
        if (const auto place = table_.indexOf(before.columns[i].name); place && row[i])
            moved[*place] = std::move(row[i]);
    return moved;
}

void SqliteTable::insert(SqliteConnection& connection, const NewRow& row) {
    if (!counter_)
        runInsert(connection, row, Condition::None, nullptr);
    else if (!insertUnlessDisturbed(connection, row))
        insertNumbered(connection, row);
}

// One statement, as long as nobody else has changed the file since the last row.
bool SqliteTable::insertUnlessDisturbed(SqliteConnection& connection, const NewRow& row) {
    if (!numbers_) return false;
    const auto next = numbers_->fromBlock();
    if (!next) return false;
    runInsert(connection, row, Condition::FileUnchanged, &*next);
    if (connection.changes() == 0) return false;
    numbers_->noteGiven(*next, connection.fileVersion());
    return true;
}

void SqliteTable::insertNumbered(SqliteConnection& connection, const NewRow& row) {
    const ColumnInfo& counter = table_.columns[*counter_];
    if (!numbers_) numbers_.emplace(NumberMark{table_.name, counter.name, counter.numbering});
    SqliteTransaction transaction(connection);
    const ReservedNumbers::Next next = numbers_->fromNewBlock(connection);
    runInsert(connection, row, Condition::None, &next);
    transaction.commit();
    if (connection.inTransaction())
        numbers_
            .reset(); // the host's, which may yet be taken back; its numbers come one by one from the file
    else
        numbers_->noteGiven(next, connection.fileVersion());
}

void SqliteTable::runInsert(SqliteConnection& connection, const NewRow& row, Condition condition,
                            const ReservedNumbers::Next* next) {
    SqliteStatement& statement = statementFor(connection, row, condition);
    int parameter = 1;
    if (next) statement.bind(parameter++, next->number);
    for (const auto& value : row)
        if (value) statement.bind(parameter++, *value);
    if (condition == Condition::FileUnchanged) statement.bind(parameter, next->fileVersion);
    statement.run();
    doubted_ = doubted_ || statement.wasCompiledAnew();
}

bool SqliteTable::Prepared::isFor(const NewRow& row, Condition wanted) const noexcept {
    return condition == wanted &&
           std::equal(row.begin(), row.end(), set.begin(), set.end(),
                      [](const auto& value, bool isSet) { return value.has_value() == isSet; });
}

SqliteStatement& SqliteTable::statementFor(SqliteConnection& connection, const NewRow& row,
                                           Condition condition) {
    const auto found = std::find_if(statements_.begin(), statements_.end(),
                                    [&](const Prepared& prepared) { return prepared.isFor(row, condition); });
    if (found != statements_.end()) {
        if (found != statements_.begin()) std::iter_swap(found, statements_.begin());
        return statements_.front().statement;
    }
    Prepared prepared{std::vector<bool>(row.size()), condition,
                      connection.prepare(insertText(row, condition))};
    std::transform(row.begin(), row.end(), prepared.set.begin(),
                   [](const auto& value) { return value.has_value(); });
    doubted_ = doubted_ || session_->schemaVersion() != schemaVersion_;
    statements_.push_front(std::move(prepared));
    if (statements_.size() > kStatements) statements_.pop_back();
    return statements_.front().statement;
}

std::u16string SqliteTable::insertText(const NewRow& row, Condition condition) const {
    std::u16string columns;
    std::u16string values;
    const auto append = [&](const std::u16string& column, std::u16string_view value) {
        columns += (columns.empty() ? u"" : u", ") + quotedName(column);
        values += (values.empty() ? u"" : u", ") + std::u16string(value);
    };
    if (counter_) append(table_.columns[*counter_].name, u"?");
    for (std::size_t i = 0; i < row.size(); ++i)
        if (row[i]) append(table_.columns[i].name, u"?");
    const std::u16string start = u"insert into " + quotedName(table_.name);
    if (columns.empty()) return start + u" default values";
    const std::u16string into = start + u" (" + columns + u") ";
    if (condition == Condition::None) return into + u"values (" + values + u")";
    return into + u"select " + values + u" where " + std::u16string(SqliteConnection::kFileVersion) + u" = ?";
}

automation::Value storableValue(const ColumnInfo& column, const automation::Value& value) {
    using namespace automation;
    if (column.numbering != Numbering::None || column.generated)
        fail(EngineError::ColumnNotUpdatable, u"The column '" + column.name + u"' cannot be set.");
    if (value.is<Empty>() || value.is<Null>()) return Null{};
    if (value.is<ObjectRef>() && value.as<ObjectRef>())
        return storableValue(column, value.as<ObjectRef>()->get(u""));
    if (value.is<std::u16string>() || column.textual) {
        std::u16string text = toText(value);
        if (column.textLimit && text.size() > *column.textLimit)
            fail(EngineError::ValueTooLong, u"The column '" + column.name + u"' is too small for the text.");
        if (column.textLimit && text.empty() && !column.zeroLength)
            fail(EngineError::ZeroLength, u"The column '" + column.name + u"' takes no text of zero length.");
        return text;
    }
    if (value.is<std::int64_t>()) return value;
    if (value.is<bool>() || value.is<std::int16_t>() || value.is<std::int32_t>()) return toInt32(value);
    const double number = toDouble(value);
    if (std::isnan(number)) fail(EngineError::Conversion, u"Data type conversion error.");
    return number;
}

} // namespace cvlog::store
