#pragma once

#include <windows.h>

#include <string>

namespace workbench {

/// A file or a folder.
inline bool exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace workbench
