#pragma once

#include "core/globals.h"
#include "widgets/menu_item.h"

// The commands of a log's menu. Most clicks only note a command word; it is carried out after the menu has closed.

namespace cvlog::view {

/// A log that the user works on. It holds all of it, so that nothing goes while a command runs.
struct CommandTarget {
    core::Globals& globals;
    core::LogViews::ListRef list;
    widgets::MenuItemRef menu; // mnuPopUpLog
    automation::ObjectRef control;
};

/// What a click on an item does, without any menu as well.
void ClickMenuItem(const CommandTarget& target, const widgets::MenuItem& item);

/// Carries out the pending command, on what is selected by now. An unknown one does nothing.
void DispatchCommand(const CommandTarget& target);

/// Brings the menu up to date, shows it at the mouse, and carries out what was chosen.
void ShowMenuAndDispatch(const CommandTarget& target);

} // namespace cvlog::view
