#include "platform/win32/pixel_images.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr int kChannels = 4;
constexpr std::uint32_t kOpaque = 0xFF000000U;

std::uint32_t channel(std::uint32_t pixel, int index) noexcept { return pixel >> (8 * index) & 0xFFU; }

/// The mean over the rectangle of the source between fractional edges.
std::uint32_t meanOf(const Image& image, double left, double top, double right, double bottom) noexcept {
    std::array<double, kChannels> sums{};
    double weights = 0;
    for (int y = static_cast<int>(top); y < image.height && y < bottom; ++y) {
        const double rowWeight = std::min(bottom, y + 1.0) - std::max(top, static_cast<double>(y));
        for (int x = static_cast<int>(left); x < image.width && x < right; ++x) {
            const double weight =
                rowWeight * (std::min(right, x + 1.0) - std::max(left, static_cast<double>(x)));
            const std::uint32_t pixel =
                image.argb[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                           static_cast<std::size_t>(x)];
            for (int i = 0; i < kChannels; ++i)
                sums[static_cast<std::size_t>(i)] += weight * channel(pixel, i);
            weights += weight;
        }
    }
    std::uint32_t mean = 0;
    for (int i = 0; weights > 0 && i < kChannels; ++i) {
        const double value = sums[static_cast<std::size_t>(i)] / weights + 0.5;
        mean |= static_cast<std::uint32_t>(std::clamp(value, 0.0, 255.0)) << (8 * i);
    }
    return mean;
}

std::uint32_t premultiplied(std::uint32_t pixel) noexcept {
    const std::uint32_t alpha = channel(pixel, 3);
    std::uint32_t result = alpha << 24;
    for (int i = 0; i < 3; ++i) result |= (channel(pixel, i) * alpha + 127) / 255 << (8 * i);
    return result;
}

std::uint32_t straight(std::uint32_t pixel) noexcept {
    const std::uint32_t alpha = channel(pixel, 3);
    std::uint32_t result = alpha << 24;
    for (int i = 0; alpha != 0 && i < 3; ++i)
        result |= std::min<std::uint32_t>(255, (channel(pixel, i) * 255 + alpha / 2) / alpha) << (8 * i);
    return result;
}

std::vector<std::uint32_t> bitsOf(HBITMAP bitmap, int width, int height) {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    BITMAPINFO info = topDownBitmap(width, height);
    std::vector<std::uint32_t> bits(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (GetDIBits(dc.get(), bitmap, 0, static_cast<UINT>(height), bits.data(), &info, DIB_RGB_COLORS) !=
        height)
        throw std::runtime_error("the icon's pixels cannot be read");
    return bits;
}

} // namespace

BITMAPINFO topDownBitmap(int width, int height) noexcept {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

ports::Pixels fitted(const Image& image, int side) {
    ports::Pixels result{
        side, std::vector<std::uint32_t>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
    if (image.width <= 0 || image.height <= 0) return result;
    const double scale = static_cast<double>(std::max(image.width, image.height)) / side;
    const int width = std::clamp(static_cast<int>(image.width / scale + 0.5), 1, side);
    const int height = std::clamp(static_cast<int>(image.height / scale + 0.5), 1, side);
    const double stepX = static_cast<double>(image.width) / width;
    const double stepY = static_cast<double>(image.height) / height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int index = (y + (side - height) / 2) * side + x + (side - width) / 2;
            result.argb[static_cast<std::size_t>(index)] =
                meanOf(image, x * stepX, y * stepY, (x + 1) * stepX, (y + 1) * stepY);
        }
    return result;
}

Image iconImage(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) throw std::runtime_error("the icon cannot be read");
    const BitmapHandle colour(info.hbmColor);
    const BitmapHandle mask(info.hbmMask);
    BITMAP size{};
    if (!colour || GetObjectW(colour.get(), sizeof size, &size) == 0)
        throw std::runtime_error("the icon has no colours");
    Image image{size.bmWidth, size.bmHeight, bitsOf(colour.get(), size.bmWidth, size.bmHeight)};
    const bool hasAlpha = std::any_of(image.argb.begin(), image.argb.end(),
                                      [](std::uint32_t pixel) { return (pixel & kOpaque) != 0; });
    if (!hasAlpha) { // an icon of the old kind: a second bitmap says what is transparent
        const auto holes = bitsOf(mask.get(), image.width, image.height);
        std::transform(
            image.argb.begin(), image.argb.end(), holes.begin(), image.argb.begin(),
            [](std::uint32_t pixel, std::uint32_t hole) { return (hole & ~kOpaque) ? 0U : pixel | kOpaque; });
    }
    std::transform(image.argb.begin(), image.argb.end(), image.argb.begin(), premultiplied);
    return image;
}

IconHandle makeIcon(const ports::Pixels& pixels) {
    const BITMAPINFO info = topDownBitmap(pixels.side, pixels.side);
    void* bits = nullptr;
    const BitmapHandle colour(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!colour) throw std::runtime_error("no bitmap for an icon");
    std::vector<std::uint32_t> colours(pixels.argb.size());
    std::transform(pixels.argb.begin(), pixels.argb.end(), colours.begin(), straight);
    std::memcpy(bits, colours.data(), colours.size() * sizeof(std::uint32_t));

    const auto maskStride = static_cast<std::size_t>((pixels.side + 15) / 16 * 2);
    std::vector<BYTE> holes(maskStride * static_cast<std::size_t>(pixels.side));
    for (std::size_t i = 0; i < pixels.argb.size(); ++i) {
        const std::size_t x = i % static_cast<std::size_t>(pixels.side);
        const std::size_t y = i / static_cast<std::size_t>(pixels.side);
        if ((pixels.argb[i] & kOpaque) == 0)
            holes[y * maskStride + x / 8] = static_cast<BYTE>(holes[y * maskStride + x / 8] | 0x80U >> x % 8);
    }
    const BitmapHandle mask(CreateBitmap(pixels.side, pixels.side, 1, 1, holes.data()));
    ICONINFO icon{TRUE, 0, 0, mask.get(), colour.get()};
    IconHandle made(CreateIconIndirect(&icon));
    if (!made) throw std::runtime_error("no icon");
    return made;
}

} // namespace cvlog::platform::win32
