#pragma once

#include "core/globals.h"
#include "widgets/menu_item.h"

namespace cvlog::store {

/// `mnuPopUpHistory` with its items. They have captions once the menu is prepared.
widgets::MenuItemRef MakeHistoryMenu();

/// Brings the menu in line with the list: captions in the user's language, Show Errors visible when the host can show
/// errors of the selected record, and enabled what can be done. What the host fails to answer hides Show Errors.
void PrepareHistoryMenu(core::Globals& globals, const widgets::MenuItemRef& menu,
                        const widgets::ListView& list);

} // namespace cvlog::store
