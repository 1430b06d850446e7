#pragma once

#include <cstdint>

namespace cvlog::ports {

/// Messages to windows that are not the component's own, such as the host's.
class WindowMessages {
public:
    virtual ~WindowMessages() = default;
    /// Queues a key-down message (256) with the key code and a repeat count of 1, as if the key had been pressed in
    /// the window. Throws when there is no such window or its queue is full.
    virtual void postKeyDown(std::int32_t window, std::int16_t code) = 0;
};

} // namespace cvlog::ports
