#include "platform/win32/window_messages.h"

#include "platform/win32/windows_headers.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

void WindowMessages::postKeyDown(std::int32_t window, std::int16_t code) {
    const auto handle = reinterpret_cast<HWND>(static_cast<std::intptr_t>(window));
    // No window and the handle of all windows are no targets, although the call below would take both.
    if (!IsWindow(handle)) throw std::invalid_argument("no window");
    if (!PostMessageW(handle, WM_KEYDOWN, static_cast<WPARAM>(code), 1))
        throw std::runtime_error("the message was not posted");
}

} // namespace cvlog::platform::win32
