#pragma once

#include "store/described_database.h"
#include "store/sqlite_session.h"

namespace cvlog::store {

class SqliteDatabase final : public DescribedDatabase, public std::enable_shared_from_this<SqliteDatabase> {
public:
    SqliteDatabase(std::u16string name, std::unique_ptr<SqliteConnection> connection);
    ~SqliteDatabase() override;

    void execute(std::u16string_view sql) override;
    std::shared_ptr<Recordset> openSnapshot(std::u16string_view sql) override;
    std::shared_ptr<Recordset> openTable(std::u16string_view table) override;
    void requireColumn(std::u16string_view table, std::u16string_view column) override;
    bool allowsZeroLength(std::u16string_view table, std::u16string_view column) override;
    void allowZeroLength(std::u16string_view table, std::u16string_view column) override;
    automation::ObjectRef automationObject() override;
    /// Closes the open row sets, too. Fails when it is closed already.
    void close() override;

    std::u16string name() override;
    std::vector<std::u16string> tableNames() override;
    std::vector<std::u16string> columnNames(std::u16string_view table) override;
    bool hasTable(std::u16string_view table) override;
    void setZeroLength(std::u16string_view table, std::u16string_view column, bool allow) override;
    std::shared_ptr<DescribedRecordset> openDescribedSnapshot(std::u16string_view sql) override;
    std::shared_ptr<DescribedRecordset> openDescribedTable(std::u16string_view table) override;

private:
    void addColumn(SqliteConnection& connection, std::u16string_view sql, std::u16string_view table,
                   std::u16string_view column);
    void createTable(SqliteConnection& connection, std::u16string_view sql, std::u16string_view table);
    void runVerbatim(SqliteConnection& connection, std::u16string_view sql);
    void runMarked(SqliteConnection& connection, SqliteStatement& statement, const TouchedTables& touched);

    std::u16string name_;
    std::shared_ptr<SqliteSession> session_;
    struct {
        std::vector<std::u16string> tables;
        std::int64_t fileVersion = 0;
    } marked_; // whose highest numbers are all remembered in a file of this version
    std::weak_ptr<automation::Object> object_;
};

} // namespace cvlog::store
