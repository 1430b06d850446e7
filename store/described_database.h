#pragma once

#include "store/engine.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// An engine of ours tells more of a database than the log needs: enough for the object that the host sees.

namespace cvlog::store {

class DescribedRecordset : public Recordset {
public:
    virtual std::vector<std::u16string> columnNames() = 0;
    /// The table that rows are appended to; empty for a snapshot.
    virtual std::u16string tableName() = 0;
};

class DescribedDatabase : public Database {
public:
    /// The path it was opened by.
    virtual std::u16string name() = 0;
    virtual std::vector<std::u16string> tableNames() = 0;
    /// Throws when the table does not exist, like everything that takes one.
    virtual std::vector<std::u16string> columnNames(std::u16string_view table) = 0;
    virtual bool hasTable(std::u16string_view table) = 0;
    virtual void setZeroLength(std::u16string_view table, std::u16string_view column, bool allow) = 0;
    virtual std::shared_ptr<DescribedRecordset> openDescribedSnapshot(std::u16string_view sql) = 0;
    virtual std::shared_ptr<DescribedRecordset> openDescribedTable(std::u16string_view table) = 0;
};

} // namespace cvlog::store
