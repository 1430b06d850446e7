#pragma once

#include "ports/screens.h"

namespace cvlog::platform::win32 {

class Screens : public ports::Screens {
public:
    base::Area workArea(const base::Area& area) override;
    base::Area windowArea(std::int32_t window) override;
    base::Twips scrollBarWidth() override;
    base::Twips borderWidth() override;
    base::Twips borderHeight() override;
};

} // namespace cvlog::platform::win32
