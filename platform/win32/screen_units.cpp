#include "platform/win32/screen_units.h"

#include <algorithm>
#include <cmath>

namespace cvlog::platform::win32 {

namespace {

constexpr int kUsualDpi = 96;
constexpr double kTwipsAnInch = 1440.0;
constexpr double kLargestPixels = 1'000'000.0;

using GetDpiForWindowCall = UINT(WINAPI*)(HWND);

GetDpiForWindowCall findGetDpiForWindow() noexcept {
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    return reinterpret_cast<GetDpiForWindowCall>(
        reinterpret_cast<void*>(GetProcAddress(user32, "GetDpiForWindow"))); // Windows 10 and later
}

LONG edgeInPixels(base::Twips twips, int dpi) noexcept {
    const double pixels = std::round(static_cast<double>(twips) * dpi / kTwipsAnInch);
    return std::isnan(pixels) ? 0 : static_cast<LONG>(std::clamp(pixels, -kLargestPixels, kLargestPixels));
}

} // namespace

int screenDpi() noexcept {
    const HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
    if (screen) ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kUsualDpi;
}

int windowDpi(HWND window) noexcept {
    const GetDpiForWindowCall getDpiForWindow = findGetDpiForWindow();
    const int dpi = getDpiForWindow ? static_cast<int>(getDpiForWindow(window)) : 0;
    return dpi > 0 ? dpi : screenDpi();
}

int toPixels(base::Twips twips, int dpi) noexcept {
    if (!(twips > 0)) return 0;
    const double pixels =
        std::min(std::round(static_cast<double>(twips) * dpi / kTwipsAnInch), kLargestPixels);
    return std::max(1, static_cast<int>(pixels));
}

base::Twips toTwips(int pixels, int dpi) noexcept {
    return static_cast<base::Twips>(pixels * kTwipsAnInch / dpi);
}

RECT toPixels(const base::Area& area, int dpi) noexcept {
    const LONG left = edgeInPixels(area.left, dpi);
    const LONG top = edgeInPixels(area.top, dpi);
    return {left, top, std::max(left, edgeInPixels(area.left + area.width, dpi)),
            std::max(top, edgeInPixels(area.top + area.height, dpi))};
}

base::Area toTwips(const RECT& area, int dpi) noexcept {
    return {toTwips(static_cast<int>(area.left), dpi), toTwips(static_cast<int>(area.top), dpi),
            toTwips(static_cast<int>(area.right - area.left), dpi),
            toTwips(static_cast<int>(area.bottom - area.top), dpi)};
}

} // namespace cvlog::platform::win32
