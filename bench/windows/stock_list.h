#pragma once

#include "platform/win32/list_view_window.h"

namespace cvlog::bench {

/// The system's list view with an item for each row, which keeps the texts itself: what a log would be shown in without
/// anything of ours. It looks like a list of ours: columns, font, pictures and size are that list's.
class StockList {
public:
    /// Shown in an area of a parent window, which may be null: the list is then never seen.
    StockList(platform::win32::ListViewWindow& like, HWND parent, const RECT& area);
    StockList(const StockList&) = delete;
    StockList& operator=(const StockList&) = delete;
    ~StockList();

    /// Inserts so many rows of the other list with drawing off.
    void fill(const widgets::ListView& model, int count);
    /// One row at the end, the way a program shows it: inserted, and scrolled to.
    void append(const widgets::ListView& model, int row);

    HWND window() const noexcept { return window_; }

private:
    void insert(const widgets::RowContent& row, int columns);
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageW(window_, message, wParam, lParam);
    }

    platform::win32::ListImages icons_;
    HWND window_ = nullptr;
    int count_ = 0;
};

} // namespace cvlog::bench
