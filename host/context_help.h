#pragma once

#include "core/globals.h"

#include <string_view>

namespace cvlog::host {

/// Opens the host's help file at a context, a decimal number, for the host's main window. Failures are ignored: without
/// the host's window the help has no owner; without a file or a number there is no help.
void ShowContextHelp(core::Globals& globals, std::u16string_view context) noexcept;

} // namespace cvlog::host
