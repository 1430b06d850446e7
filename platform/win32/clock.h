#pragma once

#include "ports/clock.h"

namespace cvlog::platform::win32 {

class Clock : public ports::Clock {
public:
    base::LocalTime now() override;
};

} // namespace cvlog::platform::win32
