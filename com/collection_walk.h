#pragma once

#include "automation/dispatch_table.h"

#include <windows.h>

#include <oleauto.h>

namespace cvlog::com {

/// Fills an empty variant with an enumerator over what a collection holds now, for a host's `For Each`: elements that go
/// meanwhile are still met. Throws what the collection throws. False for an object that is no collection.
bool startWalk(automation::DispatchObject& object, VARIANT* result);

} // namespace cvlog::com
