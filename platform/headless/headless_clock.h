#pragma once

#include "ports/clock.h"

namespace cvlog::platform::headless {

/// A clock that stands still until it is set.
class HeadlessClock : public ports::Clock {
public:
    base::LocalTime now() override { return time; }
    void advance(std::int64_t seconds) noexcept { time.seconds += seconds; }

    base::LocalTime time = base::localTime(2024, 1, 2, 9, 5, 7);
};

} // namespace cvlog::platform::headless
