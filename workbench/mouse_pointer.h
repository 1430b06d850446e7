#pragma once

#include <windows.h>

namespace workbench {

/// The system's cursor for an automation number: 0 the usual one, 11 the hourglass, 13 the arrow with hourglass.
HCURSOR cursorFor(int pointer);

/// Answers WM_SETCURSOR: shows a pointer that is not the usual one. False for the usual one, which each window knows
/// best by itself.
bool showUnusual(int pointer);

} // namespace workbench
