#include "workbench/report/progress_window.h"

#include <string>

namespace workbench::report {

namespace {

constexpr ULONGLONG kShortWork = 500; // milliseconds without a window
constexpr ULONGLONG kLookEvery = 40;
constexpr wchar_t kClassName[] = L"TLReportProgress";
constexpr int kCancel = 1;

HINSTANCE thisLibrary() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       kClassName, &module);
    return module;
}

HWND addChild(HWND parent, const wchar_t* kind, const wchar_t* text, DWORD style, RECT place, int id) {
    const HWND child =
        CreateWindowExW(0, kind, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), thisLibrary(), nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return child;
}

} // namespace

ProgressWindow::~ProgressWindow() {
    if (window_) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
    UnregisterClassW(kClassName, thisLibrary()); // another one may have it open still; it stays then
}

LRESULT CALLBACK ProgressWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const bool cancels = message == WM_CLOSE || (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED);
    if (self && cancels) {
        self->interrupted_ = true;
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void ProgressWindow::open() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.hInstance = thisLibrary();
    kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    kind.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    kind.lpszClassName = kClassName;
    RegisterClassW(&kind); // fails harmlessly when it is registered
    const int width = 360;
    const int height = 130;
    window_ = CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_TOPMOST, kClassName, L"Report",
                              WS_POPUP | WS_CAPTION | WS_SYSMENU, (GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                              (GetSystemMetrics(SM_CYSCREEN) - height) / 2, width, height, nullptr, nullptr,
                              thisLibrary(), nullptr);
    refused_ = !window_;
    if (refused_) {
        return;
    }
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    text_ = addChild(window_, L"STATIC", L"", SS_CENTER, {10, 15, width - 20, 40}, 0);
    addChild(window_, L"BUTTON", L"Cancel", WS_TABSTOP, {width / 2 - 50, 50, width / 2 + 40, 78}, kCancel);
    ShowWindow(window_, SW_SHOWNA);
}

void ProgressWindow::handleMessages() {
    MSG message;
    while (window_ && PeekMessageW(&message, window_, 0, 0, PM_REMOVE)) {
        noteKey(message);
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    // The window does not take the focus: keys go to one that cannot act on them now, and must not do so later.
    while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        noteKey(message);
    }
}

void ProgressWindow::noteKey(const MSG& message) {
    interrupted_ = interrupted_ || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE);
}

bool ProgressWindow::show(long done, long all) {
    const ULONGLONG now = GetTickCount64();
    if (interrupted_ || refused_ || now - started_ < kShortWork || now - looked_ < kLookEvery) {
        return !interrupted_;
    }
    looked_ = now;
    if (!window_) {
        open();
    }
    SetWindowTextW(text_, (std::to_wstring(done) + L" of " + std::to_wstring(all) + L" rows").c_str());
    handleMessages();
    return !interrupted_;
}

} // namespace workbench::report
