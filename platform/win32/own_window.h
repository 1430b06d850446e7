#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// Receives the messages of a window of ours, behind a firewall. `windowGone` is the last call and comes
/// once.
class MessageHandler {
public:
    virtual LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    virtual void windowGone() noexcept = 0;

protected:
    ~MessageHandler() = default;
};

/// The window class of our own windows. It is the process's, whatever the number of apartments: the first of these
/// registers it and the last one gives it back, so that the module can be unloaded.
class OwnWindowClass {
public:
    /// Throws std::runtime_error when the system does not take the class.
    OwnWindowClass();
    ~OwnWindowClass();
    OwnWindowClass(const OwnWindowClass&) = delete;
    OwnWindowClass& operator=(const OwnWindowClass&) = delete;
};

/// Makes a window of our class, which somebody must hold until it is gone. The handler must live until `windowGone`. It
/// is empty, or where and as large as the system chooses. Throws std::runtime_error when the system makes no window.
HWND makeOwnWindow(MessageHandler& handler, DWORD style, DWORD extendedStyle, HWND parent,
                   bool placedBySystem = false);

} // namespace cvlog::platform::win32
