#pragma once

#include "automation/object.h"

#include <string_view>

namespace cvlog::ports {

class ObjectFactory {
public:
    virtual ~ObjectFactory() = default;
    /// A new object of a class that is installed on the system, by the class's programmatic name ("Product.Class").
    /// Throws when there is no such class or it gives no late-bound object.
    virtual automation::ObjectRef create(std::u16string_view className) = 0;
};

} // namespace cvlog::ports
