#include "store/sqlite_file.h"

#include "automation/error.h"
#include "base/text.h"
#include "store/engine_error.h"
#include "store/file_kind.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace cvlog::store {

namespace {

// A file up to this size is checked whole at each opening; it takes a few milliseconds.
constexpr std::int64_t kCheckedBytes = 1024 * 1024;
// The log is moved into the file, which is what waits for the disk, once it has grown to this.
constexpr std::int64_t kLogBytes = 16 * 1024 * 1024;

std::string fullPath(sqlite3_vfs& system, const std::string& path) {
    std::string full(static_cast<std::size_t>(system.mxPathname) + 1, '\0');
    const int result = system.xFullPathname(&system, path.c_str(), system.mxPathname, full.data());
    if ((result & 0xFF) != SQLITE_OK) // the low byte: "OK, but a symbolic link" is no failure
        fail(EngineError::FileNotFound, u"The path of the database file cannot be used.");
    full.resize(full.find('\0'));
    return full;
}

class RawFile {
public:
    RawFile(sqlite3_vfs& system, const std::string& path)
        : memory_(static_cast<std::size_t>(system.szOsFile)) {
        name_ = sqlite3_create_filename(path.c_str(), "", "", 0, nullptr);
        const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB;
        if (!name_ || system.xOpen(&system, name_, file(), flags, nullptr) != SQLITE_OK) {
            close();
            fail(EngineError::FileNotFound, u"Could not find or open the database file.");
        }
    }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;
    ~RawFile() { close(); }

    std::int64_t size() {
        sqlite3_int64 size = 0;
        if (file()->pMethods->xFileSize(file(), &size) != SQLITE_OK || size < 0)
            fail(EngineError::CannotOpen, u"The database file cannot be read.");
        return size;
    }

    std::vector<std::byte> read(std::size_t count) {
        std::vector<std::byte> bytes(std::min(count, static_cast<std::size_t>(size())));
        if (!bytes.empty() &&
            file()->pMethods->xRead(file(), bytes.data(), static_cast<int>(bytes.size()), 0) != SQLITE_OK)
            fail(EngineError::CannotOpen, u"The database file cannot be read.");
        return bytes;
    }

private:
    sqlite3_file* file() { return reinterpret_cast<sqlite3_file*>(memory_.data()); }
    void close() {
        if (file()->pMethods) file()->pMethods->xClose(file());
        sqlite3_free_filename(name_);
    }

    std::vector<std::max_align_t> memory_; // longer than needed, and aligned
    sqlite3_filename name_ = nullptr;
};

// What a check finds in rows that break a rule of their table: the file is whole all the same.
bool isAboutContent(const std::u16string& finding) {
    static constexpr std::array<std::u16string_view, 4> kContent = {
        u"NULL value in", u"CHECK constraint failed", u"non-", u"TEXT value in"};
    const std::u16string_view text(finding);
    return finding == u"ok" || std::any_of(kContent.begin(), kContent.end(), [&](std::u16string_view start) {
               return text.starts_with(start);
           });
}

void requireWhole(SqliteConnection& connection) {
    connection.run("select count(*) from sqlite_master");
    const std::int64_t bytes =
        connection.integer("pragma page_count") * connection.integer("pragma page_size");
    if (bytes > kCheckedBytes) return;
    SqliteStatement check = connection.prepare("pragma quick_check");
    while (check.step())
        if (const std::u16string finding = check.text(0); !isAboutContent(finding))
            fail(EngineError::Damaged, u"The database file is damaged: " + finding);
}

void chooseJournal(SqliteConnection& connection) {
    try {
        SqliteStatement statement = connection.prepare("pragma journal_mode = wal");
        const bool changed = statement.step() && statement.text(0) == u"wal";
        statement.reset();
        if (!changed) return; // another journal keeps its full flushes
        connection.run("pragma synchronous = normal");
        const std::int64_t pageSize = std::max<std::int64_t>(connection.integer("pragma page_size"), 512);
        const std::string pages = std::to_string(std::max<std::int64_t>(kLogBytes / pageSize, 1000));
        connection.run("pragma wal_autocheckpoint = " + pages);
    } catch (const automation::AutomationError&) {
        // A file that cannot be changed, or that another program keeps busy, is used with the journal it has.
    }
}

std::unique_ptr<SqliteConnection> openChecked(const std::string& location, bool isAddress) {
    auto connection = std::make_unique<SqliteConnection>(location, isAddress);
    connection->run("pragma cell_size_check = on");
    requireWhole(*connection);
    connection->readEncoding();
    return connection;
}

// A log of changes that the file may have to be completed from; an empty one does not count.
bool hasCompanion(sqlite3_vfs& system, const std::string& path, const char* ending) {
    int exists = 1;
    const std::string companion = path + ending;
    return system.xAccess(&system, companion.c_str(), SQLITE_ACCESS_EXISTS, &exists) != SQLITE_OK || exists;
}

// The library fills a last page that is cut with zeros.
void requireDatabaseFile(sqlite3_vfs& system, const std::string& path) {
    RawFile file(system, path);
    const std::vector<std::byte> start = file.read(kFileKindBytes);
    if (fileKind(start) != FileKind::Sqlite || start.size() < kFileKindBytes)
        fail(EngineError::UnknownFormat, u"Unrecognized database format.");
    const int stated = std::to_integer<int>(start[16]) * 256 + std::to_integer<int>(start[17]);
    const int pageSize = stated == 1 ? 65536 : stated;
    const bool complete = pageSize >= 512 && file.size() % pageSize == 0;
    if (!complete && !hasCompanion(system, path, "-wal") && !hasCompanion(system, path, "-journal"))
        fail(EngineError::Damaged, u"The database file is cut off.");
}

std::string unchangingAddress(const std::string& path) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string address = path.starts_with('/') || path.starts_with('\\') ? "file:" : "file:///";
    for (const char unit : path) {
        if (unit == '%' || unit == '?' || unit == '#') {
            address += '%';
            address += kDigits[static_cast<unsigned char>(unit) >> 4];
            address += kDigits[static_cast<unsigned char>(unit) & 15];
        } else {
            address += unit == '\\' ? '/' : unit;
        }
    }
    return address + "?immutable=1";
}

bool isAccessFailure(const automation::AutomationError& error) {
    return error.code() == errorCode(EngineError::ReadOnly) ||
           error.code() == errorCode(EngineError::CannotOpen);
}

sqlite3_vfs& defaultSystem() {
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
    if (!system) fail(EngineError::Failed, u"The database library is not available.");
    return *system;
}

} // namespace

std::vector<std::byte> readFileStart(const std::string& path, std::size_t count) {
    sqlite3_vfs& system = defaultSystem();
    return RawFile(system, fullPath(system, path)).read(count);
}

std::unique_ptr<SqliteConnection> openSqliteFile(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        fail(EngineError::FileNotFound, u"The path of the database file cannot be used.");
    sqlite3_vfs& system = defaultSystem();
    const std::string full = fullPath(system, path);
    requireDatabaseFile(system, full);
    std::unique_ptr<SqliteConnection> connection;
    try {
        connection = openChecked(path, false);
    } catch (const automation::AutomationError& error) {
        // In a folder that cannot be written a file with a write-ahead log does not open, as its companions
        // cannot be made. Without a log beside it nobody is writing: it may be read as a file that does not
        // change.
        if (!isAccessFailure(error) || hasCompanion(system, full, "-wal")) throw;
        return openChecked(unchangingAddress(full), true);
    }
    chooseJournal(*connection);
    return connection;
}

} // namespace cvlog::store
