#include "workbench/main_window.h"

#include <commctrl.h>

#include "workbench/failure.h"
#include "workbench/menu_ids.h"

namespace workbench {

namespace {

constexpr const wchar_t* kClassName = L"WorkbenchMainWindow";
constexpr int kUsualDpi = 96;

void registerClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    description.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN_MENU);
    description.lpszClassName = kClassName;
    RegisterClassExW(&description);
}

HCURSOR cursorFor(int pointer) {
    switch (pointer) {
    case 11:
        return LoadCursorW(nullptr, IDC_WAIT);
    case 13:
        return LoadCursorW(nullptr, IDC_APPSTARTING);
    default:
        return LoadCursorW(nullptr, IDC_ARROW);
    }
}

} // namespace

MainWindow::MainWindow(const std::wstring& title) {
    registerClass(&MainWindow::windowProcedure);
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    CreateWindowExW(WS_EX_CONTROLPARENT, kClassName, title.c_str(), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance,
                    this);
    if (!window_) {
        throw Failure(L"The main window cannot be created");
    }
    SetWindowPos(window_, nullptr, 0, 0, scaled(960), scaled(600),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                              0, window_, nullptr, instance, nullptr);
    layOut();
}

MainWindow::~MainWindow() {
    container_.reset();
    DestroyWindow(window_);
}

void MainWindow::createControl(const wchar_t* progId) {
    if (container_) {
        throw Failure(L"The window has its control already");
    }
    RECT client;
    GetClientRect(window_, &client);
    container_ = std::make_unique<ControlContainer>(window_, progId, client);
    layOut();
}

void MainWindow::show() {
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    UpdateWindow(window_);
}

int MainWindow::scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(GetDpiForWindow(window_)), kUsualDpi);
}

void MainWindow::layOut() {
    RECT client;
    GetClientRect(window_, &client);
    if (status_) {
        SendMessageW(status_, WM_SIZE, 0, 0);
        const int parts[] = {(client.right - client.left) / 2, -1};
        SendMessageW(status_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(parts));
        RECT bar;
        GetWindowRect(status_, &bar);
        client.bottom -= bar.bottom - bar.top;
    }
    if (container_ && client.bottom > client.top) {
        container_->place(client);
    }
}

void MainWindow::focusControl() {
    if (container_) {
        container_->focus();
    }
}

void MainWindow::showEvent(const std::wstring& text) {
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void MainWindow::showCounts(const std::wstring& text) {
    SendMessageW(status_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(text.c_str()));
}

void MainWindow::setPointer(int pointer) {
    pointer_ = pointer;
    SetCursor(cursorFor(pointer));
}

void MainWindow::pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            closed_ = true;
        } else if (!container_ || !container_->translate(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

bool MainWindow::runUntil(const std::function<bool()>& done) {
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

void MainWindow::command(WORD id) {
    if (id == IDM_REPLAY && onReplay) {
        onReplay();
    } else if (id == IDM_EXIT) {
        closed_ = true;
    }
}

LRESULT MainWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        focusControl();
        return 0;
    case WM_COMMAND:
        command(LOWORD(wParam));
        return 0;
    case WM_SETCURSOR:
        if (pointer_ != 0) {
            SetCursor(cursorFor(pointer_));
            return TRUE;
        }
        break;
    case WM_DPICHANGED: {
        const auto& area = *reinterpret_cast<const RECT*>(lParam);
        SetWindowPos(window_, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_CLOSE:
        closed_ = true; // the window goes after the control and the log, see Application
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT CALLBACK MainWindow::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<MainWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    try {
        return self ? self->handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
    } catch (const Failure& failure) {
        self->showEvent(failure.message());
    } catch (const std::exception&) {
        self->showEvent(L"Out of memory");
    }
    return 0;
}

} // namespace workbench
