#include "platform/headless/headless_message_filters.h"

#include "base/failure.h"

#include <stdexcept>

namespace cvlog::platform::headless {

class HeadlessMessageFilters::Filter : public ports::MessageFilter {
public:
    explicit Filter(HeadlessMessageFilters& filters) : filters_(filters) {}
    ~Filter() override { filters_.receiver_.reset(); }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

private:
    HeadlessMessageFilters& filters_;
};

std::unique_ptr<ports::MessageFilter> HeadlessMessageFilters::install(Receiver receiver) {
    gate_.pass("MessageFilters.install");
    if (receiver_) throw std::logic_error("there is a filter");
    auto filter = std::make_unique<Filter>(*this);
    receiver_ = std::make_shared<const Receiver>(std::move(receiver));
    ++installations;
    return filter;
}

bool HeadlessMessageFilters::send(const ports::FilteredMessage& message) {
    const std::shared_ptr<const Receiver> receiver = receiver_; // it may end its filter
    return receiver && base::valueOr(false, [&] { return (*receiver)(message); });
}

} // namespace cvlog::platform::headless
