#pragma once

#include "base/area.h"

namespace cvlog::ports {

/// The monitors of the user's desktop.
class Screens {
public:
    virtual ~Screens() = default;
    /// Where windows can be, on the monitor that shows most of the area, or else is nearest to it; in twips of the
    /// desktop.
    virtual base::Area workArea(const base::Area& near) = 0;
};

} // namespace cvlog::ports
