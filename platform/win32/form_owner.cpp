#include "platform/win32/form_owner.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

bool isOwnedBy(HWND window, HWND owner) noexcept {
    for (HWND next = window; next; next = GetWindow(next, GW_OWNER))
        if (next == owner) return true;
    return false;
}

} // namespace

HWND ownerWindow(std::int32_t handle) {
    if (handle == 0) return nullptr;
    const HWND named = reinterpret_cast<HWND>(static_cast<std::intptr_t>(handle)); // 32 significant bits
    const HWND top = IsWindow(named) ? GetAncestor(named, GA_ROOT) : nullptr;
    if (!top || GetAncestor(top, GA_PARENT) != GetDesktopWindow())
        throw std::runtime_error("there is no such window");
    return top;
}

void setOwner(HWND window, HWND owner) {
    if (GetWindow(window, GW_OWNER) == owner) return;
    if (isOwnedBy(owner, window)) throw std::runtime_error("a window cannot own itself");
    SetWindowLongPtrW(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    if (GetWindow(window, GW_OWNER) != owner) throw std::runtime_error("that window owns nothing");
}

void activateFrozenOwner(HWND window) noexcept {
    const HWND owner = window ? GetWindow(window, GW_OWNER) : nullptr;
    if (!owner || GetActiveWindow() != window || !IsWindowVisible(owner) || IsWindowEnabled(owner)) return;
    EnableWindow(owner, TRUE); // only a window that takes input can be activated
    SetActiveWindow(owner);
    EnableWindow(owner, FALSE);
}

} // namespace cvlog::platform::win32
