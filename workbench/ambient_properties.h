#pragma once

#include <windows.h>

#include <oaidl.h>

#include "workbench/variant.h"

namespace workbench {

/// The surroundings that a control asks its container about, by DISPID_AMBIENT_...: font, colours, language,
/// mode. Answers DISP_E_MEMBERNOTFOUND for what the workbench has no opinion on.
HRESULT ambientProperty(DISPID id, Variant& value);

} // namespace workbench
