#include "com/control_keys.h"

namespace cvlog::com {

namespace {

constexpr WPARAM kCopyKey = 'C';
constexpr WPARAM kErrorsKey = 'E';

DWORD whileDown(int key, DWORD modifier) noexcept { return GetKeyState(key) < 0 ? modifier : 0; }

} // namespace

DWORD keyModifiers() noexcept {
    return whileDown(VK_SHIFT, kShiftHeld) | whileDown(VK_CONTROL, kControlHeld) |
           whileDown(VK_MENU, kAltHeld);
}

bool isKeyOfList(const MSG& message, DWORD modifiers) noexcept {
    const WPARAM key = message.wParam;
    if (message.message == WM_SYSKEYDOWN) return key == VK_F10 && modifiers == kShiftHeld;
    if (message.message != WM_KEYDOWN) return false;
    switch (key) {
    case VK_PRIOR:
    case VK_NEXT:
    case VK_END:
    case VK_HOME:
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
    case VK_RETURN:
    case VK_SPACE:
    case VK_DELETE:
    case VK_ADD:
    case VK_SUBTRACT:
    case VK_F1:
        return true;
    case kCopyKey:
    case kErrorsKey:
        return (modifiers & kControlHeld) != 0;
    default:
        return false;
    }
}

bool typesText(WPARAM key) noexcept { return key == VK_SPACE || key == VK_ADD || key == VK_SUBTRACT; }

} // namespace cvlog::com
