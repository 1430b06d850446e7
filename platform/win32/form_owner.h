#pragma once

#include "platform/win32/windows_headers.h"

#include <cstdint>

namespace cvlog::platform::win32 {

/// The top-level window that a window handle names or lies in; null for 0. Throws std::runtime_error when there
/// is no such window, or it is none that a user can see.
HWND ownerWindow(std::int32_t handle);

/// Puts a top-level window in front of its owner, with which it goes; null: of none. Throws std::runtime_error
/// when the system refuses.
void setOwner(HWND window, HWND owner);

/// Before an active window goes: makes its owner the active one though that takes no input. The system would bring
/// some other window to the front instead, another program's perhaps.
void activateFrozenOwner(HWND window) noexcept;

} // namespace cvlog::platform::win32
