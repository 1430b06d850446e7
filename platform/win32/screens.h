#pragma once

#include "ports/screens.h"

namespace cvlog::platform::win32 {

class Screens : public ports::Screens {
public:
    base::Area workArea(const base::Area& area) override;
};

} // namespace cvlog::platform::win32
