#include "platform/win32/host_window.h"

#include <stdexcept>

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
    const bool isChild = (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0;
    // Either way it goes with this window when no message comes any more.
    if (isChild)
        SetParent(window, window_);
    else
        SetWindowLongPtrW(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(window_));
    PostMessageW(window_, kDestroyMessage, 0, reinterpret_cast<LPARAM>(window));
}

bool HostWindow::isOurs(HWND window) const noexcept {
    return IsChild(window_, window) || GetWindow(window, GW_OWNER) == window_;
}

UINT_PTR HostWindow::startTimer(UINT milliseconds, TimerReceiver& receiver) {
    const UINT_PTR timer = lastTimer_ + 1;
    timers_.emplace(timer, &receiver);
    if (!window_ || !SetTimer(window_, timer, milliseconds, nullptr)) {
        timers_.erase(timer);
        throw std::runtime_error("no timer");
    }
    lastTimer_ = timer;
    return timer;
}

void HostWindow::stopTimer(UINT_PTR timer) noexcept {
    if (timers_.erase(timer) > 0) KillTimer(window_, timer);
}

LRESULT HostWindow::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case kDestroyMessage: {
        const HWND doomed = reinterpret_cast<HWND>(lParam);
        if (isOurs(doomed)) DestroyWindow(doomed);
        return 0;
    }
    case WM_TIMER:
        if (const auto found = timers_.find(wParam); found != timers_.end()) found->second->timeCame();
        return 0; // this window may be gone
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
