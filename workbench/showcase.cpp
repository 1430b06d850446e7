#include "workbench/showcase.h"

#include "workbench/com_call.h"
#include "workbench/console.h"
#include "workbench/failure.h"
#include "workbench/output_file.h"

namespace workbench {

namespace {

constexpr ULONGLONG kSettleMilliseconds = 300;

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

} // namespace

void Showcase::show(const std::wstring& line) {
    FrameWindow& frame = application_.frame();
    frame.pump();
    RedrawWindow(frame.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const ULONGLONG painted = GetTickCount64();
    frame.runUntil([&] { return GetTickCount64() - painted >= kSettleMilliseconds; });

    writeFile(readyFile_, line);
    frame.runUntil([&] { return !exists(readyFile_); });
}

void Showcase::showPlaces() {
    showLog(L"docked", true);
    showLog(L"floating", false);
    application_.showOptions();
    show(L"options");
    application_.closeOptions();
}

void Showcase::showLog(const wchar_t* picture, bool docked) {
    try {
        put(application_.log(), L"Visible", true);
        put(application_.log(), L"Docked", docked);
        call(application_.log(), L"SetFocus");
    } catch (const Failure& failure) {
        writeLine(STD_ERROR_HANDLE, std::wstring(L"No picture \"") + picture + L"\": " + failure.message());
        return;
    }
    show(picture);
}

} // namespace workbench
