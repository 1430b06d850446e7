#include "workbench/showcase.h"

#include "workbench/com_call.h"
#include "workbench/console.h"
#include "workbench/existing_file.h"
#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/output_file.h"

namespace workbench {

namespace {} // namespace

void Showcase::paint() {
    FrameWindow& frame = application_.frame();
    frame.pump();
    RedrawWindow(frame.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const ULONGLONG painted = GetTickCount64();
    frame.runUntil([&] { return GetTickCount64() - painted >= kSettleMilliseconds; });
}

void Showcase::show(const std::wstring& line) {
    paint();
    writeFile(readyFile_, line);
    application_.frame().runUntil([&] { return !exists(readyFile_); });
}

void Showcase::attempt(const wchar_t* what, const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        writeLine(STD_ERROR_HANDLE, std::wstring(L"No picture of ") + what + L": " + failure.message());
    }
}

void Showcase::showPlaces() {
    attempt(L"the log's places", [&] { showBothPlaces(); });
    application_.showOptions();
    show(L"options");
    application_.closeOptions();
}

void Showcase::showBothPlaces() {
    IDispatch* const log = application_.log();
    const Variant before = get(log, L"Docked");
    showLog(L"docked", true);
    showLog(L"floating", false);
    showTwo();
    put(log, L"Docked", before); // the log remembers it in the project's options
}

void Showcase::showLog(const wchar_t* picture, bool docked) {
    put(application_.log(), L"Docked", docked);
    call(application_.log(), L"SetFocus");
    show(picture);
}

void Showcase::showTwo() {
    put(application_.log(), L"Docked", true);
    ToolWindow& second = application_.tools().open(ToolKind::kMdiChild);
    SendMessageW(application_.frame().handle(), WM_COMMAND, IDM_TOOL_ADD_LOG, 0);
    SendMessageW(application_.frame().handle(), WM_COMMAND, IDM_TILE, 0);
    show(L"two");
    application_.tools().close(second);
}

} // namespace workbench
