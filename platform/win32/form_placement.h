#pragma once

#include "platform/win32/windows_headers.h"
#include "widgets/form.h"

namespace cvlog::platform::win32 {

// Where a top-level window is: in pixels of the screen, frame included.

/// Where the window is in its normal state, whatever its state is now.
RECT normalPlacement(HWND window) noexcept;
/// Changes that, and leaves the state.
void setNormalPlacement(HWND window, const RECT& area) noexcept;

/// The state that the window has, or will have when it is no longer minimised.
widgets::WindowState windowState(HWND window) noexcept;
/// Changes that; a minimised window stays so.
void setWindowState(HWND window, widgets::WindowState state) noexcept;

/// The size of the window, with its frame at a resolution, round that client area.
SIZE sizeAround(HWND window, SIZE client, int dpi) noexcept;

/// In the middle of the owner, or of the monitor that its owner or the active window is on; on the monitor anyway.
RECT centredPlacement(HWND window, HWND owner) noexcept;

} // namespace cvlog::platform::win32
