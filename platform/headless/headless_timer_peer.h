#pragma once

#include "platform/headless/call_gate.h"
#include "widgets/timer.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace cvlog::platform::headless {

/// Time that passes only when it is told to, and the timers that live in it.
class TimerBook {
public:
    /// Lets time pass; timers that come due call their handlers in order.
    void advance(int milliseconds);
    /// Lets time pass up to the next due timer and runs that one; false when none is enabled.
    bool runNext();
    int liveTimers() const noexcept { return static_cast<int>(entries_.size()); }
    int enabledTimers() const noexcept;
    std::int64_t now() const noexcept { return now_; }

private:
    friend class HeadlessTimerPeer;
    struct Entry {
        widgets::Timer* timer = nullptr; // null once the timer is gone
        std::int64_t due = 0;
        int interval = 0;
        bool enabled = false;
    };
    std::shared_ptr<Entry> nextDue() const;
    static void run(Entry& entry);

    std::vector<std::shared_ptr<Entry>> entries_;
    std::int64_t now_ = 0;
};

class HeadlessTimerPeer : public widgets::TimerPeer {
public:
    HeadlessTimerPeer(widgets::Timer& timer, const CallGate& gate, TimerBook& book);
    ~HeadlessTimerPeer() override;
    void start(int milliseconds) override;
    void stop() noexcept override { entry_->enabled = false; }

private:
    const CallGate& gate_;
    TimerBook& book_;
    std::shared_ptr<TimerBook::Entry> entry_;
};

} // namespace cvlog::platform::headless
