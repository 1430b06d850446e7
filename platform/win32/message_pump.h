#pragma once

#include "ports/message_pump.h"

#include <cstdint>

namespace cvlog::platform::win32 {

/// The message queue of the calling thread.
class MessagePump : public ports::MessagePump {
public:
    bool inputWaiting() override;
    bool yield() override;

private:
    std::uint64_t lastAsked_ = 0; // milliseconds
};

} // namespace cvlog::platform::win32
