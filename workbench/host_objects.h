#pragma once

#include "workbench/main_window.h"
#include "workbench/repository_objects.h"

namespace workbench {

/// The workspace, from which the log reaches everything else of its host. `window` must outlive it. Throws
/// Failure when the project's options cannot be read.
ComPtr<IDispatch> makeWorkspace(const SharedProject& project, MainWindow& window);

} // namespace workbench
