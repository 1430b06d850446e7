#include "platform/win32/list_frame.h"

#include "platform/win32/common_controls_context.h"
#include "platform/win32/firewall.h"
#include "platform/win32/module.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr UINT kLaterMessage = WM_APP + 2;
constexpr UINT kDpiChangedAfterParent = 0x02E3;
constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | LVS_REPORT |
                             LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;
constexpr DWORD kListExtendedStyle = LVS_EX_FULLROWSELECT | LVS_EX_SUBITEMIMAGES | LVS_EX_HEADERDRAGDROP |
                                     LVS_EX_LABELTIP | LVS_EX_INFOTIP | LVS_EX_DOUBLEBUFFER;
constexpr SIZE kParkedSize{320, 240};

} // namespace

std::shared_ptr<ListFrame> ListFrame::make(HostWindow& host) {
    std::shared_ptr<ListFrame> made(new ListFrame(host));
    made->makeWindows();
    return made;
}

void ListFrame::makeWindows() {
    const CommonControlsContext context;
    frame_ = makeOwnWindow(*this, WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT,
                           host_.handle());
    self_ = shared_from_this();
    list_ =
        CreateWindowExW(0, WC_LISTVIEWW, L"", kListStyle, 0, 0, 0, 0, frame_, nullptr, thisModule(), nullptr);
    if (!list_) {
        DestroyWindow(frame_);
        throw std::runtime_error("no list window");
    }
    SetWindowLongPtrW(list_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    original_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ListFrame::listProcedure)));
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, kListExtendedStyle, kListExtendedStyle);
    SetWindowPos(frame_, nullptr, 0, 0, kParkedSize.cx, kParkedSize.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    host_.addListener(frame_);
}

void ListFrame::moveTo(HWND parent, const RECT& area) noexcept {
    if (!frame_) return;
    if (GetAncestor(frame_, GA_PARENT) != parent) SetParent(frame_, parent);
    SetWindowPos(frame_, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void ListFrame::park() noexcept {
    if (!frame_) return;
    ShowWindow(frame_, SW_HIDE);
    SetParent(frame_, host_.handle());
}

void ListFrame::postLater(WPARAM what) noexcept { PostMessageW(frame_, kLaterMessage, what, 0); }

void ListFrame::close() noexcept {
    events_ = nullptr;
    if (!frame_) return;
    if (depth_ == 0) {
        DestroyWindow(frame_);
        return;
    }
    closing_ = true;
    park();
}

LRESULT ListFrame::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        MoveWindow(list_, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        return 0;
    case WM_SETFOCUS:
        SetFocus(list_);
        return 0;
    case WM_ERASEBKGND:
        return 1; // the list covers everything
    case WM_CONTEXTMENU:
        return 0; // lists have menus of their own: windows above show none
    case WM_NOTIFY: {
        auto& header = *reinterpret_cast<NMHDR*>(lParam);
        if (events_ && list_ && header.hwndFrom == list_) return events_->notified(header);
        break;
    }
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case kDpiChangedAfterParent:
        return surroundingsChanged(message, wParam, lParam);
    case kLaterMessage:
        if (events_) events_->laterCame(wParam);
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT ListFrame::surroundingsChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    // Of the theme and the resolution the system itself tells the list.
    if (message == WM_SETTINGCHANGE || message == WM_SYSCOLORCHANGE)
        SendMessageW(list_, message, wParam, lParam);
    if (events_) events_->surroundingsChanged();
    return 0;
}

void ListFrame::windowGone() noexcept {
    host_.removeListener(frame_);
    frame_ = nullptr;
    self_.reset(); // the last thing: this may be gone now
}

LRESULT CALLBACK ListFrame::listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* frame = reinterpret_cast<ListFrame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return frame->handleListMessage(message, wParam, lParam);
}

LRESULT ListFrame::handleListMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const std::shared_ptr<void> hostOwner = host_.owner ? host_.owner() : nullptr; // goes last
    const std::shared_ptr<ListFrame> alive = shared_from_this();
    const HWND list = list_;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original_));
        list_ = nullptr;
        return CallWindowProcW(original_, list, message, wParam, lParam);
    }
    ++depth_;
    LRESULT result = 0;
    const bool hadEvents = events_ != nullptr;
    const bool taken =
        hadEvents && firewall(false, [&] { return events_->beforeMessage(message, wParam, lParam, result); });
    if (!taken && hadEvents == (events_ != nullptr)) // a list that was closed meanwhile gets no input
        result = CallWindowProcW(original_, list, message, wParam, lParam);
    if (events_)
        firewall(false, [&] {
            events_->afterMessage(message, wParam, lParam, result);
            return true;
        });
    if (--depth_ == 0 && closing_ && frame_) host_.destroyLater(frame_);
    return result;
}

} // namespace cvlog::platform::win32
