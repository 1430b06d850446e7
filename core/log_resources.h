#pragma once

#include "core/globals.h"

namespace cvlog::core {

/// The resource form, loaded on first use with the result icons and the header icons.
LogResources& LoadLogResources(Globals& globals);

/// The font object of the resource form, which is loaded if need be. Until one is put it is a font as new lists have it.
automation::ObjectRef ResourceFont(Globals& globals);

/// Puts another font object there. Nothing and what is no font are refused with an AutomationError. Lists keep theirs.
void SetResourceFont(Globals& globals, const automation::ObjectRef& font);

/// Gives the list the shared header icons and the shared row icons, both when it lacks one of them. Failures are
/// ignored.
void AttachImageLists(Globals& globals, widgets::ListView& list) noexcept;

} // namespace cvlog::core
