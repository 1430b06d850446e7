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

} // namespace cvlog::platform::win32
