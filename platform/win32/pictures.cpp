#include "platform/win32/pictures.h"

#include "platform/win32/picture_file.h"
#include "platform/win32/wide_text.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

/// A picture file's images from small to large.
class LoadedPicture : public ports::Picture {
public:
    explicit LoadedPicture(std::vector<Image> images) : images_(std::move(images)) {
        std::stable_sort(images_.begin(), images_.end(),
                         [](const Image& left, const Image& right) { return left.width < right.width; });
    }
    ports::Pixels render(int side) const override {
        const auto enough = std::find_if(images_.begin(), images_.end(), [side](const Image& image) {
            return std::max(image.width, image.height) >= side;
        });
        return fitted(enough == images_.end() ? images_.back() : *enough, side);
    }

private:
    std::vector<Image> images_;
};

class IconResource : public ports::Picture {
public:
    IconResource(HMODULE module, std::wstring name) : module_(module), name_(std::move(name)) {}
    ports::Pixels render(int side) const override {
        const IconHandle icon(
            static_cast<HICON>(LoadImageW(module_, name_.c_str(), IMAGE_ICON, side, side, LR_DEFAULTCOLOR)));
        if (!icon) throw std::runtime_error("the icon cannot be loaded");
        return fitted(iconImage(icon.get()), side);
    }

private:
    HMODULE module_;
    std::wstring name_;
};

} // namespace

std::shared_ptr<const ports::Picture> Pictures::load(std::u16string_view path) {
    return std::make_shared<LoadedPicture>(readPictureFile(path));
}

std::shared_ptr<const ports::Picture> Pictures::builtIn(std::u16string_view key) {
    std::wstring name = nameText(key); // the system looks names up without regard to case
    if (name.empty() || name.front() == L'#' || !FindResourceW(module_, name.c_str(), RT_GROUP_ICON))
        throw std::runtime_error("there is no such icon");
    return std::make_shared<IconResource>(module_, std::move(name));
}

} // namespace cvlog::platform::win32
