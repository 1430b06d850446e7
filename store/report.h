#pragma once

#include "core/globals.h"
#include "widgets/form.h"

#include <functional>
#include <string_view>

namespace cvlog::store {

/// Sets the pointer of the window from which a report is wanted. Its failures are ignored.
using PutMousePointer = std::function<void(widgets::Pointer)>;

/// Has the installed report generator make a report of the list, as it is shown, and show it in front of the host's
/// main window, unless its user breaks it off. The usual pointer is back on every path. `name` is the report's: "Log"
/// or "LogHistory".
void MakeReport(core::Globals& globals, const core::LogViews::ListRef& list, std::u16string_view name,
                const PutMousePointer& putPointer);

/// The same for the list of a log, wherever that is shown.
void MakeLogReport(core::Globals& globals, const core::LogViews::ListRef& list);

} // namespace cvlog::store
