#pragma once

#include <windows.h>

#include "workbench/frame_window.h"

namespace workbench {

// Keys as the user presses them where the focus is, for a program that nobody uses. The program handles them before
// these return, and what it opens for a time, a menu for instance, has been closed again by then.

/// Presses a key; the focus may be elsewhere when it would be released.
void pressKey(FrameWindow& frame, BYTE key, BYTE modifier = 0);
/// Presses and releases a key.
void typeKey(FrameWindow& frame, BYTE key, BYTE modifier = 0);
/// The same without waiting: for the loop of what is open.
void postKey(BYTE key);
/// Has the thread take a key for held down, or not.
void holdKey(BYTE key, bool down);
/// Clicks with the left button at a place of a window's client area.
void click(FrameWindow& frame, HWND window, POINT place);

} // namespace workbench
