#pragma once

#include "core/globals.h"

namespace cvlog::view {

/// Sorts every list by a column (from 1) that the user clicked in `clicked`: descending when a list was sorted by it
/// ascending, else in the order it has. All entries are closed first; while that is refused, nothing is sorted.
void SortByColumn(core::Globals& globals, core::LogViews::ListRef clicked, int column);

} // namespace cvlog::view
