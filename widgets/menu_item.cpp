#include "widgets/menu_item.h"

#include "base/text.h"

namespace cvlog::widgets {

MenuItemRef findMenuItem(const MenuItemRef& menu, std::u16string_view name) noexcept {
    if (base::equalsIgnoringCase(menu->name, name)) return menu;
    for (const MenuItemRef& item : menu->items)
        if (const MenuItemRef found = findMenuItem(item, name)) return found;
    return nullptr;
}

} // namespace cvlog::widgets
