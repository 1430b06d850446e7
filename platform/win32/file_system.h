#pragma once

#include "ports/file_reader.h"
#include "ports/file_system.h"

namespace cvlog::platform::win32 {

/// Paths of any length.
class FileSystem : public ports::FileSystem, public ports::FileReader {
public:
    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
    std::unique_ptr<ports::OpenFile> open(std::u16string_view path) override;
};

} // namespace cvlog::platform::win32
