#pragma once

#include "ports/file_system.h"

namespace cvlog::platform::win32 {

/// Paths of any length.
class FileSystem : public ports::FileSystem {
public:
    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
};

} // namespace cvlog::platform::win32
