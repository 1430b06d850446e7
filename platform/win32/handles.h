#pragma once

#include "platform/win32/windows_headers.h"

#include <utility>

namespace cvlog::platform::win32 {

/// Owns one system handle and releases it by `Release`.
template <class Handle, auto Release>
class Owned {
public:
    Owned() = default;
    explicit Owned(Handle handle) noexcept : handle_(handle) {}
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Owned() {
        if (handle_) Release(handle_);
    }
    Handle get() const noexcept { return handle_; }
    /// Gives the handle up: somebody else owns it from now on.
    Handle release() noexcept { return std::exchange(handle_, nullptr); }
    explicit operator bool() const noexcept { return handle_ != nullptr; }

private:
    Handle handle_ = nullptr;
};

inline void releaseObject(HGDIOBJ object) noexcept { DeleteObject(object); }
inline void releaseDc(HDC dc) noexcept { DeleteDC(dc); }
inline void releaseIcon(HICON icon) noexcept { DestroyIcon(icon); }
inline void releaseImages(HIMAGELIST images) noexcept { ImageList_Destroy(images); }
inline void releaseMenu(HMENU menu) noexcept { DestroyMenu(menu); }
inline void releaseKey(HKEY key) noexcept { RegCloseKey(key); }

using FontHandle = Owned<HFONT, releaseObject>;
using BitmapHandle = Owned<HBITMAP, releaseObject>;
using IconHandle = Owned<HICON, releaseIcon>;
using MemoryDc = Owned<HDC, releaseDc>;
using ImageListHandle = Owned<HIMAGELIST, releaseImages>;
using MenuHandle = Owned<HMENU, releaseMenu>;
using RegistryKey = Owned<HKEY, releaseKey>;

/// An open file; INVALID_HANDLE_VALUE counts as none.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle) noexcept : handle_(handle) {}
    ~FileHandle() {
        if (isOpen()) CloseHandle(handle_);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    bool isOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

} // namespace cvlog::platform::win32
