#pragma once

#include "workbench/script_object.h"
#include "workbench/tool_windows.h"

namespace workbench {

// The workbench's windows as the log sees them. The windows must outlive the objects.

/// The main window: `hwnd` and `IsMDIForm`.
ComPtr<IDispatch> makeMainWindowObject(const FrameWindow& frame);

/// The collection of the tools that are open at the time of the call, the active one last. Each has a
/// `CalvettaWindow`.
ComPtr<IDispatch> makeToolList(const ToolWindows& tools);

} // namespace workbench
