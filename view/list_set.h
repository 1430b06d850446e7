#pragma once

#include "core/globals.h"

namespace cvlog::view {

/// Empties every list and switches its sorting off, as in a new list; every header shows the empty sort icon.
void ResetLists(core::Globals& globals);

/// Empties every list and leaves its sorting as it is.
void ClearLists(core::Globals& globals);

/// Shows the list's sort column by its header icon: "SortDown" for ascending, "SortUp" for descending. Nothing happens
/// in a list that is not sorted.
void RefreshSortIcon(widgets::ListView& list);

/// Brings a row that the first list just got into all the others, at its sorted place where they are sorted.
void PropagateNewRow(core::Globals& globals, const widgets::ListView& source, int position);

} // namespace cvlog::view
