#pragma once

#include <windows.h>

namespace cvlog::tests {

/// The open menu of this thread, or null.
inline HWND menuWindow() {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, L"#32768", nullptr)))
        if (IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId()) break;
    return found;
}

/// As a keyboard does it: the message comes through the system to the window with the focus.
inline void pressKey(WORD key, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    SendInput(1, &input, sizeof input);
}

inline void typeKey(WORD key) {
    pressKey(key, true);
    pressKey(key, false);
}

} // namespace cvlog::tests
