#pragma once

#include "base/area.h"

#include <cstdint>

namespace cvlog::ports {

/// The user's desktop: its monitors, and what windows on it measure. All in twips of the desktop.
class Screens {
public:
    virtual ~Screens() = default;
    /// Where windows can be, on the monitor that shows most of the area, or else is nearest to it.
    virtual base::Area workArea(const base::Area& near) = 0;
    /// Where the inside of a window begins, and how large the whole window is. Throws when there is no such window.
    virtual base::Area windowArea(std::int32_t window) = 0;
    /// The width of a vertical scroll bar.
    virtual base::Twips scrollBarWidth() = 0;
    /// The thin border round a window: its width at the sides, its height at top and bottom.
    virtual base::Twips borderWidth() = 0;
    virtual base::Twips borderHeight() = 0;
};

} // namespace cvlog::ports
