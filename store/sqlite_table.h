#pragma once

#include "store/described_database.h"
#include "store/sqlite_numbers.h"
#include "store/sqlite_schema.h"
#include "store/sqlite_session.h"

#include <deque>
#include <optional>

namespace cvlog::store {

class SqliteSnapshot;

/// The rows of a table, to be read forward and appended to. One row is one statement, prepared once for each
/// set of columns that rows are made of. The file is not asked for each row whether another program has
/// changed the table: a column that has gone is noticed when the row is saved, and left out as if its
/// assignment had failed.
class SqliteTable final : public DescribedRecordset, private SessionPart {
public:
    SqliteTable(std::shared_ptr<SqliteSession> session, std::u16string_view table);
    SqliteTable(const SqliteTable&) = delete;
    SqliteTable& operator=(const SqliteTable&) = delete;
    ~SqliteTable() override;

    bool atEnd() override;
    void moveNext() override;
    /// Of the new row between addNew() and update().
    automation::Value value(std::u16string_view column) override;
    void addNew() override;
    void assign(std::u16string_view column, const automation::Value& value) override;
    void update() override;
    void close() override;
    std::vector<std::u16string> columnNames() override;
    std::u16string tableName() override;

private:
    using NewRow = std::vector<std::optional<automation::Value>>; // a column each; none: its default
    enum class Condition { None, FileUnchanged };
    struct Prepared {
        std::vector<bool> set; // a column each
        Condition condition;
        SqliteStatement statement;

        bool isFor(const NewRow& row, Condition wanted) const noexcept;
    };

    void beforeWrite() override { releaseNumbers(); }
    void endWithSession() noexcept override;
    SqliteSession& session() const;
    void releaseNumbers() noexcept;
    SqliteSnapshot& rows();
    void readAnew();
    bool readAnewIfChanged();
    std::size_t indexOf(std::u16string_view column);
    NewRow movedToNewColumns(NewRow row, const TableInfo& before) const;
    void insert(SqliteConnection& connection, const NewRow& row);
    void insertNumbered(SqliteConnection& connection, const NewRow& row);
    bool insertUnlessDisturbed(SqliteConnection& connection, const NewRow& row);
    void runInsert(SqliteConnection& connection, const NewRow& row, Condition condition,
                   const ReservedNumbers::Next* next);
    SqliteStatement& statementFor(SqliteConnection& connection, const NewRow& row, Condition condition);
    std::u16string insertText(const NewRow& row, Condition condition) const;

    std::shared_ptr<SqliteSession> session_;
    std::shared_ptr<SqliteSnapshot> rows_;
    TableInfo table_;
    std::int64_t schemaVersion_ = 0;
    std::int64_t ownChanges_ = 0;        // of the session, when the definition was known to be right
    bool doubted_ = false;               // another program has changed some definition
    std::optional<std::size_t> counter_; // the column numbered by anybody but the host
    std::optional<ReservedNumbers> numbers_;
    bool adding_ = false;
    NewRow newRow_;
    std::deque<Prepared> statements_; // the ones used last in front
};

/// The value as a column keeps it: Null, a whole or real number, or text. Throws when the column refuses it.
automation::Value storableValue(const ColumnInfo& column, const automation::Value& value);

} // namespace cvlog::store
