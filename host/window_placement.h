#pragma once

#include "core/globals.h"
#include "widgets/form.h"

#include <string_view>

namespace cvlog::host {

/// Gives the window the place and state that the user's settings of this section hold, or `defaults` centred on the
/// screen. A window that would lie on no monitor is brought back onto one. Failures of the settings are ignored.
void RestorePlacement(core::Globals& globals, widgets::Form& form, std::u16string_view section,
                      base::Area defaults);

/// Stores the window's normal place and its state. Failures are ignored.
void SavePlacement(core::Globals& globals, const widgets::Form& form, std::u16string_view section) noexcept;

} // namespace cvlog::host
