#pragma once

#include "base/compact_text_view.h"
#include "platform/win32/handles.h"
#include "platform/win32/icon_strip.h"
#include "widgets/image_list.h"

#include <memory>

namespace cvlog::platform::win32 {

/// The pictures of an image list as the system draws them, at one size. The model's list is only added to, so
/// only new pictures are rendered. One that cannot be rendered shows nothing.
class ListImages {
public:
    /// Makes everything anew when the list or the size changed. Throws std::runtime_error when the system
    /// makes no image list.
    void assign(std::shared_ptr<const widgets::ImageList> images, int side);
    /// Renders what was added to the model's list.
    void update();
    /// The image of a key; -1 for none. New pictures are rendered on the way.
    int indexOf(base::CompactTextView key);
    /// Null without images.
    HIMAGELIST handle() const noexcept { return handle_.get(); }
    int side() const noexcept { return side_; }
    /// Draws the left part of an image, `width` wide, over what is there; the opacity goes from 0 to 255.
    void draw(HDC dc, int index, POINT place, int width, BYTE opacity) const noexcept {
        strip_.draw(dc, index, place, width, opacity);
    }

private:
    void addImage(const ports::Pixels& pixels);

    std::shared_ptr<const widgets::ImageList> images_;
    std::u16string key_; // room for one that was given in bytes
    int side_ = 0;
    int rendered_ = 0;
    ImageListHandle handle_;
    IconStrip strip_; // the same images, for drawing many
};

/// The side of a small icon in a window of that resolution.
int smallIconSide(int dpi) noexcept;

} // namespace cvlog::platform::win32
