#pragma once

#include "resources/string_table.h"

#include <string>
#include <vector>

namespace cvlog::core {

/// The texts of the resource form's list and menu, in the user's language.
struct LogTemplates {
    struct Item {
        std::u16string_view name;
        std::u16string caption;
    };
    std::vector<std::u16string> lvLog; // column captions
    std::vector<Item> mnuPopUpLog;     // the menu itself, then its items

    static LogTemplates localised(resources::Language language);
};

} // namespace cvlog::core
