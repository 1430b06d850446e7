#pragma once

#include "base/date_time.h"

namespace cvlog::ports {

class Clock {
public:
    virtual ~Clock() = default;
    /// The local time now, fractions of a second dropped.
    virtual base::LocalTime now() = 0;
};

} // namespace cvlog::ports
