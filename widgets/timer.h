#pragma once

#include <functional>
#include <memory>

namespace cvlog::widgets {

class PeerFactory;

/// The platform's side of a timer. It calls Timer::tick every `milliseconds` from start to stop.
class TimerPeer {
public:
    virtual ~TimerPeer() = default;
    /// Starts, or starts anew. Throws when the system has no timer left.
    virtual void start(int milliseconds) = 0;
    virtual void stop() noexcept = 0;
};

/// Calls its handler again and again while it is enabled, from the message loop. A one-shot handler disables it. No
/// call comes after disable() or the timer's end; the handler may end the timer.
class Timer {
public:
    Timer(PeerFactory& peers, int milliseconds, std::function<void()> handler);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    int interval() const noexcept { return interval_; }
    bool enabled() const noexcept { return enabled_; }
    /// Waits a whole interval from now on, also when it was enabled before.
    void enable();
    void disable() noexcept;

    /// For the peer.
    void tick();

private:
    int interval_;
    bool enabled_ = false;
    std::shared_ptr<const std::function<void()>> handler_;
    std::unique_ptr<TimerPeer> peer_;
};

} // namespace cvlog::widgets
