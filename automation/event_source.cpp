#include "automation/event_source.h"

#include "base/failure.h"

#include <algorithm>

namespace cvlog::automation {

std::uint32_t EventSource::advise(std::shared_ptr<EventSink> sink) {
    sinks_.emplace_back(++lastCookie_, std::move(sink));
    return lastCookie_;
}

bool EventSource::unadvise(std::uint32_t cookie) noexcept {
    const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                    [cookie](const auto& entry) { return entry.first == cookie; });
    if (found == sinks_.end()) return false;
    const auto released =
        std::move(*found); // the sink may run code when it dies: only after the list is whole
    sinks_.erase(found);
    return true;
}

bool EventSource::isConnected(std::uint32_t cookie) const noexcept {
    return std::any_of(sinks_.begin(), sinks_.end(),
                       [cookie](const auto& entry) { return entry.first == cookie; });
}

void EventSource::raise(std::int32_t id, std::span<Value> arguments) {
    const auto snapshot = sinks_;
    for (const auto& [cookie, sink] : snapshot) {
        if (isConnected(cookie)) base::ignoring([&, handler = sink] { handler->onEvent(id, arguments); });
    }
}

} // namespace cvlog::automation
