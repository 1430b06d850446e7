#pragma once

#include "core/globals.h"

namespace cvlog::details {

/// Shows the open entries again, by the kinds of lines that are hidden now. The focus stays where it is.
void ReexpandEntries(core::Globals& globals) noexcept;

} // namespace cvlog::details
