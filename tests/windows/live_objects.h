#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// Fonts, bitmaps, device contexts ... of this process. Wine answers 0 for the system's own count, and knows each
/// object by the lower half of its handle alone.
inline int liveGraphicsObjects() noexcept {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<int>(counted);
    int live = 0;
    for (UINT_PTR index = 1; index < 0x10000; ++index)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++live;
    return live;
}

inline BOOL CALLBACK countWindow(HWND, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

inline BOOL CALLBACK countWindowAndChildren(HWND window, LPARAM counter) {
    EnumChildWindows(window, countWindow, counter);
    return countWindow(window, counter);
}

/// All windows of this thread, hidden ones and children too.
inline int liveWindows() noexcept {
    int live = 0;
    EnumThreadWindows(GetCurrentThreadId(), countWindowAndChildren, reinterpret_cast<LPARAM>(&live));
    return live;
}

/// Handles of this process to files, events ... of which `counts` holds. Asked one by one: Wine answers 0 to
/// GetProcessHandleCount.
template <class Counts>
int openHandles(Counts counts) {
    int count = 0;
    for (ULONG_PTR value = 4; value < 0x8000; value += 4) {
        DWORD flags = 0;
        const auto handle = reinterpret_cast<HANDLE>(value);
        count += GetHandleInformation(handle, &flags) && counts(handle) ? 1 : 0;
    }
    return count;
}
inline int openHandles() {
    return openHandles([](HANDLE) { return true; });
}

} // namespace cvlog::platform::win32
