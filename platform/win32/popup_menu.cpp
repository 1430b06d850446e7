#include "platform/win32/popup_menu.h"

#include "platform/win32/wide_text.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

void check(BOOL done) {
    if (!done) throw std::runtime_error("no menu");
}

// Where menus lie beside the mouse is the user's choice; in a mirrored window all of it is mirrored.
UINT trackFlags(HWND owner) noexcept {
    const bool dropsLeft = GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0;
    const bool mirrored = (GetWindowLongPtrW(owner, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    return TPM_RETURNCMD | TPM_RIGHTBUTTON | (dropsLeft ? TPM_RIGHTALIGN : TPM_LEFTALIGN) |
           (mirrored ? TPM_LAYOUTRTL : 0U);
}

// A menu of a program that is not in front would not close by a click elsewhere.
void bringProgramToFront(HWND owner) noexcept {
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    if (process != GetCurrentProcessId()) SetForegroundWindow(GetAncestor(owner, GA_ROOT));
}

} // namespace

PopupMenu::PopupMenu(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem,
                     const HostWindow& host)
    : host_(host) {
    menu_ = make(menu, defaultItem);
}

MenuHandle PopupMenu::make(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem) {
    MenuHandle made(CreatePopupMenu());
    check(made ? TRUE : FALSE);
    for (const widgets::MenuItemRef& item : menu.items) {
        if (!item->visible) continue;
        append(made.get(), item);
        const auto last = static_cast<UINT>(GetMenuItemCount(made.get()) - 1);
        if (item.get() == defaultItem) SetMenuDefaultItem(made.get(), last, TRUE);
    }
    return made;
}

void PopupMenu::append(HMENU menu, const widgets::MenuItemRef& item) {
    if (item->separator) return check(AppendMenuW(menu, MF_SEPARATOR, 0, nullptr));
    const std::wstring caption = shownText(item->caption);
    const UINT flags = MF_STRING | (item->enabled ? MF_ENABLED : static_cast<UINT>(MF_GRAYED)) |
                       (item->checked ? MF_CHECKED : MF_UNCHECKED);
    if (item->items.empty()) {
        items_.push_back(item);
        return check(AppendMenuW(menu, flags, items_.size(), caption.c_str()));
    }
    MenuHandle below = make(*item, nullptr);
    check(AppendMenuW(menu, flags | MF_POPUP, reinterpret_cast<UINT_PTR>(below.get()), caption.c_str()));
    below.release(); // it goes with the menu above
}

widgets::MenuItemRef PopupMenu::popUp(std::int32_t ownerWindow) {
    const auto asked = reinterpret_cast<HWND>(static_cast<std::intptr_t>(ownerWindow));
    const HWND owner = asked && IsWindow(asked) ? asked : host_.handle();
    POINT mouse{};
    GetCursorPos(&mouse);
    bringProgramToFront(owner);
    const auto number = static_cast<std::size_t>(
        TrackPopupMenuEx(menu_.get(), trackFlags(owner), mouse.x, mouse.y, owner, nullptr));
    PostMessageW(owner, WM_NULL, 0, 0); // else the next menu might close at once
    return number >= 1 && number <= items_.size() ? items_[number - 1] : nullptr;
}

} // namespace cvlog::platform::win32
