#pragma once

#include "core/globals.h"

// What the user does with rows of the live lists. The log database is never touched. A host that refuses the busy
// pointer ends the command before it did anything; the pointer comes back on every path. The host may run any code
// while its pointer is set: the list is held for the time of the command.

namespace cvlog::view {

/// Puts the selected rows of the list on the clipboard: a line a row, in the list's order, each of seven fields with
/// tabs between them and CR LF at its end, hidden columns included. Throws when the clipboard does not take them.
void CopyRows(core::Globals& globals, const core::LogViews::ListRef& view);

/// Removes the rows that are selected in the list from every list; an open entry goes with its child rows. Nothing
/// happens while a collapse or an expansion runs.
void DeleteRows(core::Globals& globals, const core::LogViews::ListRef& view);

} // namespace cvlog::view
