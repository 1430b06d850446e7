#pragma once

#include "automation/object.h"
#include "widgets/menu_item.h"

namespace cvlog::view {

/// A menu item as others see it: Name, Caption, Visible, Enabled, Checked, Tag, Index, HelpContextID, live. It may be
/// kept for any time; once the item has gone every member raises.
automation::ObjectRef makeMenuItemObject(const widgets::MenuItemRef& item);

/// The items of a menu that share a name, as an array: Item by place from 0, Count, LBound, UBound.
automation::ObjectRef makeMenuArrayObject(const widgets::MenuItemRef& menu);

} // namespace cvlog::view
