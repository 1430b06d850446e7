#include "platform/win32/list_accessible_events.h"

#include "platform/win32/common_controls_context.h"
#include "platform/win32/firewall.h"
#include "platform/win32/module.h"

namespace cvlog::platform::win32 {

namespace {

constexpr wchar_t kHeard[] = L"CVLog3Heard"; // a property of the window that told

void CALLBACK hear(HWINEVENTHOOK, DWORD, HWND window, LONG object, LONG, DWORD, DWORD) noexcept {
    if (object == OBJID_CLIENT) SetPropW(window, kHeard, reinterpret_cast<HANDLE>(1));
}

bool askSystem() {
    const CommonControlsContext context;
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT | LVS_OWNERDATA, 0, 0, 100,
                                      100, HWND_MESSAGE, nullptr, thisModule(), nullptr);
    if (!list) return false;
    SendMessageW(list, LVM_SETITEMCOUNT, 1, 0);
    const bool tells = tellsItself(list);
    DestroyWindow(list);
    return tells;
}

bool systemTells() noexcept {
    static const bool tells = firewall(false, askSystem);
    return tells;
}

void tell(DWORD event, HWND list, LONG child) noexcept {
    if (IsWinEventHookInstalled(event) && !systemTells()) NotifyWinEvent(event, list, OBJID_CLIENT, child);
}

} // namespace

bool tellsItself(HWND list) noexcept {
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_OBJECT_FOCUS, EVENT_OBJECT_SELECTIONWITHIN, thisModule(), hear,
                        GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_INCONTEXT);
    LVITEMW item{};
    item.state = item.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
    if (hook) UnhookWinEvent(hook);
    return RemovePropW(list, kHeard) != nullptr;
}

void tellFocused(HWND list, int index) noexcept {
    if (index >= 0 && GetFocus() == list) tell(EVENT_OBJECT_FOCUS, list, index + 1);
}

void tellSelected(HWND list, int index, bool selected) noexcept {
    const bool alone = selected && SendMessageW(list, LVM_GETSELECTEDCOUNT, 0, 0) == 1;
    tell(alone      ? EVENT_OBJECT_SELECTION
         : selected ? EVENT_OBJECT_SELECTIONADD
                    : EVENT_OBJECT_SELECTIONREMOVE,
         list, index + 1);
}

void tellSelectionChanged(HWND list) noexcept { tell(EVENT_OBJECT_SELECTIONWITHIN, list, CHILDID_SELF); }

void tellRowsChanged(HWND list) noexcept { tell(EVENT_OBJECT_REORDER, list, CHILDID_SELF); }

} // namespace cvlog::platform::win32
