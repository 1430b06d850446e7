#include "platform/win32/host_window.h"

namespace cvlog::platform::win32 {

namespace {

constexpr UINT kDestroyMessage = WM_APP + 1; // LPARAM: the window

} // namespace

HostWindow::HostWindow() {
    window_ = makeOwnWindow(*this, WS_POPUP | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW, nullptr);
}

HostWindow::~HostWindow() {
    if (window_) DestroyWindow(window_);
}

void HostWindow::destroyLater(HWND window) noexcept {
    ShowWindow(window, SW_HIDE);
    SetParent(window, window_);
    PostMessageW(window_, kDestroyMessage, 0, reinterpret_cast<LPARAM>(window));
}

LRESULT HostWindow::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case kDestroyMessage: {
        const HWND child = reinterpret_cast<HWND>(lParam);
        if (IsChild(window, child)) DestroyWindow(child);
        return 0;
    }
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE: {
        const std::vector<HWND> told = listeners_;
        for (const HWND listener : told) SendMessageW(listener, message, wParam, lParam);
        break;
    }
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace cvlog::platform::win32
