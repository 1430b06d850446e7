#pragma once

#include "ports/message_filter.h"

namespace cvlog::platform::win32 {

/// A message-filter hook of the thread.
class MessageFilters : public ports::MessageFilters {
public:
    std::unique_ptr<ports::MessageFilter>
    install(std::function<bool(const ports::FilteredMessage&)> receiver) override;
};

} // namespace cvlog::platform::win32
