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
    void read(std::u16string_view column, automation::Value& result) override;
    std::int32_t readNumber(std::u16string_view column) override;
    bool appendText(std::u16string_view column, base::CompactText& text) override;
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
    std::size_t indexOf(std::u16string_view column) const;
    std::size_t indexInTurn(std::u16string_view column);
    void readAt(std::size_t index, automation::Value& result) const;

    /// A column that was read, by the place of its name.
    struct Turn {
        std::u16string_view column;
        std::size_t index;
    };

    std::shared_ptr<SqliteSession> session_;
    SqliteStatement statement_;
    std::vector<std::u16string> names_;
    std::vector<Turn> turns_; // row by row the columns are read in the same order
    std::size_t turn_ = 0;
    std::deque<Row> kept_;           // the current row and those after it, once in memory
    std::exception_ptr failedAfter_; // what ended the reading behind the kept rows
    bool reading_ = true;
};

} // namespace cvlog::store
