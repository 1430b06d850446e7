#pragma once

#include "automation/dispatch_table.h"

#include <string>
#include <vector>

namespace cvlog::view {

struct NamedControl {
    std::u16string name;
    automation::ObjectRef object;
};

/// What a form or a control holds: Count, and Item by name (case does not matter) or by place from 1. A name that it
/// does not know raises "Control not found". What joins the list is one more element here.
automation::ObjectRef makeControls(std::vector<NamedControl> controls);

} // namespace cvlog::view
