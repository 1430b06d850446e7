#pragma once

#include <memory>

#include "workbench/variant.h"

namespace workbench {

class ToolWindow;

/// A tool window as the log sees it: `Controls`, `DisplayLog`, `Move`, `SetFocus`, `Enabled`, `MousePointer`, `hwnd`,
/// `ScaleTop`. Once the window is closed its members fail. What a kind of window lacks is missing here.
ComPtr<IDispatch> makeToolWindowObject(const std::shared_ptr<ToolWindow>& window);

} // namespace workbench
