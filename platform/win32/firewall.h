#pragma once

#include <utility>

namespace cvlog::platform::win32 {

/// What every window procedure and callback runs in: no exception leaves it; one gives `fallback` instead.
template <class Result, class Action>
Result firewall(Result fallback, Action&& action) noexcept {
    try {
        return std::forward<Action>(action)();
    } catch (...) {
        return fallback;
    }
}

} // namespace cvlog::platform::win32
