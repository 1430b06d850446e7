#pragma once

#include "core/globals.h"

namespace cvlog::details {

/// The resource form hears of changes of this repository from now on, and no more of the one before; until the form
/// is unloaded. A repository that raises no events is none to hear of.
void FollowRepository(core::Globals& globals, hostapi::Repository repository);

/// An object was modified. In the first list, rows on the object whose errors file is gone lose their reference to it,
/// and such entries are closed in every list.
void RepositoryObjectModified(core::Globals& globals, std::u16string_view objectId);

} // namespace cvlog::details
