#pragma once

#include "core/globals.h"

namespace cvlog::host {

/// Shows the alert about the obsolete Dock call and comes back when the user has pressed OK or five seconds after the
/// window was loaded. Throws when the system makes no window.
void ShowAlert(core::Globals& globals);

} // namespace cvlog::host
