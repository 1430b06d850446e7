#include "bench/windows/stock_window.h"

#include "platform/win32/common_controls_context.h"

#include <cstdio>
#include <cstdlib>

namespace cvlog::bench {

using namespace platform::win32;

namespace {

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

} // namespace

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "The system's list failed: %s\n", what);
    std::exit(2);
}

HWND makeStockWindow(ListViewWindow& like, HWND parent, const RECT& area, DWORD style) {
    const CommonControlsContext context;
    const HWND model = like.list();
    const HWND window = CreateWindowExW(0, WC_LISTVIEWW, L"", style, area.left, area.top,
                                        area.right - area.left, area.bottom - area.top,
                                        parent ? parent : GetParent(model), nullptr, nullptr, nullptr);
    require(window != nullptr, "no window");
    const LRESULT extended = SendMessageW(model, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    SendMessageW(window, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(extended));
    SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), FALSE);
    copyHeader(model, window);
    return window;
}

void destroyStockWindow(HWND window) noexcept {
    SendMessageW(headerOf(window), HDM_SETIMAGELIST, 0, 0); // the other list's
    DestroyWindow(window);
}

DWORD stockStyle(ListViewWindow& like, bool ownerData) noexcept {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(like.list(), GWL_STYLE));
    return ownerData ? style : style & ~static_cast<DWORD>(LVS_OWNERDATA);
}

} // namespace cvlog::bench
