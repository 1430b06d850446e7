#include "widgets/timer.h"

#include "widgets/peer_factory.h"

namespace cvlog::widgets {

Timer::Timer(PeerFactory& peers, int milliseconds, std::function<void()> handler)
    : interval_(milliseconds), handler_(std::make_shared<const std::function<void()>>(std::move(handler))),
      peer_(peers.makeTimer(*this)) {}

Timer::~Timer() { disable(); }

void Timer::enable() {
    peer_->start(interval_);
    enabled_ = true;
}

void Timer::disable() noexcept {
    enabled_ = false;
    peer_->stop();
}

void Timer::tick() {
    if (!enabled_) return;
    const std::shared_ptr<const std::function<void()>> handler = handler_; // it may end this timer
    (*handler)();
}

} // namespace cvlog::widgets
