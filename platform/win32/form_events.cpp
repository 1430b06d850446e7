// What happens in a form's window: what the user does, and what the system asks and tells.

#include "base/failure.h"
#include "platform/win32/form_window.h"
#include "platform/win32/list_view_window.h"

namespace cvlog::platform::win32 {

namespace {} // namespace

bool FormWindow::formMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    // The peer may be gone after each of these.
    case WM_CLOSE:
        form_.userCloses();
        return true;
    case WM_COMMAND:
        commanded(LOWORD(wParam), HIWORD(wParam));
        return true;
    case WM_SIZE:
        tellPlacement();
        tellClientSize();
        return true;
    case WM_DPICHANGED:
        resolutionChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return true;

    case WM_WINDOWPOSCHANGING:
        if (quiet_) reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
        return false;
    case WM_MOVE:
        tellPlacement();
        return true;
    case WM_ACTIVATE:
        activated(LOWORD(wParam) != WA_INACTIVE);
        return false;
    case WM_SETFOCUS:
        return focusChild();
    case WM_SETCURSOR:
        result = TRUE;
        return showPointer();
    default:
        return controlMessage(message, wParam, lParam, result);
    }
}

bool FormWindow::controlMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_NEXTDLGCTL:
        focusNext(wParam, LOWORD(lParam) != 0);
        return true;
    case DM_GETDEFID:
        if (const int command = controls_.enterCommand()) result = MAKELONG(command, DC_HASDEFID);
        return true;
    case WM_DRAWITEM:
        result = TRUE;
        controls_.draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return true;
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(window(), &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, GetSysColorBrush(COLOR_BTNFACE));
        result = TRUE;
        return true;
    }
    default:
        return false;
    }
}

void FormWindow::windowLost() {
    if (form_.list()) listTakenOff(*form_.list()->list); // it would go with the window
    form_.windowLost();
}

void FormWindow::commanded(int command, int notice) {
    const widgets::Button* button = controls_.pressed(command);
    if (notice == BN_SETFOCUS || notice == BN_KILLFOCUS) controls_.markEnterButton();
    if (button && notice == BN_SETFOCUS) form_.userFocuses(*button);
    if (button && notice == BN_CLICKED) form_.userClicks(*button);
}

void FormWindow::resolutionChanged(int dpi, RECT place) {
    dpi_ = dpi;
    base::ignoring([this] { controls_.setLook(form_.font(), dpi_); });
    applyIcons();
    if (const auto& placed = form_.list()) listPlaced(*placed->list, placed->area);
    SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::activated(bool active) noexcept {
    if (active) return; // the system gives the window the focus, which passes it on
    const HWND focus = GetFocus();
    if (IsChild(window(), focus)) lastFocus_ = focus;
}

bool FormWindow::focusChild() noexcept {
    const bool isThere = lastFocus_ && IsChild(window(), lastFocus_) && IsWindowVisible(lastFocus_) &&
                         IsWindowEnabled(lastFocus_);
    const HWND next = isThere ? lastFocus_ : GetNextDlgTabItem(window(), nullptr, FALSE);
    if (next) SetFocus(next);
    return next != nullptr;
}

bool FormWindow::showPointer() const noexcept {
    if (form_.pointer() == widgets::Pointer::Default) return false;
    const bool isHourglass = form_.pointer() == widgets::Pointer::Hourglass;
    SetCursor(LoadCursorW(nullptr, isHourglass ? IDC_WAIT : IDC_APPSTARTING));
    return true;
}

void FormWindow::focusNext(WPARAM next, bool isWindow) const noexcept {
    const HWND target =
        isWindow ? reinterpret_cast<HWND>(next) : GetNextDlgTabItem(window(), GetFocus(), next != 0);
    if (target) SetFocus(target);
}

} // namespace cvlog::platform::win32
