#include "platform/win32/screens.h"

#include "platform/win32/screen_units.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

base::Area Screens::workArea(const base::Area& area) {
    const int dpi = screenDpi();
    const RECT wanted = toPixels(area, dpi);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &monitor))
        throw std::runtime_error("no monitor");
    return toTwips(monitor.rcWork, dpi);
}

base::Area Screens::windowArea(std::int32_t window) {
    const HWND handle = reinterpret_cast<HWND>(static_cast<std::intptr_t>(window)); // 32 significant bits
    POINT inside{0, 0};
    RECT whole{};
    if (!ClientToScreen(handle, &inside) || !GetWindowRect(handle, &whole))
        throw std::runtime_error("no such window");
    const RECT area{inside.x, inside.y, inside.x + whole.right - whole.left,
                    inside.y + whole.bottom - whole.top};
    return toTwips(area, screenDpi());
}

base::Twips Screens::scrollBarWidth() { return toTwips(GetSystemMetrics(SM_CXVSCROLL), screenDpi()); }

base::Twips Screens::borderWidth() { return toTwips(GetSystemMetrics(SM_CXBORDER), screenDpi()); }

base::Twips Screens::borderHeight() { return toTwips(GetSystemMetrics(SM_CYBORDER), screenDpi()); }

} // namespace cvlog::platform::win32
