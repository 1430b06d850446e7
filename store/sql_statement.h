#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The statements whose column types SQLite would take as ordinary words. They are recognised whatever their
// case, white space, comments and quotes. All other text is not looked at.

namespace cvlog::store {

struct SqlToken {
    enum class Kind { Word, Name, Text, Number, Mark };
    Kind kind;
    std::u16string text;    // without quotes
    std::size_t begin, end; // its place in the statement

    bool isWord(std::u16string_view word) const;
    bool isMark(char16_t mark) const { return kind == Kind::Mark && text[0] == mark; }
    bool isName() const { return kind == Kind::Word || kind == Kind::Name; }
};

/// The tokens without comments; an unfinished quote or comment runs to the end.
std::vector<SqlToken> sqlTokens(std::u16string_view sql);

/// "alter table T add [column] C ...".
struct AddColumnStatement {
    std::u16string table;
    std::u16string column;
    bool isCounter = false; // of type Counter, with nothing after it that says more than a counter does
};
std::optional<AddColumnStatement> parseAddColumn(std::u16string_view sql);

/// "create table T (...)".
struct CreateTableStatement {
    std::u16string table;
    /// The statement for SQLite: a Counter column is its primary key with automatic numbers. With another
    /// primary key the column stays a Counter by declaration.
    std::u16string sql;
};
std::optional<CreateTableStatement> parseCreateTable(std::u16string_view sql);

} // namespace cvlog::store
