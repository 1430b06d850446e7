#include "widgets/image_list.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::widgets {

bool ImageList::add(std::u16string_view key, std::shared_ptr<const ports::Picture> picture) {
    if (key.empty() || indexOf(key) >= 0) return false;
    images_.push_back({std::u16string(key), std::move(picture)});
    return true;
}

int ImageList::indexOf(std::u16string_view key) const noexcept {
    const auto found = std::find_if(images_.begin(), images_.end(), [key](const Image& image) {
        return base::equalsIgnoringCase(image.key, key);
    });
    return found == images_.end() ? -1 : static_cast<int>(found - images_.begin());
}

} // namespace cvlog::widgets
