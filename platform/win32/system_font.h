#pragma once

#include "base/font.h"
#include "platform/win32/handles.h"

namespace cvlog::platform::win32 {

/// The system's font for ours at a resolution. Throws std::runtime_error when the system makes none.
FontHandle makeFont(const base::Font& font, int dpi);

} // namespace cvlog::platform::win32
