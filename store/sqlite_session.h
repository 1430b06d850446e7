#pragma once

#include "store/sqlite_connection.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace cvlog::store {

/// What stands open on a session and has to be told.
class SessionPart {
public:
    /// The file is about to change: take into memory what must not change with it, and end all reading.
    virtual void beforeWrite() = 0;
    /// The session is about to end. Must not fail.
    virtual void endWithSession() noexcept = 0;

protected:
    ~SessionPart() = default;
};

/// A connection with the row sets that are open on it. They share it, so that none ever outlives it.
class SqliteSession {
public:
    explicit SqliteSession(std::unique_ptr<SqliteConnection> connection);
    SqliteSession(const SqliteSession&) = delete;
    SqliteSession& operator=(const SqliteSession&) = delete;
    ~SqliteSession();

    /// Throws when the database is closed.
    SqliteConnection& forReading();
    /// Throws when the database is closed. Before it returns, the open row sets were told, except for the one that
    /// writes.
    SqliteConnection& forWriting(const SessionPart* writer = nullptr);

    void add(SessionPart& part);
    void remove(SessionPart& part) noexcept;

    /// Changes when any program changes a table's definition, and when this one changes what a column allows.
    std::int64_t schemaVersion();
    void noteColumnChange() noexcept { ++columnChanges_; }
    void noteStatement() noexcept { ++statements_; }
    /// Changes when the host's statements or we may have changed a definition; known without asking the file.
    std::int64_t ownChanges() const noexcept { return statements_ + columnChanges_; }

    bool isOpen() const noexcept { return connection_ != nullptr; }
    void close() noexcept;

private:
    std::unique_ptr<SqliteConnection> connection_;
    SqliteStatement schemaVersion_;
    std::vector<SessionPart*> parts_;
    std::int64_t statements_ = 0;
    std::int64_t columnChanges_ = 0;
};

} // namespace cvlog::store
