#include "store/sqlite_snapshot.h"

#include "automation/error.h"
#include "base/text.h"
#include "store/engine_error.h"

#include <algorithm>
#include <utility>

namespace cvlog::store {

SqliteSnapshot::SqliteSnapshot(std::shared_ptr<SqliteSession> session, std::u16string_view sql)
    : session_(std::move(session)), statement_(session_->forReading().prepare(sql)) {
    if (statement_.columnCount() == 0 || !statement_.readsOnly())
        fail(EngineError::StatementGivesNoRows, u"The statement gives no rows.");
    reading_ = statement_.step();
    for (int i = 0; i < statement_.columnCount(); ++i) names_.push_back(statement_.columnName(i));
    session_->add(*this);
}

SqliteSnapshot::~SqliteSnapshot() { close(); }

bool SqliteSnapshot::atEnd() {
    requireOpen();
    return !reading_ && kept_.empty() && !failedAfter_;
}

void SqliteSnapshot::moveNext() {
    requireOpen();
    if (reading_) {
        reading_ = false; // a failure ends the reading
        reading_ = statement_.step();
        return;
    }
    if (kept_.empty()) fail(EngineError::NoCurrentRecord, u"No current record.");
    kept_.pop_front();
    if (kept_.empty() && failedAfter_) std::rethrow_exception(std::exchange(failedAfter_, nullptr));
}

automation::Value SqliteSnapshot::value(std::u16string_view column) {
    requireOpen();
    automation::Value result;
    readAt(indexOf(column), result);
    return result;
}

void SqliteSnapshot::read(std::u16string_view column, automation::Value& result) {
    requireOpen();
    readAt(indexInTurn(column), result);
}

std::int32_t SqliteSnapshot::readNumber(std::u16string_view column) {
    requireOpen();
    const std::size_t index = indexInTurn(column);
    if (reading_)
        if (const auto number = statement_.smallInteger(static_cast<int>(index))) return *number;
    automation::Value read;
    readAt(index, read);
    return automation::toInt32(read);
}

bool SqliteSnapshot::appendText(std::u16string_view column, base::CompactText& text) {
    requireOpen();
    const std::size_t index = indexInTurn(column);
    if (reading_ && statement_.appendText(static_cast<int>(index), text)) return true;
    automation::Value added;
    readAt(index, added);
    if (added.isNothing()) return false;
    text.append(automation::toText(added));
    return true;
}

void SqliteSnapshot::readAt(std::size_t index, automation::Value& result) const {
    if (!reading_ && kept_.empty()) fail(EngineError::NoCurrentRecord, u"No current record.");
    if (reading_)
        statement_.read(static_cast<int>(index), result);
    else
        result = kept_.front()[index];
    if (result.is<automation::ErrorCode>())
        fail(EngineError::Conversion, u"The column holds bytes that are no text.");
}

void SqliteSnapshot::addNew() { fail(EngineError::ReadOnly, u"A snapshot cannot be changed."); }

void SqliteSnapshot::assign(std::u16string_view, const automation::Value&) {
    fail(EngineError::ReadOnly, u"A snapshot cannot be changed.");
}

void SqliteSnapshot::update() { fail(EngineError::ReadOnly, u"A snapshot cannot be changed."); }

void SqliteSnapshot::close() {
    if (!session_) return;
    session_->remove(*this);
    endWithSession();
}

std::vector<std::u16string> SqliteSnapshot::columnNames() {
    requireOpen();
    return names_;
}

void SqliteSnapshot::beforeWrite() {
    if (!reading_) return;
    reading_ = false;
    try {
        do {
            kept_.push_back(currentRow());
        } while (statement_.step());
    } catch (const automation::AutomationError&) {
        failedAfter_ = std::current_exception();
    }
    statement_ = {};
}

void SqliteSnapshot::endWithSession() noexcept {
    statement_ = {};
    kept_.clear();
    reading_ = false;
    session_.reset();
}

void SqliteSnapshot::requireOpen() const {
    if (!session_) fail(EngineError::Closed, u"The row set is closed.");
}

SqliteSnapshot::Row SqliteSnapshot::currentRow() const {
    Row row;
    row.reserve(names_.size());
    for (std::size_t i = 0; i < names_.size(); ++i) row.push_back(statement_.value(static_cast<int>(i)));
    return row;
}

std::size_t SqliteSnapshot::indexInTurn(std::u16string_view column) {
    for (std::size_t i = 0; i < turns_.size(); ++i) {
        const Turn& turn = turns_[turn_];
        turn_ = turn_ + 1 == turns_.size() ? 0 : turn_ + 1;
        if (turn.column.data() == column.data() && turn.column.size() == column.size()) return turn.index;
    }
    turns_.push_back({column, indexOf(column)});
    turn_ = 0;
    return turns_.back().index;
}

std::size_t SqliteSnapshot::indexOf(std::u16string_view column) const {
    auto found = std::find(names_.begin(), names_.end(), column);
    if (found == names_.end())
        found = std::find_if(names_.begin(), names_.end(), [&](const std::u16string& name) {
            return base::equalsIgnoringCase(name, column);
        });
    if (found == names_.end())
        fail(EngineError::ItemNotFound, u"Item not found in this collection: " + std::u16string(column));
    return static_cast<std::size_t>(found - names_.begin());
}

} // namespace cvlog::store
