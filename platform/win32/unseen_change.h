#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// Keeps a list window from drawing while it lives; then the whole list is drawn anew with the next painting, and its
/// scroll bars at once where they have changed. A window that cannot be seen stays so.
///
/// The list's own WM_SETREDRAW has both scroll bars drawn each time that it is switched on, and so has a new number of
/// rows: under some systems this takes longer than drawing all rows of a page.
class UnseenChange {
public:
    explicit UnseenChange(HWND list) noexcept;
    ~UnseenChange();
    UnseenChange(const UnseenChange&) = delete;
    UnseenChange& operator=(const UnseenChange&) = delete;

private:
    struct Bar {
        bool shown = false;
        SCROLLINFO info{};
    };

    Bar barOf(int which) const noexcept;
    bool drawIfChanged(int which, const Bar& before) const noexcept;

    HWND list_;
    HWND header_ = nullptr;
    bool headerWaits_ = false; // to be painted
    Bar across_;
    Bar down_;
};

} // namespace cvlog::platform::win32
