#pragma once

namespace cvlog::ports {

/// What waits for the user's thread while the component is busy on it.
class MessagePump {
public:
    virtual ~MessagePump() = default;
    /// The user has pressed a key or a button. May tell some milliseconds late; asking costs next to nothing.
    virtual bool inputWaiting() = 0;
    /// Runs what waits: input, timers, painting, any code. False when the program is to end: that wish is waiting
    /// again afterwards.
    virtual bool yield() = 0;
};

} // namespace cvlog::ports
