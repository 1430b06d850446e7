#pragma once

#include "tests/windows/com_test.h"

#include <cstdint>
#include <vector>

namespace cvlog::tests {

/// A bitmap to draw on, filled with a colour that nobody else uses.
class DrawnPixels {
public:
    static constexpr std::uint32_t kUntouched = 0x12FE9A;

    DrawnPixels(int width, int height) : width_(width), height_(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<std::uint32_t*>(bits);
        before_ = SelectObject(dc_, bitmap_);
        for (int i = 0; i < width * height; ++i) pixels_[i] = kUntouched;
    }
    ~DrawnPixels() {
        SelectObject(dc_, before_);
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    DrawnPixels(const DrawnPixels&) = delete;
    DrawnPixels& operator=(const DrawnPixels&) = delete;

    HDC dc() const noexcept { return dc_; }
    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    /// 0xRRGGBB
    std::uint32_t at(int x, int y) const {
        GdiFlush();
        return pixels_[y * width_ + x] & 0xFFFFFFU;
    }
    bool isUntouched(int x, int y) const { return at(x, y) == kUntouched; }
    /// The place that was drawn on: the smallest that has all of it.
    RECT touched() const {
        RECT found{width_, height_, 0, 0};
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if (!isUntouched(x, y)) {
                    const RECT spot{x, y, x + 1, y + 1};
                    const RECT before = found;
                    if (before.left >= before.right)
                        found = spot;
                    else
                        UnionRect(&found, &before, &spot);
                }
        return found;
    }
    /// How many pixels of a part have a colour.
    int count(std::uint32_t colour, const RECT& part) const {
        int found = 0;
        for (LONG y = part.top; y < part.bottom; ++y)
            for (LONG x = part.left; x < part.right; ++x)
                if (at(static_cast<int>(x), static_cast<int>(y)) == colour) ++found;
        return found;
    }
    int differences(const DrawnPixels& other, int width, int height) const {
        int found = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (at(x, y) != other.at(x, y)) ++found;
        return found;
    }

private:
    int width_;
    int height_;
    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
};

} // namespace cvlog::tests
