#include "workbench/keyboard.h"

namespace workbench {

namespace {

/// A modifier that is down until the end of the scope.
class Held {
public:
    explicit Held(BYTE key) : key_(key) {
        if (key_) {
            holdKey(key_, true);
        }
    }
    ~Held() {
        if (key_) {
            holdKey(key_, false);
        }
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    BYTE key_;
};

// F10 alone belongs to the system's menus.
UINT downMessage(BYTE key) { return key == VK_F10 ? WM_SYSKEYDOWN : WM_KEYDOWN; }
UINT upMessage(BYTE key) { return key == VK_F10 ? WM_SYSKEYUP : WM_KEYUP; }
constexpr LPARAM kReleased = 0xC0000001;

} // namespace

void holdKey(BYTE key, bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[key] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

void pressKey(FrameWindow& frame, BYTE key, BYTE modifier) {
    const Held held(modifier);
    PostMessageW(GetFocus(), downMessage(key), key, 1);
    frame.pump();
}

void typeKey(FrameWindow& frame, BYTE key, BYTE modifier) {
    const Held held(modifier);
    PostMessageW(GetFocus(), downMessage(key), key, 1);
    frame.pump();
    PostMessageW(GetFocus(), upMessage(key), key, kReleased);
    frame.pump();
}

void postKey(BYTE key) {
    const HWND focus = GetFocus();
    PostMessageW(focus, downMessage(key), key, 1);
    PostMessageW(focus, upMessage(key), key, kReleased);
}

void click(FrameWindow& frame, HWND window, POINT place) {
    const LPARAM at = MAKELPARAM(place.x, place.y);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(window, WM_LBUTTONUP, 0, at);
    frame.pump();
}

} // namespace workbench
