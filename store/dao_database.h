#pragma once

#include "store/engine.h"

#include <memory>
#include <vector>

namespace cvlog::store {

class DaoRecordset;

/// A database that DAO has opened. DAO's errors reach the caller as they are.
class DaoDatabase final : public Database {
public:
    explicit DaoDatabase(automation::ObjectRef database);
    DaoDatabase(const DaoDatabase&) = delete;
    DaoDatabase& operator=(const DaoDatabase&) = delete;
    /// Closes the row sets that were opened here, and no more: the host may hold the database.
    ~DaoDatabase() override;

    void execute(std::u16string_view sql) override;
    std::shared_ptr<Recordset> openSnapshot(std::u16string_view sql) override;
    std::shared_ptr<Recordset> openTable(std::u16string_view table) override;
    void requireColumn(std::u16string_view table, std::u16string_view column) override;
    bool allowsZeroLength(std::u16string_view table, std::u16string_view column) override;
    void allowZeroLength(std::u16string_view table, std::u16string_view column) override;
    automation::ObjectRef automationObject() override { return database_; }
    void close() override;

private:
    automation::ObjectRef definitionOf(std::u16string_view table, std::u16string_view column) const;
    std::shared_ptr<Recordset> keep(automation::ObjectRef rows);

    automation::ObjectRef database_;
    std::vector<std::weak_ptr<DaoRecordset>> rowSets_;
};

/// The object that a call gave; throws when it gave none.
automation::ObjectRef objectOf(const automation::Value& value);

} // namespace cvlog::store
