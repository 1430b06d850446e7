#include "platform/headless/memory_file_system.h"

#include "base/text.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::headless {

void MemoryFileSystem::addFile(std::u16string_view path, std::string_view content) {
    files_[base::folded(path)] = std::make_shared<std::string>(content);
}

void MemoryFileSystem::addFolder(std::u16string_view path) { folders_.insert(base::folded(path)); }

void MemoryFileSystem::remove(std::u16string_view path) {
    files_.erase(base::folded(path));
    folders_.erase(base::folded(path));
}

bool MemoryFileSystem::fileExists(std::u16string_view path) {
    gate_.pass("FileSystem.fileExists");
    return files_.contains(base::folded(path)) || (disk_ && disk_->fileExists(path));
}

std::string MemoryFileSystem::nativePath(std::u16string_view path) { return base::toUtf8(path); }

std::vector<std::byte> MemoryFileSystem::firstBytes(std::u16string_view path, std::size_t count) {
    gate_.pass("FileSystem.firstBytes");
    const auto file = files_.find(base::folded(path));
    if (file == files_.end()) throw std::runtime_error("no such file: " + base::toUtf8(path));
    const auto* begin = reinterpret_cast<const std::byte*>(file->second->data());
    return {begin, begin + std::min(count, file->second->size())};
}

void MemoryFileSystem::append(std::u16string_view path, std::string_view content) {
    files_.at(base::folded(path))->append(content);
}

void MemoryFileSystem::truncate(std::u16string_view path, std::size_t size) {
    files_.at(base::folded(path))->resize(size);
}

class MemoryFileSystem::Reader : public ports::OpenFile {
public:
    Reader(const CallGate& gate, std::shared_ptr<const std::string> content, std::shared_ptr<int> openFiles)
        : gate_(gate), content_(std::move(content)), size_(content_->size()),
          openFiles_(std::move(openFiles)) {
        ++*openFiles_;
    }
    ~Reader() override { --*openFiles_; }
    std::uint64_t size() const noexcept override { return size_; }
    std::size_t read(std::span<char> bytes) override {
        gate_.pass("File.read");
        if (at_ >= content_->size()) return 0;
        const std::size_t count = content_->copy(bytes.data(), bytes.size(), at_);
        at_ += count;
        return count;
    }

private:
    const CallGate& gate_;
    std::shared_ptr<const std::string> content_;
    std::size_t size_;
    std::size_t at_ = 0;
    std::shared_ptr<int> openFiles_;
};

std::unique_ptr<ports::OpenFile> MemoryFileSystem::open(std::u16string_view path) {
    gate_.pass("FileReader.open");
    const auto file = files_.find(base::folded(path));
    if (file == files_.end() && disk_) return disk_->open(path);
    if (file == files_.end() || locked_.contains(base::folded(path)))
        throw std::runtime_error("cannot open " + base::toUtf8(path));
    return std::make_unique<Reader>(gate_, file->second, openFiles_);
}

} // namespace cvlog::platform::headless
