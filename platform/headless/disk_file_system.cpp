#include "platform/headless/disk_file_system.h"

#include "base/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace cvlog::platform::headless {

bool DiskFileSystem::fileExists(std::u16string_view path) {
    std::error_code problem;
    return std::filesystem::is_regular_file(nativePath(path), problem);
}

std::string DiskFileSystem::nativePath(std::u16string_view path) {
    std::string native = base::toUtf8(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::vector<std::byte> DiskFileSystem::firstBytes(std::u16string_view path, std::size_t count) {
    std::ifstream file(nativePath(path), std::ios::binary);
    if (!file) throw std::runtime_error("cannot open " + nativePath(path));
    std::vector<std::byte> bytes(count);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
    if (file.bad()) throw std::runtime_error("cannot read " + nativePath(path));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

} // namespace cvlog::platform::headless
