#pragma once

#include "core/globals.h"
#include "widgets/form_peer.h"

namespace cvlog::host {

/// The window of the host's last active tool; none when there is none, or the host fails.
hostapi::HostWindow FindHostWindow(core::Globals& globals) noexcept;

/// The control named "LogView" of the window. It is made inside `Parent` when there is none; none when that fails.
hostapi::HostControl EnsureLogControl(core::Globals& globals, const hostapi::HostWindow& window) noexcept;

/// Places the log for the current state: docked in the host's window, floating in a window of its own, or hidden. A
/// failure leaves it floating or hidden. `Leave`: the focus stays where the user has it.
void ShowLog(core::Globals& globals, widgets::Activation activation = widgets::Activation::Take) noexcept;

/// Opens the floating window in front of its owner, or brings the open one to the front.
void ShowFloatingWindow(core::Globals& globals, const hostapi::HostWindow& owner,
                        widgets::Activation activation = widgets::Activation::Take) noexcept;
/// The host's window gets the focus; `Leave`: only when the floating window had it.
void CloseFloatingWindow(core::Globals& globals,
                         widgets::Activation activation = widgets::Activation::Take) noexcept;

/// Whether a container is a form or the like, which has a scale.
bool HasScale(const automation::ObjectRef& container) noexcept;

} // namespace cvlog::host
