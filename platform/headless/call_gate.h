#pragma once

#include <functional>
#include <string_view>

namespace cvlog::platform::headless {

/// Every call that the component makes of the headless platform passes the gate first, by a name such as
/// "Settings.save". Whoever watches may count it, run other code, or throw, which fails the call before it did
/// anything.
class CallGate {
public:
    std::function<void(std::string_view name)> watcher;

    void pass(std::string_view name) const {
        if (watcher) watcher(name);
    }
};

} // namespace cvlog::platform::headless
