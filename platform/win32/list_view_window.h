#pragma once

#include "base/font.h"
#include "platform/win32/list_accessible.h"
#include "platform/win32/list_columns.h"
#include "platform/win32/list_frame.h"
#include "platform/win32/list_images.h"
#include "platform/win32/list_input.h"
#include "platform/win32/list_painter.h"
#include "platform/win32/list_selection.h"
#include "widgets/list_view.h"

#include <functional>
#include <optional>

namespace cvlog::platform::win32 {

/// Shows a list in a window of the system's list control, which asks the model for everything it draws. The
/// window exists from creation on, parked under the host window until a control takes it.
///
/// Every peer of a list of this platform is one of these: static_cast<ListViewWindow*>(list.peer()).
class ListViewWindow : public widgets::ListViewPeer, private ListFrameEvents {
public:
    /// The host outlives the peer. Throws std::runtime_error when the system makes no window.
    ListViewWindow(widgets::ListView& model, HostWindow& host);
    ~ListViewWindow() override;
    ListViewWindow(const ListViewWindow&) = delete;
    ListViewWindow& operator=(const ListViewWindow&) = delete;

    /// The window to place in a control, and the list inside it that fills it. Null after a parent took them
    /// along into its destruction: a control must call `park` before it goes.
    HWND frame() const noexcept { return frame_->frame(); }
    HWND list() const noexcept { return frame_->list(); }
    /// Shows the list in an area of a parent window.
    void moveTo(HWND parent, RECT area);
    /// Back under the host window, out of sight.
    void park() noexcept { frame_->park(); }
    /// Shows the list at that resolution from now on, whatever the window's is.
    void fixResolution(int dpi);
    /// The form around the list, which Tab leads away in; null for none. It gets WM_NEXTDLGCTL.
    void setForm(HWND form) noexcept { form_ = form; }

    /// Called when the window shows something else, whoever changed it, and when a mouse button goes down in it. The
    /// latter's handler may do anything, the former's must not change the list.
    std::function<void()> viewChanged;
    std::function<void()> mousePressed;

    void batchBegan() override { inBatch_ = true; }
    void batchEnded() override;
    void rowsInserted(int first, int count) override;
    void rowsRemoved(int first, int count) override;
    void rowsReordered() override;
    void cleared() override;
    void rowChanged(int row) override;
    void selectionChanged() override;
    void columnChanged(int column) override;
    void appearanceChanged() override;
    void scrollTo(int row) override;
    void repaint() override;
    void takeFocus() override;
    std::int32_t windowHandle() const override;
    int topRow() const override;

private:
    struct Scroll {
        widgets::RowId row = 0;
        int guess = 0;
    };
    /// What the window does not show yet.
    struct Pending {
        bool rows = false; // count or order
        bool selection = false;
        bool columns = false;
        bool appearance = false;
        bool repaint = false;
        int firstChanged = 0; // rows whose content changed; 0 for none
        int lastChanged = 0;
        Scroll scrolledBefore; // where the view comes from decides at which edge the last row appears
        Scroll scroll;
    };

    enum class Later : WPARAM { ColumnOrder, Activation };

    void changed();
    void flush();
    void showRows(const Pending& work);
    void tellViewChanged() const noexcept;
    /// False when the list is gone now.
    bool tellMousePressed();
    int resolution() const noexcept;
    LRESULT giveAccessible(WPARAM wParam);
    void scroll(const Scroll& wanted);
    void paintFromTheEdge() const noexcept;
    void applyAppearance();
    void applyFont();
    void applyImages();
    void applyColours();
    void releaseResources() noexcept;
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageW(list(), message, wParam, lParam);
    }

    bool beforeMessage(UINT message, WPARAM& wParam, LPARAM lParam, LRESULT& result) override;
    void afterMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT result) override;
    LRESULT notified(NMHDR& header) override;
    void surroundingsChanged() override;
    void laterCame(WPARAM what) override;
    void itemsChanged(const NMHDR& header);
    void tellFocus() noexcept;
    bool leavesByTab(UINT message, WPARAM wParam) const noexcept;
    const NMHEADERW* headerNotice(UINT message, LPARAM lParam) const noexcept;

    widgets::ListView& model_;
    OwnerCalls owner_;
    std::shared_ptr<ListFrame> frame_;
    ListSelection selection_;
    ListColumns columns_;
    ListInput input_;
    ListImages icons_;
    ListImages headerIcons_;
    ListPainter painter_;
    FontHandle font_;
    std::optional<base::Font> shownFont_;
    int dpi_ = 0;
    int fixedDpi_ = 0; // 0: the window's
    HWND form_ = nullptr;
    bool inBatch_ = false;
    Pending pending_;
    widgets::RowId toldFocus_ = 0; // the row that last had the focus
    ListAccessibleRows accessibleRows_;
    ListAccessible::Connection accessible_; // null until somebody asks
};

} // namespace cvlog::platform::win32
