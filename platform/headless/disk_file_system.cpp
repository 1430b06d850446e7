#include "platform/headless/disk_file_system.h"

#include "base/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace cvlog::platform::headless {

namespace {

class DiskFile : public ports::OpenFile {
public:
    explicit DiskFile(const std::string& path) : size_(std::filesystem::file_size(path)) {
        file_.rdbuf()->pubsetbuf(nullptr, 0); // the reader has a buffer of its own
        file_.open(path, std::ios::binary);
        if (!file_) throw std::runtime_error("cannot open " + path);
    }
    std::uint64_t size() const noexcept override { return size_; }
    std::size_t read(std::span<char> bytes) override {
        file_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (file_.bad()) throw std::runtime_error("the file cannot be read");
        return static_cast<std::size_t>(file_.gcount());
    }

private:
    std::uint64_t size_;
    std::ifstream file_;
};

} // namespace

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

std::unique_ptr<ports::OpenFile> DiskFileSystem::open(std::u16string_view path) {
    if (!fileExists(path)) throw std::runtime_error("no such file: " + nativePath(path));
    return std::make_unique<DiskFile>(nativePath(path));
}

} // namespace cvlog::platform::headless
