#pragma once

#include "automation/object.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace cvlog::automation {

/// The outgoing events of one of our objects. A sink may raise, disconnect itself or others, connect new sinks, or
/// raise further events inside its handler: every sink that was connected when the event was raised and still is
/// when its turn comes gets the event, and a failing sink never stops the others nor reaches the raiser.
class EventSource {
public:
    /// The cookie of the connection, never 0.
    std::uint32_t advise(std::shared_ptr<EventSink> sink);
    /// False for an unknown cookie.
    bool unadvise(std::uint32_t cookie) noexcept;
    void raise(std::int32_t id, std::span<Value> arguments);
    std::vector<std::pair<std::uint32_t, std::shared_ptr<EventSink>>> connections() const { return sinks_; }

private:
    bool isConnected(std::uint32_t cookie) const noexcept;

    std::vector<std::pair<std::uint32_t, std::shared_ptr<EventSink>>> sinks_;
    std::uint32_t lastCookie_ = 0;
};

} // namespace cvlog::automation
