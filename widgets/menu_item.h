#pragma once

#include <string>
#include <vector>

namespace cvlog::widgets {

/// An item of a menu, or a menu of items.
struct MenuItem {
    std::u16string name;
    std::u16string caption;
    std::vector<MenuItem> items;
};

} // namespace cvlog::widgets
