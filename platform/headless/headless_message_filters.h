#pragma once

#include "platform/headless/call_gate.h"
#include "ports/message_filter.h"

namespace cvlog::platform::headless {

/// Messages that come when a test sends them.
class HeadlessMessageFilters : public ports::MessageFilters {
public:
    using Receiver = std::function<bool(const ports::FilteredMessage&)>;

    explicit HeadlessMessageFilters(const CallGate& gate) : gate_(gate) {}

    std::unique_ptr<ports::MessageFilter> install(Receiver receiver) override;

    bool isInstalled() const noexcept { return receiver_ != nullptr; }
    /// A message passes the filter; true when that took it away.
    bool send(const ports::FilteredMessage& message);

    int installations = 0;

private:
    class Filter;

    const CallGate& gate_;
    std::shared_ptr<const Receiver> receiver_; // null while there is no filter
};

} // namespace cvlog::platform::headless
