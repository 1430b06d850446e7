#pragma once

#include "platform/win32/pixel_images.h"

#include <string_view>
#include <vector>

namespace cvlog::platform::win32 {

/// The images in a picture file: one, or for icons one for each size. Throws std::runtime_error for a file
/// that is missing, is no picture, or is larger than an icon could sensibly be made of.
std::vector<Image> readPictureFile(std::u16string_view path);

} // namespace cvlog::platform::win32
