#include "com/control_picture.h"

#include "platform/win32/list_picture.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/screen_units.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace cvlog::com {

namespace {

constexpr double kHimetricAnInch = 2540.0;
constexpr double kMostPixels = 16'000'000.0; // what is larger is stretched from this
constexpr double kLongestSide = 30'000.0;
constexpr double kLeastDpi = 24.0;
constexpr double kSameShape = 0.98; // sides that differ by less are laid out, so that no pixel is stretched

LONG side(double pixels) noexcept {
    return static_cast<LONG>(std::clamp(std::round(pixels), 1.0, kLongestSide));
}

bool isMetafile(HDC dc) noexcept {
    const DWORD type = GetObjectType(dc);
    return type == OBJ_METADC || type == OBJ_ENHMETADC;
}

} // namespace

ControlPicture::Layout ControlPicture::natural() const noexcept {
    const auto* window = static_cast<platform::win32::ListViewWindow*>(control_.lvLog().peer());
    RECT shown{};
    if (active_ && window && GetClientRect(window->frame(), &shown) && !IsRectEmpty(&shown))
        return {{shown.right, shown.bottom}, platform::win32::windowDpi(window->frame())};
    const int dpi = platform::win32::screenDpi();
    return {{side(extent_.cx * dpi / kHimetricAnInch), side(extent_.cy * dpi / kHimetricAnInch)}, dpi};
}

ControlPicture::Layout ControlPicture::scaled(double factor) const noexcept {
    const Layout own = natural();
    const double largest = std::sqrt(kMostPixels / (static_cast<double>(own.size.cx) * own.size.cy));
    const double used = std::min(std::max(factor, kLeastDpi / own.dpi), largest);
    return {{side(own.size.cx * used), side(own.size.cy * used)},
            static_cast<int>(std::max(1.0, std::round(own.dpi * used)))};
}

SIZE ControlPicture::pixels(int dpi) const noexcept {
    return dpi > 0 ? scaled(static_cast<double>(dpi) / natural().dpi).size : natural().size;
}

void ControlPicture::draw(HDC dc, const RECT& place, HDC target) const {
    if (!isMetafile(dc)) {
        drawOnDevice(dc, place);
        return;
    }
    const int dpi = target ? GetDeviceCaps(target, LOGPIXELSY) : 0;
    const Layout own = natural();
    const Layout used = scaled(dpi > 0 ? static_cast<double>(dpi) / own.dpi : 1.0);
    platform::win32::ListPicture(peers_, control_.lvLog(), used.size, used.dpi).draw(dc, place);
}

ControlPicture::Layout ControlPicture::layoutFor(SIZE device) const noexcept {
    const Layout own = natural();
    const double across = static_cast<double>(device.cx) / own.size.cx;
    const double down = static_cast<double>(device.cy) / own.size.cy;
    const double factor = std::max(across, down);
    Layout used = scaled(factor);
    const bool isWhole = std::lround(own.size.cx * factor) == used.size.cx;
    if (isWhole && std::min(across, down) > kSameShape * factor) used.size = device;
    return used;
}

// The picture is made for the pixels that it will get, so that they are as fine as the device's.
void ControlPicture::drawOnDevice(HDC dc, const RECT& place) const {
    RECT device = place;
    LPtoDP(dc, reinterpret_cast<POINT*>(&device), 2);
    if (device.left > device.right) std::swap(device.left, device.right);
    if (device.top > device.bottom) std::swap(device.top, device.bottom);
    if (IsRectEmpty(&device)) return;
    const Layout used = layoutFor({device.right - device.left, device.bottom - device.top});
    const platform::win32::ListPicture picture(peers_, control_.lvLog(), used.size, used.dpi);
    const int saved = SaveDC(dc);
    ModifyWorldTransform(dc, nullptr, MWT_IDENTITY);
    SetMapMode(dc, MM_TEXT);
    SetWindowOrgEx(dc, 0, 0, nullptr);
    SetViewportOrgEx(dc, 0, 0, nullptr);
    picture.draw(dc, device);
    RestoreDC(dc, saved);
}

} // namespace cvlog::com
