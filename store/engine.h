#pragma once

#include "automation/object.h"
#include "automation/value.h"
#include "base/compact_text.h"

#include <cstdint>
#include <memory>
#include <string_view>

// What the log needs of a desktop database. An engine takes SQL text verbatim, has a `Counter` column type (an
// auto-number that is never used twice) and a `Text(n)` column type (refuses longer values, and empty ones until
// zero length is allowed). Every failure is an AutomationError; a failed statement changes nothing.

namespace cvlog::store {

/// A row set: read forward from the first row, or, for a table, appended to.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual bool atEnd() = 0;
    virtual void moveNext() = 0;
    /// The current row's value; Null for a column without one.
    virtual automation::Value value(std::u16string_view column) = 0;
    /// The same into `result`, whose memory is used again: for reading rows without end. The characters of the name
    /// must stay where and what they are as long as the row set is open.
    virtual void read(std::u16string_view column, automation::Value& result) { result = value(column); }
    /// The same as a whole number of 32 bits, converted; fails where automation::toInt32() does. The name is as for
    /// read().
    virtual std::int32_t readNumber(std::u16string_view column) { return automation::toInt32(value(column)); }
    /// Appends what value() gives to a text, converted. False, and nothing is appended, for a column without a value.
    /// The name is as for read().
    virtual bool appendText(std::u16string_view column, base::CompactText& text) {
        const automation::Value added = value(column);
        if (added.isNothing()) return false;
        text.append(automation::toText(added));
        return true;
    }

    /// Starts a new row: every column at its default, whatever an earlier unfinished row held.
    virtual void addNew() = 0;
    /// Sets a column of the new row. A refused value leaves the column as it was.
    virtual void assign(std::u16string_view column, const automation::Value& value) = 0;
    /// Saves the new row: when this returns, the row survives a crash of the process. A failure drops the row.
    virtual void update() = 0;

    virtual void close() = 0;
};

class Database {
public:
    virtual ~Database() = default;

    /// Runs a statement that gives no rows.
    virtual void execute(std::u16string_view sql) = 0;
    /// A forward-only snapshot of a query.
    virtual std::shared_ptr<Recordset> openSnapshot(std::u16string_view sql) = 0;
    /// A table-type row set, for appending.
    virtual std::shared_ptr<Recordset> openTable(std::u16string_view table) = 0;

    /// Throws when the table or the column does not exist.
    virtual void requireColumn(std::u16string_view table, std::u16string_view column) = 0;
    virtual bool allowsZeroLength(std::u16string_view table, std::u16string_view column) = 0;
    virtual void allowZeroLength(std::u16string_view table, std::u16string_view column) = 0;

    /// The database as its host sees it: a live object on this same connection.
    virtual automation::ObjectRef automationObject() = 0;

    virtual void close() = 0;
};

class Engine {
public:
    virtual ~Engine() = default;

    /// Opens an existing database read-write. Never creates a file: a missing, empty, foreign, damaged or locked one
    /// fails.
    virtual std::shared_ptr<Database> open(std::u16string_view path) = 0;
};

} // namespace cvlog::store
