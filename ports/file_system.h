#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::ports {

/// Paths are the host's: UTF-16 with "\" between their parts.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// True for a file; false for a folder, and for anything that cannot be reached.
    virtual bool fileExists(std::u16string_view path) = 0;
    /// The path as the system's own libraries take it, in UTF-8.
    virtual std::string nativePath(std::u16string_view path) = 0;
    /// Up to `count` bytes from the start of a file. Throws when the file cannot be read.
    virtual std::vector<std::byte> firstBytes(std::u16string_view path, std::size_t count) = 0;
};

} // namespace cvlog::ports
