#include "platform/headless/memory_file_system.h"

#include "base/text.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::headless {

void MemoryFileSystem::addFile(std::u16string_view path, std::string_view content) {
    files_[base::folded(path)] = content;
}

void MemoryFileSystem::addFolder(std::u16string_view path) { folders_.insert(base::folded(path)); }

void MemoryFileSystem::remove(std::u16string_view path) {
    files_.erase(base::folded(path));
    folders_.erase(base::folded(path));
}

bool MemoryFileSystem::fileExists(std::u16string_view path) {
    gate_.pass("FileSystem.fileExists");
    return files_.contains(base::folded(path));
}

std::string MemoryFileSystem::nativePath(std::u16string_view path) { return base::toUtf8(path); }

std::vector<std::byte> MemoryFileSystem::firstBytes(std::u16string_view path, std::size_t count) {
    gate_.pass("FileSystem.firstBytes");
    const auto file = files_.find(base::folded(path));
    if (file == files_.end()) throw std::runtime_error("no such file: " + base::toUtf8(path));
    const auto* begin = reinterpret_cast<const std::byte*>(file->second.data());
    return {begin, begin + std::min(count, file->second.size())};
}

} // namespace cvlog::platform::headless
