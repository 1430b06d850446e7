#pragma once

#include "tests/windows/from_the_loop.h"

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace cvlog::tests {

/// What a user does in one window after the other, played from inside whatever loop takes messages: each scene is
/// acted once, as soon as it is there.
class Scenes {
public:
    struct Scene {
        std::function<bool()> isThere;
        std::function<void()> act;
    };

    explicit Scenes(std::vector<Scene> scenes)
        : scenes_(std::move(scenes)), playing_([this] { return playNext(); }) {}

    bool played() const noexcept { return next_ == scenes_.size(); }

private:
    bool playNext() {
        if (!scenes_[next_].isThere()) return false;
        const std::size_t current = next_++;
        scenes_[current].act();
        return played();
    }

    std::vector<Scene> scenes_;
    std::size_t next_ = 0;
    FromTheLoop playing_;
};

} // namespace cvlog::tests
