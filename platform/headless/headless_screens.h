#pragma once

#include "ports/screens.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace cvlog::platform::headless {

/// Monitors that nobody looks at; one to begin with.
class HeadlessScreens : public ports::Screens {
public:
    base::Area workArea(const base::Area& place) override {
        return *std::ranges::max_element(monitors, {}, [&](const base::Area& monitor) {
            return std::pair(shared(monitor, place), -distance(monitor, place));
        });
    }
    base::Area windowArea(std::int32_t) override { return window; }
    base::Twips scrollBarWidth() override { return 255; }
    base::Twips borderWidth() override { return sideBorder; }
    base::Twips borderHeight() override { return topBorder; }

    base::Twips sideBorder = 15;
    base::Twips topBorder = 15;
    base::Area window = {1'200, 900, 9'000, 3'000}; // every window is here
    std::vector<base::Area> monitors = {{0, 0, 19'200, 14'400}};

private:
    static float overlap(float start, float size, float otherStart, float otherSize) {
        return std::max(0.0F, std::min(start + size, otherStart + otherSize) - std::max(start, otherStart));
    }
    static float shared(const base::Area& a, const base::Area& b) {
        return overlap(a.left, a.width, b.left, b.width) * overlap(a.top, a.height, b.top, b.height);
    }
    static float distance(const base::Area& a, const base::Area& b) {
        const float x = (a.left + a.width / 2) - (b.left + b.width / 2);
        const float y = (a.top + a.height / 2) - (b.top + b.height / 2);
        return x * x + y * y;
    }
};

} // namespace cvlog::platform::headless
