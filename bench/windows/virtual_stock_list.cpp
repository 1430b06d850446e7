#include "bench/windows/virtual_stock_list.h"

#include "bench/windows/stock_window.h"
#include "platform/win32/list_cells.h"

namespace cvlog::bench {

using namespace platform::win32;

VirtualStockList::VirtualStockList(const widgets::ListView& model, ListViewWindow& like, HWND parent,
                                   const RECT& area)
    : model_(model), frame_(makeOwnWindow(*this, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, parent)) {
    const int width = static_cast<int>(area.right - area.left);
    const int height = static_cast<int>(area.bottom - area.top);
    SetWindowPos(frame_, nullptr, area.left, area.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    window_ = makeStockWindow(like, frame_, {0, 0, width, height}, stockStyle(like, true));
    icons_.assign(model.smallIcons(), smallIconSide(96));
    SendMessageW(window_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons_.handle()));
    SendMessageW(window_, LVM_SETITEMCOUNT, static_cast<WPARAM>(model.rowCount()), 0);
    require(SendMessageW(window_, LVM_GETITEMCOUNT, 0, 0) == model.rowCount(), "rows are missing");
}

VirtualStockList::~VirtualStockList() {
    destroyStockWindow(window_);
    if (frame_) DestroyWindow(frame_);
}

LRESULT VirtualStockList::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOW) {
        answerCell(model_, icons_, *reinterpret_cast<NMLVDISPINFOW*>(lParam));
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace cvlog::bench
