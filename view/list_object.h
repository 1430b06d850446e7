#pragma once

#include "automation/dispatch_table.h"
#include "view/list_font.h"

namespace cvlog::view {

/// A list as hosts and report generators know it: ListItems, ColumnHeaders, SelectedItem, sorting and looks. Live: it
/// shows and changes the list itself. It holds the list weakly; once the control has gone every member fails.
automation::ObjectRef makeListObject(const ListRef& list, const ListFontRef& font);

} // namespace cvlog::view
