#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace cvlog::ports {

/// A file that is read from its start on, while others may write, replace or delete it. It is closed at its end.
class OpenFile {
public:
    virtual ~OpenFile() = default;
    /// In bytes, when it was opened.
    virtual std::uint64_t size() const noexcept = 0;
    /// How many of the bytes were filled; 0 at the end of the file. Throws when it cannot be read.
    virtual std::size_t read(std::span<char> bytes) = 0;
};

class FileReader {
public:
    virtual ~FileReader() = default;
    /// Throws for what is no file, such as a folder or a device, and for a file that others keep to themselves.
    virtual std::unique_ptr<OpenFile> open(std::u16string_view path) = 0;
};

} // namespace cvlog::ports
