#include "workbench/output_file.h"

#include <windows.h>

#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

void writeFile(const std::wstring& path, const std::wstring& lines) {
    // Written aside and renamed, so that who waits for the file finds it whole.
    const std::wstring draft = path + L".new";
    const HANDLE file = CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw Failure(path + L": the file cannot be written");
    }
    const std::string bytes = toUtf8(lines) + "\n";
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    if (!done || !MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        throw Failure(path + L": the file cannot be written");
    }
}

} // namespace workbench
