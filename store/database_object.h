#pragma once

#include "store/described_database.h"

// The database as its host sees it. Default members have id 0; ids never change.

namespace cvlog::store {

/// Name, Execute, OpenRecordset, TableDefs and Close. Works on the database's own connection and keeps it
/// alive; once that is closed, every member fails.
automation::ObjectRef makeDatabaseObject(std::shared_ptr<DescribedDatabase> database);

/// Fields, EOF, MoveNext, AddNew, Update and Close.
automation::ObjectRef makeRecordsetObject(std::shared_ptr<DescribedDatabase> database,
                                          std::shared_ptr<DescribedRecordset> rows);

} // namespace cvlog::store
