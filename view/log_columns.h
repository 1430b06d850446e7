#pragma once

#include "core/globals.h"
#include "widgets/menu_item.h"

namespace cvlog::view {

/// Gives the list its seven columns, with captions in the user's language, all of them hidden.
void LocaliseColumns(const core::Globals& globals, widgets::ListView& list);

/// Shows and places the columns as the user's settings say; by default all of them in their natural order, each as
/// wide as its caption needs. The columns menu, which has its first item by design, gets an item a column, checked when
/// the column is shown. Failures of the settings are ignored, column by column.
void SetUpColumns(core::Globals& globals, widgets::ListView& list, widgets::MenuItem& columnsMenu);

/// Shows or hides a column, by its key, in every list, and remembers that for the user: its place in the oldest
/// list, or that it is hidden. A shown column is as wide as its caption needs in the resources' font. Settings that cannot be
/// saved are ignored.
void ShowColumn(core::Globals& globals, std::u16string_view key, bool shown);

} // namespace cvlog::view
