#pragma once

#include "automation/object.h"
#include "view/property_bag.h"
#include "widgets/list_view.h"

#include <cstdint>

namespace cvlog::view {

/// The properties of the control that its container stores. As they are made here they are the defaults.
struct ControlProperties {
    std::uint32_t backColor = widgets::Colours().back;
    std::uint32_t foreColor = widgets::Colours().fore;
    bool enabled = true;
    automation::ObjectRef font; // none: the container's
};

/// Reads "BackColor", "ForeColor", "Enabled" and "Font", in this order. What the bag lacks has its default; a value of a
/// wrong kind, also an empty one, fails with AutomationError.
ControlProperties readProperties(PropertyBag& bag);

/// Writes what differs from its default, in the same order.
void writeProperties(const ControlProperties& properties, PropertyBag& bag);

} // namespace cvlog::view
