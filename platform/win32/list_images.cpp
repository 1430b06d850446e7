#include "platform/win32/list_images.h"

#include "base/failure.h"
#include "platform/win32/pixel_images.h"
#include "platform/win32/screen_units.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr int kGrowBy = 16;

ports::Pixels blank(int side) {
    return {side,
            std::vector<std::uint32_t>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
}

} // namespace

void ListImages::assign(std::shared_ptr<const widgets::ImageList> images, int side) {
    if (images == images_ && side == side_) {
        update();
        return;
    }
    ImageListHandle made;
    if (images) {
        made =
            ImageListHandle(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, images->count(), kGrowBy));
        if (!made) throw std::runtime_error("no image list");
    }
    handle_ = std::move(made);
    images_ = std::move(images);
    side_ = side;
    rendered_ = 0;
    strip_.reset(side);
    update();
}

void ListImages::update() {
    for (; images_ && rendered_ < images_->count(); ++rendered_) {
        const bool drawn = base::ignoring([&] { addImage(images_->picture(rendered_).render(side_)); });
        if (!drawn) addImage(blank(side_));
    }
}

void ListImages::addImage(const ports::Pixels& pixels) {
    strip_.put(rendered_, pixels);
    const IconHandle icon = makeIcon(pixels);
    if (ImageList_ReplaceIcon(handle_.get(), -1, icon.get()) < 0)
        throw std::runtime_error("no room for an image");
}

int ListImages::indexOf(base::CompactTextView key) {
    if (!images_ || key.empty()) return -1;
    const int index = images_->indexOf(key.in(key_));
    if (index >= rendered_) update();
    return index < rendered_ ? index : -1;
}

int smallIconSide(int dpi) noexcept {
    return std::max(1, MulDiv(GetSystemMetrics(SM_CXSMICON), dpi, screenDpi()));
}

} // namespace cvlog::platform::win32
