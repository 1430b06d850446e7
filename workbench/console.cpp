#include "workbench/console.h"

#include "workbench/text.h"

namespace workbench {

void writeLine(DWORD stream, const std::wstring& line) {
    HANDLE file = GetStdHandle(stream);
    const bool borrowed = file && file != INVALID_HANDLE_VALUE;
    if (!borrowed) {
        AttachConsole(ATTACH_PARENT_PROCESS); // fails harmlessly when attached, or when there is none
        file = CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return;
        }
    }
    const std::string bytes = toUtf8(line) + "\r\n";
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (!borrowed) {
        CloseHandle(file);
    }
}

} // namespace workbench
