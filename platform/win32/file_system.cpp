#include "platform/win32/file_system.h"

#include "base/text.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

/// A path as the file calls take it: from MAX_PATH on they need the form that is not parsed further.
std::wstring callPath(std::u16string_view path) {
    std::wstring name = nameText(path);
    if (name.size() < MAX_PATH || name.starts_with(L"\\\\?\\") || name.starts_with(L"\\\\.\\")) return name;
    std::wstring full(GetFullPathNameW(name.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

/// Readable whatever others do with the file; they may also delete it.
HANDLE openToRead(std::u16string_view path, DWORD flags) {
    return CreateFileW(callPath(path).c_str(), GENERIC_READ,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, flags,
                       nullptr);
}

class DiskFile : public ports::OpenFile {
public:
    explicit DiskFile(std::u16string_view path) : file_(openToRead(path, FILE_FLAG_SEQUENTIAL_SCAN)) {
        LARGE_INTEGER size{};
        if (!file_.isOpen() || GetFileType(file_.get()) != FILE_TYPE_DISK ||
            !GetFileSizeEx(file_.get(), &size))
            throw std::runtime_error("the file cannot be opened");
        size_ = static_cast<std::uint64_t>(size.QuadPart);
    }
    std::uint64_t size() const noexcept override { return size_; }
    std::size_t read(std::span<char> bytes) override {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestRead));
        DWORD count = 0;
        if (!ReadFile(file_.get(), bytes.data(), wanted, &count, nullptr))
            throw std::runtime_error("the file cannot be read");
        return count;
    }

private:
    static constexpr std::size_t kLargestRead = 1U << 24;

    FileHandle file_;
    std::uint64_t size_ = 0;
};

} // namespace

bool FileSystem::fileExists(std::u16string_view path) {
    if (path.find(u'\0') != std::u16string_view::npos) return false;
    const DWORD attributes = GetFileAttributesW(callPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string FileSystem::nativePath(std::u16string_view path) { return base::toUtf8(path); }

std::vector<std::byte> FileSystem::firstBytes(std::u16string_view path, std::size_t count) {
    const FileHandle file(openToRead(path, FILE_ATTRIBUTE_NORMAL));
    if (!file.isOpen()) throw std::runtime_error("the file cannot be opened");
    std::vector<std::byte> bytes(count);
    std::size_t filled = 0;
    while (filled < count) {
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(count - filled, 1U << 20));
        DWORD read = 0;
        if (!ReadFile(file.get(), bytes.data() + filled, wanted, &read, nullptr))
            throw std::runtime_error("the file cannot be read");
        if (read == 0) break;
        filled += read;
    }
    bytes.resize(filled);
    return bytes;
}

std::unique_ptr<ports::OpenFile> FileSystem::open(std::u16string_view path) {
    return std::make_unique<DiskFile>(path);
}

} // namespace cvlog::platform::win32
