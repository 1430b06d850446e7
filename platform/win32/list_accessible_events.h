#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

// What assistive technology is told of a list's changes. The list views of some systems tell everything of this
// themselves, those of others nothing: the system is asked once, so that nothing is told twice.

/// Changes a list view of one row and listens whether it tells.
bool tellsItself(HWND list) noexcept;

/// The focus went to a row, by its index; nobody is told while the list does not have the focus.
void tellFocused(HWND list, int index) noexcept;
/// One row became selected or not.
void tellSelected(HWND list, int index, bool selected) noexcept;
/// The selection changed in more places than one.
void tellSelectionChanged(HWND list) noexcept;
/// Rows came, went or changed places.
void tellRowsChanged(HWND list) noexcept;

} // namespace cvlog::platform::win32
