#pragma once

#include "workbench/repository_objects.h"
#include "workbench/tool_windows.h"

namespace workbench {

/// The workspace, from which the log reaches everything else of its host. The windows must outlive it.
/// `onCodeAsked` is called for each `TranslateReturnCode`. Throws Failure when the project's options cannot be read.
ComPtr<IDispatch> makeWorkspace(const SharedProject& project, FrameWindow& frame, const ToolWindows& tools,
                                std::function<void()> onCodeAsked);

} // namespace workbench
