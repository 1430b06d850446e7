#include "platform/win32/form_modal.h"

#include "platform/win32/firewall.h"

namespace cvlog::platform::win32 {

namespace {

BOOL CALLBACK collectWindow(HWND window, LPARAM collected) {
    return firewall(FALSE, [&] {
        if (IsWindowVisible(window) && IsWindowEnabled(window))
            reinterpret_cast<std::vector<HWND>*>(collected)->push_back(window);
        return TRUE;
    });
}

bool takesInput(HWND window) noexcept { return window && IsWindowVisible(window) && IsWindowEnabled(window); }

/// Enter and Esc go to where the focus is when no button stands for them.
bool isForForm(HWND form, const MSG& message) noexcept {
    if (message.message != WM_KEYDOWN) return true;
    if (message.wParam == VK_RETURN) return HIWORD(SendMessageW(form, DM_GETDEFID, 0, 0)) == DC_HASDEFID;
    return message.wParam != VK_ESCAPE || GetDlgItem(form, IDCANCEL);
}

} // namespace

ModalRun::ModalRun(HWND window) : window_(window), activeBefore_(GetActiveWindow()) {
    EnumThreadWindows(GetCurrentThreadId(), collectWindow, reinterpret_cast<LPARAM>(&disabled_));
    std::erase(disabled_, window_);
    for (const HWND other : disabled_) EnableWindow(other, FALSE);
}

void ModalRun::end() noexcept {
    if (ended_) return;
    ended_ = true;
    for (const HWND other : disabled_) EnableWindow(other, TRUE);
    if (GetActiveWindow() == window_) activateNext();
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0); // the run may be waiting for a message
}

void ModalRun::activateNext() const noexcept {
    for (const HWND next : {GetWindow(window_, GW_OWNER), activeBefore_})
        if (next != window_ && takesInput(next)) {
            SetActiveWindow(next);
            return;
        }
}

bool ModalRun::takeMessages() {
    MSG message;
    while (!ended_) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        if (isForForm(window_, message) && IsDialogMessageW(window_, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace cvlog::platform::win32
