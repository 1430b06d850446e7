#include "platform/win32/unseen_change.h"

namespace cvlog::platform::win32 {

namespace {

DWORD styleOf(HWND window) noexcept { return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)); }

} // namespace

UnseenChange::UnseenChange(HWND list) noexcept : list_((styleOf(list) & WS_VISIBLE) ? list : nullptr) {
    if (!list_) return;
    RedrawWindow(list_, nullptr, nullptr,
                 RDW_ERASENOW | RDW_NOCHILDREN); // a frame that waits would be forgotten
    header_ = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    headerWaits_ = header_ && GetUpdateRect(header_, nullptr, FALSE);
    across_ = barOf(SB_HORZ);
    down_ = barOf(SB_VERT);
    DefWindowProcW(list_, WM_SETREDRAW, FALSE, 0); // the list itself does not notice
}

UnseenChange::~UnseenChange() {
    if (!list_) return;
    DefWindowProcW(list_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(list_, nullptr, nullptr, RDW_VALIDATE | RDW_NOFRAME | RDW_NOCHILDREN);
    if (!drawIfChanged(SB_HORZ, across_) || !drawIfChanged(SB_VERT, down_))
        RedrawWindow(list_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN); // all has moved
    InvalidateRect(list_, nullptr, TRUE);
    if (headerWaits_) InvalidateRect(header_, nullptr, TRUE);
}

UnseenChange::Bar UnseenChange::barOf(int which) const noexcept {
    Bar bar;
    bar.shown = (styleOf(list_) & static_cast<DWORD>(which == SB_HORZ ? WS_HSCROLL : WS_VSCROLL)) != 0;
    bar.info.cbSize = sizeof bar.info;
    bar.info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    GetScrollInfo(list_, which, &bar.info);
    return bar;
}

/// False when the bar has come or gone, so that drawing it is not enough.
bool UnseenChange::drawIfChanged(int which, const Bar& before) const noexcept {
    const Bar now = barOf(which);
    if (now.shown != before.shown) return false;
    const bool same = now.info.nMin == before.info.nMin && now.info.nMax == before.info.nMax &&
                      now.info.nPage == before.info.nPage && now.info.nPos == before.info.nPos;
    if (now.shown && !same) SetScrollInfo(list_, which, &now.info, TRUE);
    return true;
}

} // namespace cvlog::platform::win32
