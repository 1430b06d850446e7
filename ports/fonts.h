#pragma once

#include "automation/object.h"
#include "base/font.h"

#include <functional>
#include <memory>

namespace cvlog::ports {

/// Font objects: late-bound, with `Name`, `Size` (points), `Bold`, `Italic`, `Underline`, `Strikethrough`, `Weight` and
/// `Charset`, all of which their holders may change.
class Fonts {
public:
    virtual ~Fonts() = default;
    virtual automation::ObjectRef make(const base::Font& font) = 0;
    /// Calls `changed` after each change of a font object, also of a host's, until the connection ends. Null for an
    /// object that does not tell of its changes.
    virtual std::unique_ptr<automation::Connection> watch(const automation::ObjectRef& font,
                                                          std::function<void()> changed) = 0;
};

} // namespace cvlog::ports
