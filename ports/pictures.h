#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace cvlog::ports {

/// A square picture in 32-bit pixels, 0xAARRGGBB with premultiplied alpha, rows from the top.
struct Pixels {
    int side = 0;
    std::vector<std::uint32_t> argb;
};

/// A picture that can be drawn at any size.
class Picture {
public:
    virtual ~Picture() = default;
    virtual Pixels render(int side) const = 0;
};

class Pictures {
public:
    virtual ~Pictures() = default;
    /// Reads a picture file (PNG, BMP, GIF, ICO). Throws when there is none or it cannot be read.
    virtual std::shared_ptr<const Picture> load(std::u16string_view path) = 0;
    /// One of the component's own icons, by key. Throws for an unknown key.
    virtual std::shared_ptr<const Picture> builtIn(std::u16string_view key) = 0;
};

} // namespace cvlog::ports
