#pragma once

#include "platform/win32/windows_headers.h"
#include "widgets/list_view.h"

namespace cvlog::platform::win32 {

struct RowColours {
    COLORREF back;
    COLORREF text;
};

/// Of a list's rows and of the room below them; those of a disabled list are the system's.
RowColours plainColours(const widgets::ListView& list) noexcept;

/// Of a list's selected rows, which tell whether the list has the keyboard focus.
RowColours selectedColours(const widgets::ListView& list, bool focused) noexcept;

} // namespace cvlog::platform::win32
