#pragma once

#include "platform/win32/handles.h"
#include "ports/pictures.h"

#include <cstdint>
#include <vector>

namespace cvlog::platform::win32 {

/// An image in memory: 0xAARRGGBB with premultiplied alpha, rows from the top.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> argb;
};

/// The image scaled to fit a square, centred with its proportions kept: each pixel is the mean of the area it
/// covers.
ports::Pixels fitted(const Image& image, int side);

/// What an icon shows. Throws std::runtime_error when the system cannot say.
Image iconImage(HICON icon);

/// A bitmap's description: 32 bits a pixel, rows from the top.
BITMAPINFO topDownBitmap(int width, int height) noexcept;

/// An icon of square pixels, transparent where they are. Throws std::runtime_error when the system makes
/// none.
IconHandle makeIcon(const ports::Pixels& pixels);

} // namespace cvlog::platform::win32
