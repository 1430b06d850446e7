#pragma once

#include <windows.h>

#include <cmath>

namespace workbench {

/// Lengths at a window's own resolution. Automation counts in twips, of which an inch has 1440; drawings here
/// are thought of in pixels of the usual 96 an inch.
inline int scaled(HWND window, int pixels) {
    return MulDiv(pixels, static_cast<int>(GetDpiForWindow(window)), 96);
}

inline int toPixels(HWND window, double twips) {
    return static_cast<int>(std::lround(twips * GetDpiForWindow(window) / 1440));
}

/// Moves a window to the middle of another.
inline void centreOver(HWND window, HWND over) {
    RECT area;
    RECT around;
    GetWindowRect(window, &area);
    GetWindowRect(over, &around);
    SetWindowPos(window, nullptr, (around.left + around.right - area.right + area.left) / 2,
                 (around.top + around.bottom - area.bottom + area.top) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

inline double toTwips(HWND window, int pixels) { return pixels * 1440.0 / GetDpiForWindow(window); }

} // namespace workbench
