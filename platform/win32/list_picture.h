#pragma once

#include "platform/win32/handles.h"
#include "widgets/list_view.h"
#include "widgets/peer_factory.h"

#include <memory>

namespace cvlog::platform::win32 {

class ListViewWindow;

/// A still picture of a list: what its window would show at a size and a resolution of its own, scrolled as far. The
/// list needs no window for it; one that it has is left alone.
class ListPicture {
public:
    /// The size is in pixels, at least one each way. The factory is this platform's. Throws std::runtime_error when the
    /// system makes no window or no bitmap.
    ListPicture(widgets::PeerFactory& peers, widgets::ListView& list, SIZE size, int dpi);
    ~ListPicture();
    ListPicture(const ListPicture&) = delete;
    ListPicture& operator=(const ListPicture&) = delete;

    /// Draws the picture into a place in logical units, stretched where the place is of another size. Metafiles take it
    /// as well.
    void draw(HDC dc, const RECT& place) const noexcept;

private:
    void scrollLike(const ListViewWindow& shown, int dpi) const noexcept;
    void paint() const;
    void print(HDC dc, HWND window) const noexcept;

    SIZE size_;
    std::unique_ptr<widgets::ListViewPeer> peer_;
    const ListViewWindow& window_;
    BitmapHandle bitmap_;
    void* bits_ = nullptr; // in the bitmap
};

} // namespace cvlog::platform::win32
