#pragma once

#include "platform/win32/list_images.h"
#include "widgets/list_view.h"

#include <string>
#include <string_view>

namespace cvlog::platform::win32 {

// What a list window asks about its cells, answered from the model. A row that the model does not have any
// more, or not yet, is blank: the window hears of changes only when a batch ends.

/// The key of the icon in a column; empty for none.
base::CompactTextView iconOf(const widgets::RowContent& row, int column) noexcept;

/// Appends at most `most` units of a text as they are shown: control characters as blanks. Never half a
/// character.
void appendShown(base::CompactTextView text, std::size_t most, std::wstring& shown);

/// Text and icon. Control characters are drawn as blanks; what does not fit the window's buffer is cut.
void answerCell(const widgets::ListView& model, ListImages& icons, NMLVDISPINFOW& question);

/// The tool tip of the cell under the mouse, when it has one of its own.
void answerToolTip(const widgets::ListView& model, NMLVGETINFOTIPW& question);

/// The index of the row whose first column starts with what the user types; -1 for none.
int findTyped(const widgets::ListView& model, const NMLVFINDITEMW& question);

} // namespace cvlog::platform::win32
