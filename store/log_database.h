#pragma once

#include "automation/object.h"
#include "core/globals.h"

#include <memory>

namespace cvlog::store {

/// Attaches the component to a host workspace: reads its options, opens and upgrades the project's database, keeps an
/// append cursor, loads the icons of the repository's entity types and restores the log's remembered visibility.
/// False when the database or a host call on the way fails; what was opened stays, so that CloseDB can clean up.
/// A failing options read reaches the caller, and so does a failing visibility read once an entity type was listed.
bool OpenDB(core::Globals& globals, const std::shared_ptr<core::CVLog>& log,
            const automation::ObjectRef& workspace);

/// Undoes OpenDB, in the reverse order; nothing happens when nothing is open.
void CloseDB(core::Globals& globals);

} // namespace cvlog::store
