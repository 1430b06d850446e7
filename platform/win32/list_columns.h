#pragma once

#include "platform/win32/windows_headers.h"
#include "widgets/list_view.h"

#include <string>
#include <vector>

namespace cvlog::platform::win32 {

/// The window with the column headers of a list window.
inline HWND headerOf(HWND list) noexcept {
    return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
}

/// Keeps the columns of a list window in step with the model: pushes what differs, and tells the model what
/// the user drags. A hidden column has no width and cannot be dragged open. Indexes are the window's, from 0.
class ListColumns {
public:
    explicit ListColumns(widgets::ListView& model) noexcept : model_(model) {}

    void push(HWND list, int dpi);
    /// Pushes the widths again even where the model's did not change: the resolution did.
    void forget() noexcept;

    /// True when the header must not do what it asks leave for.
    bool refuses(const NMHEADERW& request) const noexcept;
    /// After the list took note of what the header says. True when a column was dropped at another place: the
    /// header moves it only afterwards, so `pullOrder` has to be called later as well.
    bool userChanged(const NMHEADERW& change, bool refused, int dpi) noexcept;
    void pullOrder(HWND list);

private:
    struct Shown {
        std::u16string caption;
        int width = -1;
        int format = -1;
        int icon = -1;
    };
    Shown wanted(int index, int dpi) const;
    void insert(HWND list, int index);
    void show(HWND list, int index, const Shown& wanted);
    void pushOrder(HWND list);

    widgets::ListView& model_;
    std::vector<Shown> shown_;
    bool pushing_ = false;
};

} // namespace cvlog::platform::win32
