#pragma once

#include "widgets/list_view.h"

namespace cvlog::core {

/// Widens the columns of a list to fit one row (its position), or all rows and the captions (0, or the only row).
/// Columns never shrink, hidden ones stay hidden, and a gain of two twips or less is left, to spare repaints.
void AutoSizeColumns(widgets::ListView& list, int row);

/// The same as for each of these rows in turn, of a list that has more than one.
void AutoSizeColumns(widgets::ListView& list, int first, int last);

/// The room a caption needs beside its text.
inline constexpr base::Twips kCaptionPadding = 650;

} // namespace cvlog::core
