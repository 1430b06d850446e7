#pragma once

#include "platform/headless/call_gate.h"
#include "ports/message_pump.h"

#include <functional>

namespace cvlog::platform::headless {

/// A queue in which there is what a test says. Both calls pass the gate, so any code may run in them.
class ScriptedMessagePump : public ports::MessagePump {
public:
    explicit ScriptedMessagePump(const CallGate& gate) : gate_(gate) {}

    bool inputWaiting() override {
        gate_.pass("MessagePump.inputWaiting");
        return hasInput && hasInput();
    }
    bool yield() override {
        ++yields;
        gate_.pass("MessagePump.yield");
        if (const auto run = atYield) run(yields);
        return !programEnds;
    }

    int yields = 0;
    std::function<bool()> hasInput;   // none: never
    std::function<void(int)> atYield; // with the number of the yield, from 1
    bool programEnds = false;

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
