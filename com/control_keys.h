#pragma once

#include <windows.h>

namespace cvlog::com {

// Modifiers as IOleControlSite::TranslateAccelerator takes them.
inline constexpr DWORD kShiftHeld = 1;
inline constexpr DWORD kControlHeld = 2;
inline constexpr DWORD kAltHeld = 4;

/// What is held down now.
DWORD keyModifiers() noexcept;

/// A key press that a log list has a use for, so that a container must not take it for a key of its own: moving about in
/// the list and the commands of the log. Tab and Esc are the container's, as on any form.
bool isKeyOfList(const MSG& message, DWORD modifiers) noexcept;

/// Such a key also types a character, which the list looks for among its rows.
bool typesText(WPARAM key) noexcept;

} // namespace cvlog::com
