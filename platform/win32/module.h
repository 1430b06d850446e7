#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// The module this code is part of, the library or a test program: its resources are ours. Never null.
HMODULE thisModule() noexcept;

} // namespace cvlog::platform::win32
