#pragma once

#include <windows.h>

namespace workbench {

/// The system's cursor for an automation number: 0 the usual one, 11 the hourglass, 13 the arrow with hourglass.
HCURSOR cursorFor(int pointer);

} // namespace workbench
