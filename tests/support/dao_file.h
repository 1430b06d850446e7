#pragma once

#include "automation/value.h"

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

// What a database file of the DAO double holds, and the statements it knows: those of the log, of the store's
// contract and of the tests, by the rules of the desktop database. Everything else is a syntax error.

namespace cvlog::tests {

/// The desktop database's errors that the double raises.
enum class DaoError : std::uint16_t {
    InvalidArgument = 3001,
    TableExists = 3010,
    UpdateWithoutAddNew = 3020,
    NoCurrentRecord = 3021,
    FileNotFound = 3024,
    TooFewParameters = 3061,
    CannotExecuteSelect = 3065,
    InputTableNotFound = 3078,
    InvalidStatement = 3129,
    CharactersAfterEnd = 3142,
    TooSmallForData = 3163,
    CannotBeUpdated = 3164,
    RecordDeleted = 3167,
    TableInUse = 3211,
    InvalidOperation = 3219,
    NotSupportedForObject = 3251,
    ItemNotFound = 3265,
    SyntaxInCreateTable = 3290,
    SyntaxInFieldDefinition = 3292,
    ValueRequired = 3314,
    ZeroLength = 3315,
    UnrecognizedFormat = 3343,
    TableDoesNotExist = 3376,
    FieldExists = 3380,
    ObjectInvalid = 3420,
    Conversion = 3421,
    StructureInUse = 3422,
};

[[noreturn]] void raise(DaoError error);

struct DaoColumn {
    enum class Kind { Counter, Text, Memo, Long, Double };
    std::u16string name;
    Kind kind = Kind::Text;
    std::size_t size = 255; // of Text
    bool required = false;
    bool zeroLength = false;
    automation::Value defaultValue = automation::Null{};

    bool isText() const { return kind == Kind::Text || kind == Kind::Memo; }
    /// What the column keeps of a value that is put.
    automation::Value kept(const automation::Value& value) const;
};

struct DaoRow {
    std::int64_t id = 0;
    std::vector<automation::Value> values; // a column each
};

struct DaoTable {
    std::u16string name;
    std::vector<DaoColumn> columns;
    std::vector<DaoRow> rows;
    std::int64_t lastId = 0;
    std::int32_t lastNumber = 0;
    int rowSets = 0; // open on it, which keeps its definition as it is

    /// The size of `columns` when there is none.
    std::size_t indexOf(std::u16string_view column) const;
    DaoColumn& column(std::u16string_view name);
};

class DaoFile {
public:
    /// The rows of a query, copied.
    struct Result {
        DaoTable* table = nullptr;
        std::vector<std::size_t> columns;
        std::vector<DaoRow> rows;
    };

    void execute(std::u16string_view sql);
    Result select(std::u16string_view sql);
    bool hasTable(std::u16string_view name) const;
    DaoTable& table(std::u16string_view name);
    const std::list<DaoTable>& tables() const { return tables_; }

    /// What was changed has reached the disk.
    void flush() { stored_ = tables_; }
    /// The program is killed: what has not reached the disk is gone.
    void crash();

private:
    friend class DaoStatement;
    std::list<DaoTable> tables_;
    std::list<DaoTable> stored_;
};

} // namespace cvlog::tests
