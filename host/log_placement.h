#pragma once

#include "core/globals.h"

namespace cvlog::host {

/// The window of the host's last active tool; none when there is none, or the host fails.
hostapi::HostWindow FindHostWindow(core::Globals& globals) noexcept;

/// The control named "LogView" of the window. It is made inside `Parent` when there is none; none when that fails.
hostapi::HostControl EnsureLogControl(core::Globals& globals, const hostapi::HostWindow& window) noexcept;

/// Places the log for the current state: docked in the host's window, floating in a window of its own, or hidden. A
/// failure leaves it floating or hidden.
void ShowLog(core::Globals& globals) noexcept;

/// Opens the floating window in front of its owner, or brings the open one to the front.
void ShowFloatingWindow(core::Globals& globals, const hostapi::HostWindow& owner) noexcept;
void CloseFloatingWindow(core::Globals& globals) noexcept;

/// Whether a container is a form or the like, which has a scale.
bool HasScale(const automation::ObjectRef& container) noexcept;

} // namespace cvlog::host
