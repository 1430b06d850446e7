#pragma once

#include "store/described_database.h"
#include "store/sqlite_session.h"

#include <deque>
#include <exception>

namespace cvlog::store {

/// A query's rows as they were when it was opened. They are read from the file one by one, until something is
/// written on the same connection: then the rest is taken into memory first. Other programs' writing does not
/// touch them.
class SqliteSnapshot final : public DescribedRecordset, private SessionPart {
public:
    SqliteSnapshot(std::shared_ptr<SqliteSession> session, std::u16string_view sql);
    SqliteSnapshot(const SqliteSnapshot&) = delete;
    SqliteSnapshot& operator=(const SqliteSnapshot&) = delete;
    ~SqliteSnapshot() override;

    bool atEnd() override;
    void moveNext() override;
    automation::Value value(std::u16string_view column) override;
    void addNew() override;
    void assign(std::u16string_view column, const automation::Value& value) override;
    void update() override;
    void close() override;
    std::vector<std::u16string> columnNames() override;
    std::u16string tableName() override { return {}; }

private:
    using Row = std::vector<automation::Value>;

    void beforeWrite() override;
    void endWithSession() noexcept override;
    void requireOpen() const;
    Row currentRow() const;
    int indexOf(std::u16string_view column) const;

    std::shared_ptr<SqliteSession> session_;
    SqliteStatement statement_;
    std::vector<std::u16string> names_;
    std::deque<Row> kept_;           // the current row and those after it, once in memory
    std::exception_ptr failedAfter_; // what ended the reading behind the kept rows
    bool reading_ = true;
};

} // namespace cvlog::store
