#pragma once

#include "resources/string_table.h"
#include "widgets/menu_item.h"

namespace cvlog::view {

/// `mnuPopUpLog` with its items in the user's language. The columns menu, `mnuCol`, has the first of the array
/// `mnuColumn`; the column set-up makes the others.
widgets::MenuItemRef MakeLogMenu(resources::Language language);

/// The items of the columns menu, in the columns' order.
const std::vector<widgets::MenuItemRef>& ColumnItems(const widgets::MenuItemRef& menu);

} // namespace cvlog::view
