#pragma once

#include "ports/window_messages.h"

namespace cvlog::platform::win32 {

class WindowMessages : public ports::WindowMessages {
public:
    void postKeyDown(std::int32_t window, std::int16_t code) override;
};

} // namespace cvlog::platform::win32
