#include "workbench/frame_window.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/mouse_pointer.h"
#include "workbench/screen_scale.h"

namespace workbench {

namespace {

constexpr const wchar_t* kFrameClass = L"WorkbenchFrame";
constexpr UINT kUpdateStatus = WM_APP;
constexpr int kWindowMenu = 4; // its place in the menu bar; the open windows are listed at its end

void registerFrameClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hIcon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_WORKBENCH));
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    description.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN_MENU);
    description.lpszClassName = kFrameClass;
    RegisterClassExW(&description);
}

bool isKey(const MSG& message) { return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST; }

} // namespace

FrameWindow::FrameWindow(const std::wstring& title) {
    registerFrameClass(&FrameWindow::windowProcedure);
    CreateWindowExW(0, kFrameClass, title.c_str(), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleW(nullptr),
                    this);
    if (!window_) {
        throw Failure(L"The main window cannot be created");
    }
    accelerators_ = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    RECT desktop{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &desktop, 0);
    SetWindowPos(window_, nullptr, desktop.left, desktop.top,
                 std::min(scaled(window_, 1240), static_cast<int>(desktop.right - desktop.left)),
                 std::min(scaled(window_, 800), static_cast<int>(desktop.bottom - desktop.top)),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    createParts();
    layOut();
}

FrameWindow::~FrameWindow() {
    onLeave = nullptr;
    DestroyWindow(window_);
}

void FrameWindow::createParts() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    CLIENTCREATESTRUCT windows{GetSubMenu(GetMenu(window_), kWindowMenu), IDM_WINDOW_FIRST};
    client_ = CreateWindowExW(WS_EX_CLIENTEDGE, L"MDICLIENT", nullptr,
                              WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0,
                              window_, nullptr, instance, &windows);
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                              0, window_, nullptr, instance, nullptr);
    if (!client_ || !status_) {
        throw Failure(L"The main window cannot be furnished");
    }
}

void FrameWindow::show() {
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    UpdateWindow(window_);
}

void FrameWindow::layOut() {
    if (!status_) {
        return;
    }
    SendMessageW(status_, WM_SIZE, 0, 0);
    RECT area;
    GetClientRect(window_, &area);
    const int right = area.right;
    const int parts[kParts] = {right - scaled(window_, 470), right - scaled(window_, 330),
                               right - scaled(window_, 220), -1};
    SendMessageW(status_, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(parts));
    RECT bar;
    GetWindowRect(status_, &bar);
    MoveWindow(client_, 0, 0, right, area.bottom - (bar.bottom - bar.top), TRUE);
}

void FrameWindow::showStatus(Part part, const std::wstring& text) {
    texts_[part] = text;
    if (!std::exchange(statusIsOld_, true)) {
        PostMessageW(window_, kUpdateStatus, 0, 0);
    }
}

void FrameWindow::updateStatus() {
    statusIsOld_ = false;
    for (int part = 0; part < kParts; ++part) {
        SendMessageW(status_, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(texts_[part].c_str()));
    }
}

void FrameWindow::setPointer(int pointer) {
    pointer_ = pointer;
    SetCursor(cursorFor(pointer));
}

bool FrameWindow::translateKey(MSG& message) {
    const bool inside = message.hwnd == window_ || IsChild(window_, message.hwnd);
    return isKey(message) && ((inside && TranslateMDISysAccel(client_, &message)) ||
                              TranslateAcceleratorW(window_, accelerators_, &message));
}

void FrameWindow::pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            closed_ = true;
        } else if (!onMessage || !onMessage(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

bool FrameWindow::runUntil(const std::function<bool()>& done) {
    for (;;) {
        pump();
        if (closed_) {
            return false;
        }
        if (done()) {
            return true;
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, 50, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

/// True when the item was the workbench's; the others are the system's, such as the list of windows.
bool FrameWindow::command(WPARAM wParam) {
    switch (const WORD id = LOWORD(wParam)) {
    case IDM_CASCADE:
        SendMessageW(client_, WM_MDICASCADE, 0, 0);
        return true;
    case IDM_TILE:
        SendMessageW(client_, WM_MDITILE, MDITILE_HORIZONTAL, 0);
        return true;
    case IDM_ARRANGE:
        SendMessageW(client_, WM_MDIICONARRANGE, 0, 0);
        return true;
    default:
        if (id >= IDM_WINDOW_FIRST || !onCommand) {
            return false;
        }
        onCommand(id);
        return true;
    }
}

LRESULT FrameWindow::usual(UINT message, WPARAM wParam, LPARAM lParam) const {
    return DefFrameProcW(window_, client_, message, wParam, lParam);
}

void FrameWindow::moveTo(const RECT& area) {
    SetWindowPos(window_, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT FrameWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        layOut(); // and not the usual, which would give the status bar's place to the client
        return 0;
    case WM_COMMAND:
        if (command(wParam)) {
            return 0;
        }
        break;
    case WM_INITMENUPOPUP:
        if (!HIWORD(lParam) && onMenuOpens) {
            onMenuOpens(reinterpret_cast<HMENU>(wParam));
        }
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && onLeave) {
            onLeave();
        }
        break;
    case kUpdateStatus:
        updateStatus();
        return 0;
    case WM_SETCURSOR:
        if (showUnusual(pointer_)) {
            return TRUE;
        }
        break;
    case WM_DPICHANGED:
        moveTo(*reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_CLOSE:
        closed_ = true; // the window goes after its tool windows and the log, see Application
        return 0;
    default:
        break;
    }
    return usual(message, wParam, lParam);
}

LRESULT CALLBACK FrameWindow::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<FrameWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<FrameWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    try {
        return self ? self->handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
    } catch (const Failure& failure) {
        self->showStatus(kNews, failure.message());
    } catch (const std::exception&) {
        self->showStatus(kNews, L"Out of memory");
    }
    return 0;
}

} // namespace workbench
