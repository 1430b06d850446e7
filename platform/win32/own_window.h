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

/// Makes a window of our one window class, which is registered on the way. The handler must live until
/// `windowGone`. Throws std::runtime_error when the system makes no window.
HWND makeOwnWindow(MessageHandler& handler, DWORD style, DWORD extendedStyle, HWND parent);

/// Gives the window class back if no window of it is left, so that the module can be unloaded.
void releaseOwnWindowClass() noexcept;

} // namespace cvlog::platform::win32
