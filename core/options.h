#pragma once

#include "core/globals.h"

namespace cvlog::core {

/// Reads the options from the host's document. A query that fails and a node that is missing leave an option as it
/// was, but for the docked state: without its node it is false.
void LoadOptions(Globals& globals);

} // namespace cvlog::core
