#pragma once

#include "core/globals.h"

namespace cvlog::details {

/// Shows the messages of the entry's errors file as child rows below it, in every list. An entry whose file is gone
/// loses its reference to it, in this list.
void ExpandEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position);

} // namespace cvlog::details
