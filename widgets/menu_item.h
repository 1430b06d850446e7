#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::widgets {

struct MenuItem;
/// Shared: an open menu keeps its items, whatever becomes of who made them.
using MenuItemRef = std::shared_ptr<MenuItem>;

/// An item of a menu, or a menu of items. A menu that pops up shows the items that are visible; nobody else decides
/// about separators.
struct MenuItem {
    std::u16string name;
    std::u16string caption; // "&" stands before the letter that chooses the item
    std::u16string tag = {};
    bool separator = false;
    bool visible = true;
    bool enabled = true;
    bool checked = false;
    std::int32_t helpContext = 0;
    std::optional<int> index = {}; // the place in an array of items that share their name
    std::vector<MenuItemRef> items = {};
};

/// The item or menu of that name, the menu itself included; case does not matter. Of an array the first element. Null
/// when there is none.
MenuItemRef findMenuItem(const MenuItemRef& menu, std::u16string_view name) noexcept;

/// A menu that can pop up once. It shows what the items were when it was made.
class PopupMenuPeer {
public:
    virtual ~PopupMenuPeer() = default;

    /// Shows the menu at the mouse and comes back when it has closed; other code of the program runs meanwhile. Answers
    /// what the user chose, null for nothing, also when the system shows no menu. A window of 0, or one that is gone,
    /// leaves the choice of the owner to the platform.
    virtual MenuItemRef popUp(std::int32_t ownerWindow) = 0;
};

} // namespace cvlog::widgets
