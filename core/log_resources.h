#pragma once

#include "core/globals.h"

namespace cvlog::core {

/// The resource form, loaded on first use with the result icons and the header icons.
LogResources& LoadLogResources(Globals& globals);

/// Gives the list the shared header icons and then the shared row icons, when it lacks one of them. Failures are
/// ignored.
void AttachImageLists(Globals& globals, widgets::ListView& list) noexcept;

} // namespace cvlog::core
