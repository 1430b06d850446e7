#pragma once

#include "automation/value.h"
#include "base/compact_text.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_context;
struct sqlite3_stmt;
struct sqlite3_value;

// The C library as this folder uses it: every failure is an AutomationError.
//
// How text is kept. In a UTF-8 file text goes in and comes out as UTF-8 bytes of our own making, in which a
// lone surrogate is its own three-byte sequence: the library stores bytes as they are, whereas its own
// conversion from UTF-16 spoils them. In a UTF-16 file text goes in as UTF-16. Either way every code unit
// comes back, NULs included, and ordinary text is ordinary text to any other program.

namespace cvlog::store {

class SqliteConnection;

/// A prepared statement. Must not be used after its connection was closed.
class SqliteStatement {
public:
    SqliteStatement() = default;
    SqliteStatement(SqliteConnection& connection, std::string_view sql);
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;
    ~SqliteStatement();

    explicit operator bool() const noexcept { return handle_ != nullptr; }
    /// True when there is a row. After the last row, and after a failure, the statement is reset.
    bool step();
    /// Runs the statement to its end, whatever rows it gives.
    void run();
    void reset() noexcept;

    /// Parameters count from 1. Binds Null, whole numbers, real numbers and text.
    SqliteStatement& bind(int parameter, const automation::Value& value);

    int columnCount() const noexcept;
    std::u16string columnName(int column) const;
    /// Null, int32 where it fits, else int64, double or text. Bytes that are no text give an ErrorCode.
    automation::Value value(int column) const;
    void read(int column, automation::Value& result) const;
    /// Appends a text to another one. False, and nothing is appended, when the column holds no text.
    bool appendText(int column, base::CompactText& text) const;
    std::int64_t integer(int column) const;
    /// Nothing when the column holds no whole number of 32 bits.
    std::optional<std::int32_t> smallInteger(int column) const noexcept;
    std::u16string text(int column) const;
    /// It neither changes the file nor the connection's transaction.
    bool readsOnly() const noexcept;
    /// The library found the tables changed and compiled the statement anew since this was asked last.
    bool wasCompiledAnew() noexcept;

private:
    void readText(sqlite3_value* value, std::u16string& text) const;
    int bindText(int parameter, std::u16string_view text);
    int bindUtf8(int parameter, std::u16string_view text);

    SqliteConnection* connection_ = nullptr;
    sqlite3_stmt* handle_ = nullptr;
    std::vector<std::string> texts_; // what is bound, a parameter each: the library does not copy it
};

/// The tables that a statement deletes from or changes.
struct TouchedTables {
    std::vector<std::u16string> names;
    bool onlyDeletes = true; // no row comes or changes, in whatever table
};

class SqliteConnection {
public:
    /// `location` is a path, or a "file:" address when `isAddress`. Opens read-write where the system lets
    /// it.
    SqliteConnection(const std::string& location, bool isAddress);
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;
    ~SqliteConnection();

    SqliteStatement prepare(std::string_view sql) { return SqliteStatement(*this, sql); }
    SqliteStatement prepare(std::u16string_view sql);
    /// Prepares one statement and notes the tables that it deletes from or changes.
    SqliteStatement prepareNoting(std::u16string_view sql, TouchedTables& touched);
    void run(std::string_view sql);
    /// Begins a write transaction, commits the one that is begun. Prepared once: a record may need both.
    void begin() { runPrepared(begin_, "begin immediate"); }
    void commit() { runPrepared(commit_, "commit"); }
    std::int64_t integer(std::string_view sql);
    /// fileVersion() in a statement, which asks with the file held.
    static constexpr std::u16string_view kFileVersion = u"log_file_version()";

    /// Changes with every change of the file, by this connection or any other. Known without a look at the file:
    /// another program's change shows from the next statement on.
    std::int64_t fileVersion() const noexcept;
    std::int64_t changes() const noexcept;
    bool inTransaction() const noexcept;
    bool isReadOnly() const noexcept;
    bool usesUtf8() const noexcept { return utf8_; }
    /// To be called once the file is known to be readable.
    void readEncoding();
    sqlite3* handle() const noexcept { return handle_; }
    /// The failure the library reported last.
    [[noreturn]] void failWithLast() const;
    int lastResult() const noexcept;

private:
    void runPrepared(SqliteStatement& statement, std::string_view sql);
    static void answerFileVersion(sqlite3_context* context, int count, sqlite3_value** arguments);
    static int authorize(void* self, int action, const char* first, const char*, const char*, const char*);

    sqlite3* handle_ = nullptr;
    SqliteStatement begin_;
    SqliteStatement commit_;
    TouchedTables* touched_ = nullptr;
    bool utf8_ = true;
};

/// A write transaction, or a part of the one that the host has begun; rolled back unless committed.
class SqliteTransaction {
public:
    explicit SqliteTransaction(SqliteConnection& connection);
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;
    ~SqliteTransaction();
    void commit();

private:
    SqliteConnection& connection_;
    bool nested_;
    bool open_ = true;
};

/// "name" with quotes doubled.
std::u16string quotedName(std::u16string_view name);
/// 'text' with quotes doubled.
std::u16string quotedText(std::u16string_view text);

} // namespace cvlog::store
