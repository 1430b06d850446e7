#pragma once

#include "platform/win32/list_images.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/own_window.h"

namespace cvlog::bench {

/// The system's list view that keeps no rows and draws them its own way, showing what a list of ours shows: it asks
/// for the same texts and pictures, cell by cell.
class VirtualStockList : private platform::win32::MessageHandler {
public:
    /// Shown in an area of a parent window. The model outlives the list.
    VirtualStockList(const widgets::ListView& model, platform::win32::ListViewWindow& like, HWND parent,
                     const RECT& area);
    VirtualStockList(const VirtualStockList&) = delete;
    VirtualStockList& operator=(const VirtualStockList&) = delete;
    ~VirtualStockList();

    HWND window() const noexcept { return window_; }

private:
    LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override { frame_ = nullptr; }

    const widgets::ListView& model_;
    platform::win32::ListImages icons_;
    HWND frame_; // hears what the list asks
    HWND window_;
};

} // namespace cvlog::bench
