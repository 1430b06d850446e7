#pragma once

#include "ports/file_reader.h"
#include "ports/file_system.h"

namespace cvlog::platform::headless {

/// The real files of this machine; the host's "\" stands for "/".
class DiskFileSystem : public ports::FileSystem, public ports::FileReader {
public:
    bool fileExists(std::u16string_view path) override;
    std::string nativePath(std::u16string_view path) override;
    std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) override;
    std::unique_ptr<ports::OpenFile> open(std::u16string_view path) override;
};

} // namespace cvlog::platform::headless
