#pragma once

#include "view/log_commands.h"

namespace cvlog::view {

// The keys of a log. A key that means something is consumed before it acts: its code becomes 0.

void LogKeyPressed(const CommandTarget& target, widgets::KeyEvent& key);
/// Grey plus, grey minus and Ctrl+E note their command like a click in the menu. As the next menu begins with no
/// command they have no effect of their own.
void LogKeyReleased(const CommandTarget& target, widgets::KeyEvent& key);

} // namespace cvlog::view
