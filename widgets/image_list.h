#pragma once

#include "ports/pictures.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::widgets {

/// Pictures by key, shared by any number of lists; only ever added to. A platform renders them at the size of its
/// screen.
class ImageList {
public:
    /// False, and nothing is changed, when the key is already there (keys ignore case) or is empty.
    bool add(std::u16string_view key, std::shared_ptr<const ports::Picture> picture);
    /// 0-based; -1 for an unknown key, which shows no icon.
    int indexOf(std::u16string_view key) const noexcept;
    int count() const noexcept { return static_cast<int>(images_.size()); }
    const ports::Picture& picture(int index) const {
        return *images_.at(static_cast<std::size_t>(index)).picture;
    }
    const std::shared_ptr<const ports::Picture>& shared(int index) const {
        return images_.at(static_cast<std::size_t>(index)).picture;
    }
    std::u16string_view key(int index) const { return images_.at(static_cast<std::size_t>(index)).key; }

private:
    struct Image {
        std::u16string key;
        std::shared_ptr<const ports::Picture> picture;
    };
    std::vector<Image> images_;
};

} // namespace cvlog::widgets
