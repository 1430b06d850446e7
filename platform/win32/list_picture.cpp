#include "platform/win32/list_picture.h"

#include "platform/win32/list_view_window.h"
#include "platform/win32/screen_units.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

/// Rows from the bottom: not every reader of a metafile takes the other way.
BITMAPINFO description(SIZE size) noexcept {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biSizeImage = static_cast<DWORD>(size.cx * size.cy * 4); // metafiles keep as many bytes
    return info;
}

ListViewWindow& windowOf(widgets::ListViewPeer& peer) noexcept { return static_cast<ListViewWindow&>(peer); }

int rowHeight(HWND list) noexcept {
    RECT row{};
    row.left = LVIR_BOUNDS;
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    return static_cast<int>(row.bottom - row.top);
}

} // namespace

ListPicture::ListPicture(widgets::PeerFactory& peers, widgets::ListView& list, SIZE size, int dpi)
    : size_(size), peer_(peers.makeListView(list)), window_(windowOf(*peer_)) {
    windowOf(*peer_).fixResolution(dpi);
    SetWindowPos(window_.frame(), nullptr, 0, 0, size.cx, size.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (list.peer()) scrollLike(windowOf(*list.peer()), dpi);
    const BITMAPINFO info = description(size);
    bitmap_ = BitmapHandle(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits_, nullptr, 0));
    if (!bitmap_) throw std::runtime_error("no bitmap for a picture of the list");
    paint();
}

ListPicture::~ListPicture() = default;

void ListPicture::scrollLike(const ListViewWindow& shown, int dpi) const noexcept {
    if (!shown.list()) return;
    SCROLLINFO across{};
    across.cbSize = sizeof across;
    across.fMask = SIF_POS;
    GetScrollInfo(shown.list(), SB_HORZ, &across);
    const int top = static_cast<int>(SendMessageW(shown.list(), LVM_GETTOPINDEX, 0, 0));
    const int right = MulDiv(across.nPos, dpi, windowDpi(shown.list()));
    SendMessageW(window_.list(), LVM_SCROLL, static_cast<WPARAM>(right), top * rowHeight(window_.list()));
}

void ListPicture::paint() const {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    if (!dc) throw std::runtime_error("no memory for a picture of the list");
    const HGDIOBJ before = SelectObject(dc.get(), bitmap_.get());
    const RECT all{0, 0, size_.cx, size_.cy};
    SetBkColor(dc.get(), static_cast<COLORREF>(SendMessageW(window_.list(), LVM_GETBKCOLOR, 0, 0)));
    ExtTextOutW(dc.get(), 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr); // not all systems print scroll bars
    print(dc.get(), window_.list());
    print(dc.get(), reinterpret_cast<HWND>(SendMessageW(window_.list(), LVM_GETHEADER, 0, 0)));
    GdiFlush();
    SelectObject(dc.get(), before);
}

/// Children are printed by hand: not all systems do it with their parents.
void ListPicture::print(HDC dc, HWND window) const noexcept {
    POINT corner{};
    MapWindowPoints(window, window_.frame(), &corner, 1);
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, corner.x, corner.y, nullptr);
    SendMessageW(window, WM_PRINT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT | PRF_NONCLIENT | PRF_ERASEBKGND);
    RestoreDC(dc, saved);
}

void ListPicture::draw(HDC dc, const RECT& place) const noexcept {
    const BITMAPINFO info = description(size_);
    const int saved = SaveDC(dc);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr); // which halftones ask for
    StretchDIBits(dc, place.left, place.top, place.right - place.left, place.bottom - place.top, 0, 0,
                  size_.cx, size_.cy, bits_, &info, DIB_RGB_COLORS, SRCCOPY);
    RestoreDC(dc, saved);
}

} // namespace cvlog::platform::win32
