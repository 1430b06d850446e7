#pragma once

#include "workbench/main_window.h"
#include "workbench/script_object.h"

namespace workbench {

// The main window as the log sees it. The window must outlive the objects.

/// `hwnd` and `IsMDIForm`.
ComPtr<IDispatch> makeMainWindowObject(MainWindow& window);

/// The collection of open tools: one, whose `CalvettaWindow` holds the log control (`Controls`, `DisplayLog`,
/// `Move`, `SetFocus`, `Enabled`, `MousePointer`, `hwnd`).
ComPtr<IDispatch> makeToolList(MainWindow& window);

} // namespace workbench
