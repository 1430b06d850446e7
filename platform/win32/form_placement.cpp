#include "platform/win32/form_placement.h"

#include <algorithm>

namespace cvlog::platform::win32 {

namespace {

using AdjustForDpiCall = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);

AdjustForDpiCall findAdjustForDpi() noexcept {
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    return reinterpret_cast<AdjustForDpiCall>(
        reinterpret_cast<void*>(GetProcAddress(user32, "AdjustWindowRectExForDpi"))); // Windows 10 and later
}

MONITORINFO monitorInfo(HMONITOR monitor) noexcept {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(monitor, &info);
    return info;
}

/// A window's placement counts from the corner of the work area, the screen from the monitor's.
RECT movedByWorkArea(RECT area, int sign) noexcept {
    const MONITORINFO monitor = monitorInfo(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST));
    OffsetRect(&area, sign * static_cast<int>(monitor.rcWork.left - monitor.rcMonitor.left),
               sign * static_cast<int>(monitor.rcWork.top - monitor.rcMonitor.top));
    return area;
}

bool isNormal(HWND window) noexcept { return !IsIconic(window) && !IsZoomed(window); }

WINDOWPLACEMENT systemPlacement(HWND window) noexcept {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return placement;
}

void setSystemPlacement(HWND window, WINDOWPLACEMENT placement) noexcept {
    placement.showCmd = SW_SHOWNA; // as it is
    SetWindowPlacement(window, &placement);
}

void setRestoredState(HWND window, bool maximised) noexcept {
    WINDOWPLACEMENT placement = systemPlacement(window);
    placement.flags = maximised ? WPF_RESTORETOMAXIMIZED : 0;
    setSystemPlacement(window, placement);
}

} // namespace

RECT normalPlacement(HWND window) noexcept {
    RECT area{};
    if (isNormal(window))
        GetWindowRect(window, &area);
    else
        area = movedByWorkArea(systemPlacement(window).rcNormalPosition, 1);
    return area;
}

void setNormalPlacement(HWND window, const RECT& area) noexcept {
    if (isNormal(window)) {
        SetWindowPos(window, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    WINDOWPLACEMENT placement = systemPlacement(window);
    placement.rcNormalPosition = movedByWorkArea(area, -1);
    setSystemPlacement(window, placement);
}

widgets::WindowState windowState(HWND window) noexcept {
    const bool maximised = IsIconic(window) ? (systemPlacement(window).flags & WPF_RESTORETOMAXIMIZED) != 0
                                            : IsZoomed(window) != FALSE;
    return maximised ? widgets::WindowState::Maximised : widgets::WindowState::Normal;
}

void setWindowState(HWND window, widgets::WindowState state) noexcept {
    if (windowState(window) == state) return;
    const bool maximised = state == widgets::WindowState::Maximised;
    if (IsIconic(window))
        setRestoredState(window, maximised);
    else
        ShowWindow(window, maximised ? SW_SHOWMAXIMIZED : SW_SHOWNOACTIVATE);
}

SIZE sizeAround(HWND window, SIZE client, int dpi) noexcept {
    RECT area{0, 0, client.cx, client.cy};
    const auto style =
        static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)) & ~DWORD{WS_MAXIMIZE | WS_MINIMIZE};
    const auto extendedStyle = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    if (const AdjustForDpiCall adjust = findAdjustForDpi())
        adjust(&area, style, FALSE, extendedStyle, static_cast<UINT>(dpi));
    else
        AdjustWindowRectEx(&area, style, FALSE, extendedStyle);
    return {area.right - area.left, area.bottom - area.top};
}

RECT centredPlacement(HWND window, HWND owner) noexcept {
    RECT own{};
    GetWindowRect(window, &own);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const HWND beside = owner ? owner : GetActiveWindow();
    const MONITORINFO monitor = monitorInfo(MonitorFromWindow(beside, MONITOR_DEFAULTTOPRIMARY));
    const RECT& work = monitor.rcWork;
    RECT round = work;
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &round);
    const LONG left = (round.left + round.right - width) / 2;
    const LONG top = (round.top + round.bottom - height) / 2;
    const LONG shownLeft = std::max(work.left, std::min(left, work.right - width));
    const LONG shownTop = std::max(work.top, std::min(top, work.bottom - height));
    return {shownLeft, shownTop, shownLeft + width, shownTop + height};
}

} // namespace cvlog::platform::win32
