// What happens in a list's window: what the user does, and what the system asks and tells.

#include "base/failure.h"
#include "platform/win32/list_accessible_events.h"
#include "platform/win32/list_cells.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/screen_units.h"

namespace cvlog::platform::win32 {

bool ListViewWindow::beforeMessage(UINT message, WPARAM& wParam, LPARAM lParam, LRESULT& result) {
    if (ListInput::isInput(message) && selection_.shifted()) flush(); // the user means the rows that are seen
    if (const NMHEADERW* notice = headerNotice(message, lParam); notice && columns_.refuses(*notice)) {
        result = TRUE;
        return true;
    }
    if (message == WM_PAINT) paintFromTheEdge();
    if (ListInput::isPress(message) && !tellMousePressed()) return true;
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT) {
        result = giveAccessible(wParam);
        return result != 0;
    }
    if (input_.before(message, wParam)) return true;
    // Its owner had the key first. After other messages the list may be gone.
    return (message == WM_KEYDOWN || message == WM_CHAR) && leavesByTab(message, wParam);
}

/// In any message loop. The character that Tab types as well is no text to look for.
bool ListViewWindow::leavesByTab(UINT message, WPARAM wParam) const noexcept {
    if (!form_ || wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0) return false; // '\t' has the same number
    if (message == WM_CHAR) return true;
    SendMessageW(form_, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, FALSE); // the list may be gone now
    return true;
}

void ListViewWindow::afterMessage(UINT message, WPARAM, LPARAM lParam, LRESULT result) {
    if (!list()) return; // a parent took it along
    if (const NMHEADERW* notice = headerNotice(message, lParam)) {
        if (columns_.userChanged(*notice, result != 0, dpi_))
            frame_->postLater(static_cast<WPARAM>(Later::ColumnOrder));
        tellViewChanged();
    }
    if (!ListInput::isInput(message)) return;
    selection_.pullIfMissed(list());
    input_.after(message);
}

bool ListViewWindow::tellMousePressed() {
    const std::shared_ptr<ListFrame> frame = frame_;
    const auto handler = mousePressed;
    if (handler) base::ignoring(handler);
    return frame->tells(this);
}

/// Rows are painted from edge to edge, but not all systems ask for the first pixels when a row's state changes.
void ListViewWindow::paintFromTheEdge() const noexcept {
    constexpr LONG kPixelsLeftOut = 2;
    RECT asked{};
    if (!GetUpdateRect(list(), &asked, FALSE) || asked.left <= 0 || asked.left > kPixelsLeftOut) return;
    asked.left = 0;
    InvalidateRect(list(), &asked, FALSE);
}

const NMHEADERW* ListViewWindow::headerNotice(UINT message, LPARAM lParam) const noexcept {
    if (message != WM_NOTIFY) return nullptr;
    const auto* notice = reinterpret_cast<const NMHEADERW*>(lParam);
    const auto code = static_cast<int>(notice->hdr.code);
    const bool isHeaderCode = code <= static_cast<int>(HDN_FIRST) && code >= static_cast<int>(HDN_LAST);
    return isHeaderCode && notice->hdr.hwndFrom == reinterpret_cast<HWND>(send(LVM_GETHEADER)) ? notice
                                                                                               : nullptr;
}

LRESULT ListViewWindow::notified(NMHDR& header) {
    using Owner = widgets::ListViewOwner;
    switch (header.code) {
    case LVN_GETDISPINFOW:
        answerCell(model_, icons_, reinterpret_cast<NMLVDISPINFOW&>(header));
        break;
    case NM_CUSTOMDRAW:
        return painter_.answer(reinterpret_cast<const NMLVCUSTOMDRAW&>(header), dpi_);
    case LVN_GETINFOTIPW:
        answerToolTip(model_, reinterpret_cast<NMLVGETINFOTIPW&>(header));
        break;
    case LVN_ODFINDITEMW:
        return findTyped(model_, reinterpret_cast<NMLVFINDITEMW&>(header));
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
        itemsChanged(header);
        tellViewChanged();
        break;
    case LVN_ENDSCROLL:
        tellViewChanged();
        break;
    case NM_CLICK:
    case NM_RCLICK:
        input_.clicked();
        break;
    // The list may be gone after each of these.
    case LVN_COLUMNCLICK: {
        const int column = reinterpret_cast<NMLISTVIEW&>(header).iSubItem + 1;
        owner_([column](Owner& owner) { owner.columnClicked(column); });
        break;
    }
    case NM_DBLCLK: {
        input_.clicked();
        selection_.pullIfMissed(list());
        owner_([](Owner& owner) { owner.doubleClicked(); });
        break;
    }
    case NM_SETFOCUS:
        tellFocused(list(), model_.focusedRow() - 1);
        owner_([](Owner& owner) { owner.gotFocus(); });
        break;
    case NM_KILLFOCUS:
        owner_([](Owner& owner) { owner.lostFocus(); });
        break;
    default:
        break;
    }
    return 0;
}

void ListViewWindow::itemsChanged(const NMHDR& header) {
    if (selection_.pushing()) return;
    if (header.code == LVN_ODSTATECHANGED) {
        selection_.pull(list());
        tellSelectionChanged(list());
        return;
    }
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    const UINT states = change.uOldState ^ change.uNewState;
    const bool selected = (change.uNewState & LVIS_SELECTED) != 0;
    if (change.iItem < 0)
        selection_.pull(list());
    else if (states & LVIS_SELECTED)
        selection_.userChanged(change.iItem, selected);
    selection_.pullFocus(list());
    if (change.iItem < 0)
        tellSelectionChanged(list());
    else if (states & LVIS_SELECTED)
        tellSelected(list(), change.iItem, selected);
    if (states & LVIS_FOCUSED) tellFocus();
}

/// Tells when another row has the focus.
void ListViewWindow::tellFocus() noexcept {
    const int row = model_.focusedRow();
    const widgets::RowId id = row > 0 && row <= model_.rowCount() ? model_.idAt(row) : 0;
    if (id != 0 && id != toldFocus_) tellFocused(list(), row - 1);
    toldFocus_ = id;
}

LRESULT ListViewWindow::giveAccessible(WPARAM wParam) {
    if (!accessible_)
        accessible_ = ListAccessible::make(
            {accessibleRows_, [frame = frame_] { frame->postLater(static_cast<WPARAM>(Later::Activation)); },
             frame_->lockCode()});
    return accessible_->give(wParam);
}

void ListViewWindow::surroundingsChanged() { appearanceChanged(); }

void ListViewWindow::laterCame(WPARAM what) {
    switch (static_cast<Later>(what)) {
    case Later::ColumnOrder:
        if (!pending_.columns) columns_.pullOrder(list()); // what the program set since counts more
        break;
    case Later::Activation:
        owner_(
            [](widgets::ListViewOwner& owner) { owner.doubleClicked(); }); // the list may be gone afterwards
        break;
    }
}

} // namespace cvlog::platform::win32
