#pragma once

#include "core/globals.h"

// What the log object's placement members do.

namespace cvlog::host {

/// With a container set: whether the user wants the log; else whether it floats.
bool GetVisible(const core::Globals& globals) noexcept;
/// Nothing happens when the log is as asked. Without a container the floating window follows, and what the user wants
/// is remembered unchanged.
void PutVisible(core::Globals& globals, bool visible) noexcept;

/// Sets the host's container. Nothing happens for the same object; none hides the log; another re-places it.
void PutParent(core::Globals& globals, const automation::ObjectRef& parent) noexcept;

bool GetDocked(const core::Globals& globals) noexcept;
/// Changes the option, tells the host's options document and re-places the log. Nothing happens without a container, or
/// when the option has the value.
void PutDocked(core::Globals& globals, bool docked) noexcept;

/// Gives the log the focus where it is shown. A docked log raises GotFocus first.
void FocusLog(core::Globals& globals, core::CVLog& log) noexcept;

/// Has the host move its window, in twips.
void MoveHostWindow(core::Globals& globals, double left, double top, double width, double height) noexcept;

/// The obsolete way to dock the log: an alert for the host's developers, then the wish alone is noted.
void Dock(core::Globals& globals, const automation::ObjectRef& parent);

} // namespace cvlog::host
