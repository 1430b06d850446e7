#include "store/sqlite_connection.h"

#include "base/text.h"
#include "store/engine_error.h"

#include <sqlite3.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace cvlog::store {

namespace {

constexpr int kBusyMilliseconds = 1000;

EngineError errorOf(int result) {
    switch (result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return EngineError::Locked;
    case SQLITE_READONLY:
        return EngineError::ReadOnly;
    case SQLITE_CANTOPEN:
        return EngineError::CannotOpen;
    case SQLITE_CORRUPT:
        return EngineError::Damaged;
    case SQLITE_NOTADB:
        return EngineError::UnknownFormat;
    case SQLITE_FULL:
        return EngineError::DiskFull;
    case SQLITE_CONSTRAINT:
        return EngineError::DuplicateValue;
    case SQLITE_MISMATCH:
        return EngineError::Conversion;
    case SQLITE_ERROR:
        return EngineError::Syntax;
    default:
        return EngineError::Failed;
    }
}

bool startsWithByteOrderMark(std::u16string_view text) {
    return !text.empty() && (text.front() == 0xFEFF || text.front() == 0xFFFE);
}

int bytesOf(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        fail(EngineError::ValueTooLong, u"The text is too long.");
    return static_cast<int>(bytes);
}

std::u16string quoted(std::u16string_view text, char16_t quote) {
    std::u16string result(1, quote);
    for (const char16_t unit : text) result.append(unit == quote ? 2 : 1, unit);
    return result += quote;
}

// Anything after the statement but blanks, comments and semicolons.
bool hasMore(sqlite3* handle, const char* tail) {
    while (tail && *tail) {
        sqlite3_stmt* next = nullptr;
        const char* after = tail;
        const int result = sqlite3_prepare_v2(handle, tail, -1, &next, &after);
        sqlite3_finalize(next);
        if (result != SQLITE_OK || next) return true;
        if (after == tail) break;
        tail = after;
    }
    return false;
}

// The bytes as the file has them: what the library gives as a text is a copy with a NUL behind it.
std::string_view utf8Of(sqlite3_value* value) noexcept {
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    const auto count = static_cast<std::size_t>(sqlite3_value_bytes(value));
    return bytes ? std::string_view(bytes, count) : std::string_view();
}

std::u16string_view utf16Of(sqlite3_value* value) noexcept {
    const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(value)); // aligned for them
    const std::size_t bytes = units ? static_cast<std::size_t>(sqlite3_value_bytes16(value)) : 0;
    return {units, bytes / sizeof(char16_t)};
}

} // namespace

SqliteStatement::SqliteStatement(SqliteConnection& connection, std::string_view sql)
    : connection_(&connection) {
    if (sql.find('\0') != std::string_view::npos)
        fail(EngineError::Syntax, u"A statement cannot hold a NUL character.");
    const std::string terminated(sql);
    const char* tail = nullptr;
    if (sqlite3_prepare_v2(connection.handle(), terminated.c_str(), bytesOf(terminated.size() + 1), &handle_,
                           &tail))
        connection.failWithLast();
    if (!handle_) fail(EngineError::Syntax, u"The statement is empty.");
    if (hasMore(connection.handle(), tail)) {
        sqlite3_finalize(handle_);
        fail(EngineError::Syntax, u"Characters found after the end of the statement.");
    }
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : connection_(other.connection_), handle_(std::exchange(other.handle_, nullptr)),
      texts_(std::move(other.texts_)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    std::swap(connection_, other.connection_);
    std::swap(handle_, other.handle_);
    std::swap(texts_, other.texts_);
    return *this;
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(handle_); }

bool SqliteStatement::step() {
    const int result = sqlite3_step(handle_);
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) {
        sqlite3_reset(handle_);
        return false;
    }
    try {
        connection_->failWithLast();
    } catch (...) {
        sqlite3_reset(handle_);
        throw;
    }
}

void SqliteStatement::run() {
    while (step()) {
    }
}

void SqliteStatement::reset() noexcept { sqlite3_reset(handle_); }

SqliteStatement& SqliteStatement::bind(int parameter, const automation::Value& value) {
    using namespace automation;
    int result = SQLITE_OK;
    if (value.is<std::u16string>())
        result = bindText(parameter, value.as<std::u16string>());
    else if (value.is<std::int64_t>())
        result = sqlite3_bind_int64(handle_, parameter, value.as<std::int64_t>());
    else if (value.is<std::int32_t>())
        result = sqlite3_bind_int(handle_, parameter, value.as<std::int32_t>());
    else if (value.is<double>())
        result = sqlite3_bind_double(handle_, parameter, value.as<double>());
    else if (value.is<Null>())
        result = sqlite3_bind_null(handle_, parameter);
    else
        fail(EngineError::Conversion, u"Data type conversion error.");
    if (result != SQLITE_OK) connection_->failWithLast();
    return *this;
}

int SqliteStatement::bindText(int parameter, std::u16string_view text) {
    if (connection_->usesUtf8()) return bindUtf8(parameter, text);
    // The library takes a leading byte order mark off, so one more goes in front of it.
    std::u16string units(startsWithByteOrderMark(text) ? u"\uFEFF" : u"");
    units += text;
    return sqlite3_bind_text16(handle_, parameter, units.data(), bytesOf(units.size() * sizeof(char16_t)),
                               SQLITE_TRANSIENT);
}

int SqliteStatement::bindUtf8(int parameter, std::u16string_view text) {
    const auto index = static_cast<std::size_t>(parameter) - 1;
    if (texts_.empty()) texts_.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(handle_)));
    if (index >= texts_.size()) return SQLITE_RANGE;
    std::string& bytes = texts_[index];
    base::toUtf8(text, bytes);
    return sqlite3_bind_text(handle_, parameter, bytes.data(), bytesOf(bytes.size()), SQLITE_STATIC);
}

int SqliteStatement::columnCount() const noexcept { return sqlite3_column_count(handle_); }

std::u16string SqliteStatement::columnName(int column) const {
    const char* name = sqlite3_column_name(handle_, column);
    return name ? base::fromUtf8(name) : std::u16string();
}

automation::Value SqliteStatement::value(int column) const {
    automation::Value result;
    read(column, result);
    return result;
}

void SqliteStatement::read(int column, automation::Value& result) const {
    sqlite3_value* const value =
        sqlite3_column_value(handle_, column); // good for one thread, which is all we have
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        result = automation::Null{};
        break;
    case SQLITE_INTEGER: {
        const std::int64_t number = sqlite3_value_int64(value);
        const auto small = static_cast<std::int32_t>(number);
        result = small == number ? automation::Value(small) : automation::Value(number);
        break;
    }
    case SQLITE_FLOAT:
        result = sqlite3_value_double(value);
        break;
    case SQLITE_TEXT:
        readText(value, result.makeText());
        break;
    default:
        result = automation::ErrorCode{automation::code::kTypeMismatch};
    }
}

std::optional<std::int32_t> SqliteStatement::smallInteger(int column) const noexcept {
    sqlite3_value* const value = sqlite3_column_value(handle_, column);
    if (sqlite3_value_type(value) != SQLITE_INTEGER) return std::nullopt;
    const std::int64_t number = sqlite3_value_int64(value);
    const auto small = static_cast<std::int32_t>(number);
    return small == number ? std::optional(small) : std::nullopt;
}

std::int64_t SqliteStatement::integer(int column) const { return sqlite3_column_int64(handle_, column); }

// By the library's conversion: it is asked before the file's encoding is known.
std::u16string SqliteStatement::text(int column) const {
    if (connection_->usesUtf8()) sqlite3_column_text(handle_, column);
    std::u16string result;
    readText(sqlite3_column_value(handle_, column), result);
    return result;
}

void SqliteStatement::readText(sqlite3_value* value, std::u16string& text) const {
    if (connection_->usesUtf8())
        base::fromUtf8(utf8Of(value), text);
    else
        text = utf16Of(value);
}

bool SqliteStatement::appendText(int column, base::CompactText& text) const {
    sqlite3_value* const value = sqlite3_column_value(handle_, column);
    if (sqlite3_value_type(value) != SQLITE_TEXT) return false;
    if (connection_->usesUtf8())
        text.appendUtf8(utf8Of(value));
    else
        text.append(utf16Of(value));
    return true;
}

bool SqliteStatement::readsOnly() const noexcept { return sqlite3_stmt_readonly(handle_) != 0; }

bool SqliteStatement::wasCompiledAnew() noexcept {
    return sqlite3_stmt_status(handle_, SQLITE_STMTSTATUS_REPREPARE, 1) != 0;
}

SqliteConnection::SqliteConnection(const std::string& location, bool isAddress) {
    // A connection belongs to one apartment, so to one thread: it needs no lock of its own.
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (isAddress ? SQLITE_OPEN_URI : 0);
    if (sqlite3_open_v2(location.c_str(), &handle_, flags, nullptr) != SQLITE_OK) {
        const EngineError error = handle_ ? errorOf(sqlite3_errcode(handle_)) : EngineError::Failed;
        sqlite3_close_v2(handle_);
        fail(error, u"The database file cannot be opened.");
    }
    sqlite3_extended_result_codes(handle_, 1);
    sqlite3_busy_timeout(handle_, kBusyMilliseconds);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_set_authorizer(handle_, &SqliteConnection::authorize, this);
    sqlite3_create_function(handle_, "log_file_version", 0, SQLITE_UTF8 | SQLITE_DIRECTONLY, this,
                            &SqliteConnection::answerFileVersion, nullptr, nullptr);
}

SqliteConnection::~SqliteConnection() {
    begin_ = {};
    commit_ = {};
    sqlite3_close_v2(handle_);
}

SqliteStatement SqliteConnection::prepare(std::u16string_view sql) {
    return SqliteStatement(*this, base::toUtf8(sql));
}

SqliteStatement SqliteConnection::prepareNoting(std::u16string_view sql, TouchedTables& touched) {
    struct Noting {
        TouchedTables*& slot;
        ~Noting() { slot = nullptr; }
    } noting{touched_};
    touched_ = &touched;
    return prepare(sql);
}

void SqliteConnection::run(std::string_view sql) { prepare(sql).run(); }

void SqliteConnection::runPrepared(SqliteStatement& statement, std::string_view sql) {
    if (!statement) statement = prepare(sql);
    statement.run();
}

std::int64_t SqliteConnection::integer(std::string_view sql) {
    SqliteStatement statement = prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t SqliteConnection::fileVersion() const noexcept {
    unsigned version = 0;
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_DATA_VERSION, &version); // cannot fail for "main"
    return version;
}

std::int64_t SqliteConnection::changes() const noexcept { return sqlite3_changes(handle_); }

bool SqliteConnection::inTransaction() const noexcept { return sqlite3_get_autocommit(handle_) == 0; }

bool SqliteConnection::isReadOnly() const noexcept { return sqlite3_db_readonly(handle_, "main") != 0; }

void SqliteConnection::readEncoding() {
    utf8_ = true; // the answer is ASCII
    SqliteStatement statement = prepare("pragma encoding");
    utf8_ = !statement.step() || statement.text(0) == u"UTF-8";
}

void SqliteConnection::failWithLast() const {
    const char* message = sqlite3_errmsg(handle_);
    fail(errorOf(sqlite3_extended_errcode(handle_)),
         base::fromUtf8(message ? message : "The database failed."));
}

int SqliteConnection::lastResult() const noexcept { return sqlite3_extended_errcode(handle_); }

int SqliteConnection::authorize(void* self, int action, const char* first, const char*, const char*,
                                const char*) {
    TouchedTables* touched = static_cast<SqliteConnection*>(self)->touched_;
    if (!touched) return SQLITE_OK;
    const bool deletes = action == SQLITE_DELETE;
    const bool reads = action == SQLITE_READ || action == SQLITE_SELECT || action == SQLITE_FUNCTION;
    if (!deletes && !reads) touched->onlyDeletes = false;
    if (first && (deletes || action == SQLITE_UPDATE || action == SQLITE_DROP_TABLE)) {
        try {
            touched->names.push_back(base::fromUtf8(first));
        } catch (...) {
            return SQLITE_DENY;
        }
    }
    return SQLITE_OK;
}

void SqliteConnection::answerFileVersion(sqlite3_context* context, int, sqlite3_value**) {
    const auto* connection = static_cast<const SqliteConnection*>(sqlite3_user_data(context));
    sqlite3_result_int64(context, connection->fileVersion());
}

SqliteTransaction::SqliteTransaction(SqliteConnection& connection)
    : connection_(connection), nested_(connection.inTransaction()) {
    if (nested_)
        connection_.run("savepoint log_part");
    else
        connection_.begin();
}

SqliteTransaction::~SqliteTransaction() {
    if (!open_ || !connection_.inTransaction()) return;
    try {
        connection_.run(nested_ ? "rollback to log_part" : "rollback");
        if (nested_) connection_.run("release log_part");
    } catch (const automation::AutomationError&) {
        // The library rolls back by itself at the latest when the connection is closed.
    }
}

void SqliteTransaction::commit() {
    if (nested_)
        connection_.run("release log_part");
    else
        connection_.commit();
    open_ = false;
}

std::u16string quotedName(std::u16string_view name) { return quoted(name, u'"'); }

std::u16string quotedText(std::u16string_view text) { return quoted(text, u'\''); }

} // namespace cvlog::store
