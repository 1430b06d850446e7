#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace cvlog::ports {

/// Where a filtered message comes from, by the system's numbers.
inline constexpr int kFromMenu = 2;

/// A message of the user's input that a menu, a dialog or a scroll bar is about to handle in a loop of its own.
struct FilteredMessage {
    int source = kFromMenu;
    std::uint32_t message = 0;   // as the system numbers them: 256 is a key that goes down
    std::uint64_t parameter = 0; // of a key its code
};

/// Sees messages as long as it lives. It may end while its receiver runs.
class MessageFilter {
public:
    virtual ~MessageFilter() = default;
};

class MessageFilters {
public:
    virtual ~MessageFilters() = default;
    /// Shows the messages of the calling thread to a receiver, which answers whether it takes one away; its failure
    /// takes none. There is one filter a thread: throws while there is another one, or when the system refuses.
    virtual std::unique_ptr<MessageFilter> install(std::function<bool(const FilteredMessage&)> receiver) = 0;
};

} // namespace cvlog::ports
