#include "bench/windows/stock_list.h"

#include "bench/windows/stock_window.h"
#include "platform/win32/list_cells.h"
#include "platform/win32/wide_text.h"

#include <string>

namespace cvlog::bench {

using namespace platform::win32;

StockList::StockList(ListViewWindow& like, HWND parent, const RECT& area)
    : window_(makeStockWindow(like, parent, area, stockStyle(like, false))) {}

StockList::~StockList() { destroyStockWindow(window_); }

void StockList::fill(const widgets::ListView& model, int count) {
    icons_.assign(model.smallIcons(), smallIconSide(96));
    send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons_.handle()));
    send(WM_SETREDRAW, FALSE);
    for (int row = 1; row <= count; ++row) insert(model.row(row), model.columnCount());
    send(WM_SETREDRAW, TRUE);
    InvalidateRect(window_, nullptr, TRUE);
    require(send(LVM_GETITEMCOUNT) == count, "rows are missing");
}

void StockList::append(const widgets::ListView& model, int row) {
    insert(model.row(row), model.columnCount());
    send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(count_ - 1), FALSE);
}

void StockList::insert(const widgets::RowContent& row, int columns) {
    for (int column = 1; column <= columns; ++column) {
        std::wstring text(wideView(std::u16string(row.columnText(column))));
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = count_;
        item.iSubItem = column - 1;
        item.pszText = text.data();
        if (const int image = icons_.indexOf(iconOf(row, column)); image >= 0 || column == 1) {
            item.mask |= LVIF_IMAGE;
            item.iImage = image >= 0 ? image : I_IMAGENONE;
        }
        const UINT message = column == 1 ? LVM_INSERTITEMW : LVM_SETITEMW;
        if (column == 1 || !text.empty()) send(message, 0, reinterpret_cast<LPARAM>(&item));
    }
    ++count_;
}

} // namespace cvlog::bench
