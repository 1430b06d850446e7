#pragma once

#include "core/globals.h"

namespace cvlog::view {

/// What a double click on the selected row does in a log: an entry is opened and its errors are shown, an open one is
/// closed, of a child row its error is shown. `f` is a control of ours, or any object with a list "lvLog" and the menu
/// items in its `Controls`. A list that is none of the live ones is neither opened nor closed. Failures of `f` reach the
/// caller.
void LogDblClick(core::Globals& globals, const automation::ObjectRef& f);

} // namespace cvlog::view
