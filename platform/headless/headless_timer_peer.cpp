#include "platform/headless/headless_timer_peer.h"

#include "base/failure.h"

#include <algorithm>

namespace cvlog::platform::headless {

int TimerBook::enabledTimers() const noexcept {
    return static_cast<int>(
        std::ranges::count_if(entries_, [](const auto& entry) { return entry->enabled; }));
}

std::shared_ptr<TimerBook::Entry> TimerBook::nextDue() const {
    std::shared_ptr<Entry> next;
    for (const auto& entry : entries_)
        if (entry->enabled && (!next || entry->due < next->due)) next = entry;
    return next;
}

void TimerBook::run(Entry& entry) {
    entry.due += entry.interval;
    base::ignoring([&] { entry.timer->tick(); });
}

void TimerBook::advance(int milliseconds) {
    const std::int64_t end = now_ + milliseconds;
    for (auto entry = nextDue(); entry && entry->due <= end; entry = nextDue()) {
        now_ = std::max(now_, entry->due);
        run(*entry);
    }
    now_ = end;
}

bool TimerBook::runNext() {
    const std::shared_ptr<Entry> entry = nextDue();
    if (!entry) return false;
    now_ = std::max(now_, entry->due);
    run(*entry);
    return true;
}

HeadlessTimerPeer::HeadlessTimerPeer(widgets::Timer& timer, const CallGate& gate, TimerBook& book)
    : gate_(gate), book_(book), entry_(std::make_shared<TimerBook::Entry>()) {
    gate_.pass("Timer.create");
    entry_->timer = &timer;
    book_.entries_.push_back(entry_);
}

HeadlessTimerPeer::~HeadlessTimerPeer() {
    stop();
    std::erase(book_.entries_, entry_);
}

void HeadlessTimerPeer::start(int milliseconds) {
    gate_.pass("Timer.start");
    entry_->interval = milliseconds;
    entry_->due = book_.now() + milliseconds;
    entry_->enabled = true;
}

} // namespace cvlog::platform::headless
