#pragma once

#include "base/area.h"
#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// The resolution of the whole screen, in pixels an inch.
int screenDpi() noexcept;

/// The resolution a window is shown at; that of the screen where the system knows no other.
int windowDpi(HWND window) noexcept;

/// The nearest whole pixel; but something visible never becomes nothing.
int toPixels(base::Twips twips, int dpi) noexcept;
base::Twips toTwips(int pixels, int dpi) noexcept;

/// An area by its edges, which may be negative: neighbours in twips are neighbours in pixels.
RECT toPixels(const base::Area& area, int dpi) noexcept;
base::Area toTwips(const RECT& area, int dpi) noexcept;

} // namespace cvlog::platform::win32
