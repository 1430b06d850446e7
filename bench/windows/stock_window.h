#pragma once

#include "platform/win32/list_view_window.h"

namespace cvlog::bench {

/// Ends the program when the system's list does not do what is to be measured.
void require(bool holds, const char* what);

/// One of the system's list views that looks like a list of ours: columns, font, header pictures and extended styles
/// are that list's. It has to be given back, because the pictures are shared.
HWND makeStockWindow(platform::win32::ListViewWindow& like, HWND parent, const RECT& area, DWORD style);
void destroyStockWindow(HWND window) noexcept;

/// The style of a list of ours, with or without rows of its own.
DWORD stockStyle(platform::win32::ListViewWindow& like, bool ownerData) noexcept;

} // namespace cvlog::bench
