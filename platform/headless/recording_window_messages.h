#pragma once

#include "platform/headless/call_gate.h"
#include "ports/window_messages.h"

#include <vector>

namespace cvlog::platform::headless {

/// Messages to windows that do not exist: each is recorded.
class RecordingWindowMessages : public ports::WindowMessages {
public:
    struct KeyDown {
        std::int32_t window;
        std::int16_t code;
        friend bool operator==(const KeyDown&, const KeyDown&) = default;
    };

    explicit RecordingWindowMessages(const CallGate& gate) : gate_(gate) {}

    void postKeyDown(std::int32_t window, std::int16_t code) override {
        gate_.pass("WindowMessages.postKeyDown");
        keys.push_back({window, code});
    }

    std::vector<KeyDown> keys;

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
