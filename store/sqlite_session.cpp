#include "store/sqlite_session.h"

#include "automation/error.h"
#include "store/engine_error.h"

#include <algorithm>

namespace cvlog::store {

SqliteSession::SqliteSession(std::unique_ptr<SqliteConnection> connection)
    : connection_(std::move(connection)) {}

SqliteSession::~SqliteSession() { close(); }

SqliteConnection& SqliteSession::forReading() {
    if (!connection_) fail(EngineError::Closed, u"The database is closed.");
    return *connection_;
}

SqliteConnection& SqliteSession::forWriting() {
    SqliteConnection& connection = forReading();
    for (SessionPart* part : parts_) part->beforeWrite();
    return connection;
}

void SqliteSession::add(SessionPart& part) { parts_.push_back(&part); }

void SqliteSession::remove(SessionPart& part) noexcept { std::erase(parts_, &part); }

std::int64_t SqliteSession::schemaVersion() {
    return (ask(forReading(), schemaVersion_, "pragma schema_version") << 24) + columnChanges_;
}

std::int64_t SqliteSession::contentVersion() {
    return (ask(forReading(), dataVersion_, "pragma data_version") << 24) + statements_;
}

std::int64_t SqliteSession::ask(SqliteConnection& connection, SqliteStatement& statement, const char* sql) {
    if (!statement) statement = connection.prepare(std::string_view(sql));
    const std::int64_t version = statement.step() ? statement.integer(0) : 0;
    statement.reset();
    return version;
}

void SqliteSession::close() noexcept {
    if (!connection_) return;
    while (!parts_.empty()) {
        SessionPart* part = parts_.back();
        parts_.pop_back();
        part->endWithSession();
    }
    schemaVersion_ = {};
    dataVersion_ = {};
    connection_.reset();
}

} // namespace cvlog::store
