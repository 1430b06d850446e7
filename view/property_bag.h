#pragma once

#include "automation/value.h"

#include <optional>
#include <string_view>

namespace cvlog::view {

/// Where a container keeps the values of a control's properties, by name.
class PropertyBag {
public:
    virtual ~PropertyBag() = default;
    /// Nothing when the bag has no such value. Throws AutomationError when it fails.
    virtual std::optional<automation::Value> read(std::u16string_view name) = 0;
    virtual void write(std::u16string_view name, const automation::Value& value) = 0;
};

} // namespace cvlog::view
