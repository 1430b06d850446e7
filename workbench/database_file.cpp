#include "workbench/database_file.h"

#include <windows.h>

#include <sqlite3.h>

#include <memory>

#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

void createDatabaseIfMissing(const std::wstring& path) {
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return;
    }
    sqlite3* opened = nullptr;
    int result = sqlite3_open(toUtf8(path).c_str(), &opened);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
    if (result == SQLITE_OK) {
        // UTF-16 keeps every text as the log wrote it.
        result = sqlite3_exec(opened,
                              "pragma encoding = 'UTF-16le';"
                              "create table LogInfo (MethodName text, ObjectName text, ObjectType text,"
                              " LogMessage text, ReturnMessage text);",
                              nullptr, nullptr, nullptr);
    }
    if (result != SQLITE_OK) {
        throw Failure(path + L": the database cannot be created: " + fromUtf8(sqlite3_errmsg(opened)));
    }
}

} // namespace workbench
