#pragma once

#include "platform/win32/handles.h"
#include "ports/pictures.h"

#include <cstdint>

namespace cvlog::platform::win32 {

/// Pictures of one size, one below the other in a bitmap, from where they are drawn at once. A page of rows
/// shows dozens of them, and the system's image lists take several times as long.
class IconStrip {
public:
    /// Forgets every picture; those to come have that side.
    void reset(int side) noexcept;
    /// Puts a picture behind those that are there, or in the place of one. Throws std::invalid_argument for
    /// another side or place, std::runtime_error when the system makes no bitmap.
    void put(int index, const ports::Pixels& pixels);
    int side() const noexcept { return side_; }
    /// Draws the left part of a picture, `width` wide, over what is there; the opacity goes from 0 to 255.
    void draw(HDC dc, int index, POINT place, int width, BYTE opacity) const noexcept;

private:
    void grow();

    int side_ = 0;
    int count_ = 0;
    int room_ = 0;
    std::uint32_t* bits_ = nullptr; // in the bitmap
    BitmapHandle bitmap_;
    MemoryDc dc_; // goes before the bitmap it holds
};

} // namespace cvlog::platform::win32
