#include "platform/win32/icon_strip.h"

#include "platform/win32/pixel_images.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr int kFirstRoom = 16;

} // namespace

void IconStrip::reset(int side) noexcept {
    dc_ = MemoryDc();
    bitmap_ = BitmapHandle();
    bits_ = nullptr;
    side_ = side;
    count_ = room_ = 0;
}

void IconStrip::put(int index, const ports::Pixels& pixels) {
    const auto size = static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_);
    if (pixels.side != side_ || pixels.argb.size() != size || index < 0 || index > count_)
        throw std::invalid_argument("a picture of another size or place");
    if (index == room_) grow();
    std::copy(pixels.argb.begin(), pixels.argb.end(), bits_ + static_cast<std::size_t>(index) * size);
    count_ = std::max(count_, index + 1);
}

void IconStrip::grow() {
    const int room = std::max(kFirstRoom, room_ * 2);
    const BITMAPINFO info = topDownBitmap(side_, side_ * room);
    void* bits = nullptr;
    BitmapHandle bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    MemoryDc dc(CreateCompatibleDC(nullptr));
    if (!bitmap || !dc || !SelectObject(dc.get(), bitmap.get()))
        throw std::runtime_error("no bitmap for pictures");
    auto* pixels = static_cast<std::uint32_t*>(bits);
    const int used = side_ * side_ * count_;
    if (bits_) std::copy_n(bits_, used, pixels);
    dc_ = std::move(dc);
    bitmap_ = std::move(bitmap);
    bits_ = pixels;
    room_ = room;
}

void IconStrip::draw(HDC dc, int index, POINT place, int width, BYTE opacity) const noexcept {
    if (index < 0 || index >= count_ || width <= 0) return;
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, opacity, AC_SRC_ALPHA};
    AlphaBlend(dc, place.x, place.y, width, side_, dc_.get(), 0, index * side_, width, side_, blend);
}

} // namespace cvlog::platform::win32
