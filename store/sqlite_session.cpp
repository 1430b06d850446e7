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

SqliteConnection& SqliteSession::forWriting(const SessionPart* writer) {
    SqliteConnection& connection = forReading();
    for (SessionPart* part : parts_)
        if (part != writer) part->beforeWrite();
    return connection;
}

void SqliteSession::add(SessionPart& part) { parts_.push_back(&part); }

void SqliteSession::remove(SessionPart& part) noexcept { std::erase(parts_, &part); }

std::int64_t SqliteSession::schemaVersion() {
    SqliteConnection& connection = forReading();
    if (!schemaVersion_) schemaVersion_ = connection.prepare(std::string_view("pragma schema_version"));
    const std::int64_t version = schemaVersion_.step() ? schemaVersion_.integer(0) : 0;
    schemaVersion_.reset();
    return (version << 24) + columnChanges_;
}

void SqliteSession::close() noexcept {
    if (!connection_) return;
    while (!parts_.empty()) {
        SessionPart* part = parts_.back();
        parts_.pop_back();
        part->endWithSession();
    }
    schemaVersion_ = {};
    connection_.reset();
}

} // namespace cvlog::store
