#pragma once

#include "platform/win32/windows_headers.h"
#include "widgets/list_view.h"

#include <optional>
#include <vector>

namespace cvlog::platform::win32 {

/// Keeps row count, selection and focus of a list window in step with the model. The window keeps its
/// selection by position, and nothing it does when rows come and go moves it; so after positions shifted the
/// differences are pushed, and what the user did is pulled. Indexes are the window's, from 0.
class ListSelection {
public:
    explicit ListSelection(widgets::ListView& model) noexcept : model_(model) {}

    // Positions in the model shift: told before the next push, in order.
    void rowsInserted(HWND list, int first, int count) noexcept;
    void rowsRemoved(HWND list, int first, int count) noexcept;
    void rowsReordered(HWND list) noexcept;

    /// Makes the window show the model's rows, selection and focus. When rows moved all are drawn anew, else what changed.
    void push(HWND list);
    /// Rows that the window shows have other places now, or are gone: `push` will have all drawn anew.
    bool moved() const noexcept { return moved_; }
    /// True while `push` works: what the window says meanwhile is no news.
    bool pushing() const noexcept { return pushing_; }
    /// The window's positions are not the model's: user changes cannot be told until the next push.
    bool shifted() const noexcept { return shifted_; }

    // What the user did.
    void userChanged(int index, bool selected);
    void pull(HWND list);
    /// Like `pull`, when the window's count shows that something was missed.
    void pullIfMissed(HWND list);
    void pullFocus(HWND list) noexcept;

private:
    /// The cheapest way to the model's selection.
    struct Plan {
        std::optional<bool> all; // first all rows become selected or not selected
        std::vector<int> rows;   // then these become what the model says
    };

    void trackMark(HWND list) noexcept;
    void setState(HWND list, int index, UINT state, UINT mask) noexcept;
    void setSelected(HWND list, int index, bool selected);
    void setAllSelected(HWND list, bool selected);
    void dropVanished(HWND list, int count);
    Plan planSelection() const;
    void carryOut(HWND list, const Plan& plan);
    void pushFocus(HWND list) noexcept;
    void pushMark(HWND list) noexcept;
    void remember(std::size_t index, bool selected);

    widgets::ListView& model_;
    std::vector<bool> shown_; // what the window has selected, by row
    int shownSelected_ = 0;
    bool pushing_ = false;
    bool shifted_ = false;
    bool moved_ = false;
    int mark_ = -1; // where a range that the user extends starts; valid while shifted
};

} // namespace cvlog::platform::win32
