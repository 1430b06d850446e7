#pragma once

#include <memory>

#include "workbench/variant.h"

namespace workbench {

class ControlContainer;

/// A contained control as others see it: what the container adds (`Name`, `Visible`, `ZOrder`, `SetFocus`, `Left`,
/// `Top`, `Width`, `Height` in twips), and the control's own `members`. Once the control is closed the former fail.
ComPtr<IDispatch> makeControlObject(const std::weak_ptr<ControlContainer>& container,
                                    ComPtr<IDispatch> members);

} // namespace workbench
