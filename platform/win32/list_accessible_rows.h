#pragma once

#include "platform/win32/list_frame.h"
#include "widgets/list_view.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {

/// What a list's window tells assistive technology about itself and its rows, and what that may do to them. A child is
/// a row, from 1, or 0 for the list itself; one that the list does not have is a programming error.
class ListAccessibleRows {
public:
    /// The model outlives this.
    ListAccessibleRows(widgets::ListView& model, std::shared_ptr<const ListFrame> frame) noexcept
        : model_(model), frame_(std::move(frame)) {}

    /// Null once the window is gone: nothing else may be asked then.
    HWND window() const noexcept { return frame_->list(); }
    int count() const noexcept { return model_.rowCount(); }

    std::u16string name(int child) const;
    std::u16string description(int child) const;
    std::u16string action() const;
    LONG state(int child) const noexcept;
    /// In pixels of the screen: what of the child lies inside the window, or all of one that is out of sight.
    RECT area(int child) const noexcept;
    /// Nothing for a point outside of the window.
    std::optional<int> childAt(POINT screen) const noexcept;
    /// Nothing while the list does not have the focus.
    std::optional<int> focused() const noexcept;
    std::vector<LONG> selected() const;
    /// The child that a NAVDIR leads to from another; nothing when there is none.
    std::optional<int> next(long direction, int child) const noexcept;

    enum class Done { Yes, No, Impossible };
    /// Selects and focuses by SELFLAGs, as a user would. The list may be gone afterwards.
    Done select(long flags, int child);
    /// Selects the row alone, as a double click on it does first.
    Done choose(int child);

private:
    RECT bounds(int child) const noexcept;
    RECT visibleRows() const noexcept;
    void changeSelection(long flags, int child);
    void selectAlone(int child);
    int anchor(int child) const noexcept;

    widgets::ListView& model_;
    std::shared_ptr<const ListFrame> frame_;
};

} // namespace cvlog::platform::win32
