#include "bench/windows/stock_list.h"

#include "platform/win32/common_controls_context.h"
#include "platform/win32/list_cells.h"
#include "platform/win32/wide_text.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace cvlog::bench {

using namespace platform::win32;

namespace {

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "The system's list failed: %s\n", what);
    std::exit(2);
}

HWND headerOf(HWND list) noexcept { return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0)); }

void copyHeader(HWND from, HWND to) {
    const int count = static_cast<int>(SendMessageW(headerOf(from), HDM_GETITEMCOUNT, 0, 0));
    SendMessageW(headerOf(to), HDM_SETIMAGELIST, 0, SendMessageW(headerOf(from), HDM_GETIMAGELIST, 0, 0));
    for (int i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        wchar_t caption[64] = L"";
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.pszText = caption;
        column.cchTextMax = 64;
        SendMessageW(from, LVM_GETCOLUMNW, index, reinterpret_cast<LPARAM>(&column));
        column.iSubItem = i;
        SendMessageW(to, LVM_INSERTCOLUMNW, index, reinterpret_cast<LPARAM>(&column));
        HDITEMW item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        SendMessageW(headerOf(from), HDM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
        SendMessageW(headerOf(to), HDM_SETITEMW, index, reinterpret_cast<LPARAM>(&item));
    }
}

DWORD withoutOwnerData(HWND list) noexcept {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(list, GWL_STYLE));
    return style & ~static_cast<DWORD>(LVS_OWNERDATA);
}

} // namespace

StockList::StockList(ListViewWindow& like, HWND parent, const RECT& area) {
    const CommonControlsContext context;
    const HWND model = like.list();
    window_ = CreateWindowExW(0, WC_LISTVIEWW, L"", withoutOwnerData(model), area.left, area.top,
                              area.right - area.left, area.bottom - area.top,
                              parent ? parent : GetParent(model), nullptr, nullptr, nullptr);
    require(window_ != nullptr, "no window");
    const auto extended = static_cast<LPARAM>(SendMessageW(model, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
    send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, extended);
    send(WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), FALSE);
    copyHeader(model, window_);
}

StockList::~StockList() {
    SendMessageW(headerOf(window_), HDM_SETIMAGELIST, 0, 0); // the other list's
    DestroyWindow(window_);
}

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
        std::wstring text(wideView(row.columnText(column)));
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
