#pragma once

#include "platform/win32/handles.h"
#include "platform/win32/host_window.h"
#include "widgets/menu_item.h"

#include <vector>

namespace cvlog::platform::win32 {

/// A menu of the system. It belongs to the window that it is shown for, or to the host window, which outlives it.
class PopupMenu : public widgets::PopupMenuPeer {
public:
    /// Throws std::runtime_error when the system makes no menu.
    PopupMenu(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem, const HostWindow& host);

    /// Foreign code may destroy the owner meanwhile, which closes the menu.
    widgets::MenuItemRef popUp(std::int32_t ownerWindow) override;

    HMENU handle() const noexcept { return menu_.get(); }

private:
    MenuHandle make(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem);
    void append(HMENU menu, const widgets::MenuItemRef& item);

    const HostWindow& host_;
    std::vector<widgets::MenuItemRef> items_; // by their numbers, which begin with 1: 0 is no choice
    MenuHandle menu_;
};

} // namespace cvlog::platform::win32
