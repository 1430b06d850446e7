#pragma once

#include "tests/support/call_counter.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cvlog::tests {

/// How one run of a swept scenario ended.
struct SweepRun {
    std::optional<automation::AutomationError> error; // none: the scenario succeeded
    bool armed;                                       // false in the run that only counts
};

/// Runs a scenario once to count its N outward calls, then N times failing call k once and N times failing all calls
/// from k on, each time in a new world, and checks the invariants after each run. A world has a CallCounter `calls`.
/// Only AutomationErrors may leave the scenario.
template <class World>
class FaultSweep {
public:
    /// The world before the scenario; its calls are neither counted nor failed.
    std::function<std::unique_ptr<World>()> arrange;
    std::function<void(World&)> scenario;
    std::function<void(World&, const SweepRun&)> check;
    /// The fewest calls that the scenario must make, so that a sweep over nothing is seen.
    int leastCalls = 1;

    void run() const {
        const int count = runOnce(0, CallCounter::Fail::Never);
        ASSERT_GE(count, leastCalls);
        for (int number = 1; number <= count; ++number) {
            runOnce(number, CallCounter::Fail::Once);
            runOnce(number, CallCounter::Fail::FromOn);
            if (::testing::Test::HasFatalFailure()) return;
        }
    }

private:
    int runOnce(int number, CallCounter::Fail mode) const {
        const std::unique_ptr<World> world = arrange();
        world->calls.restart();
        world->calls.arm(number, mode);
        SweepRun run{std::nullopt, mode != CallCounter::Fail::Never};
        try {
            scenario(*world);
        } catch (const automation::AutomationError& error) {
            run.error = error;
        }
        world->calls.disarm();
        const int count = world->calls.count();
        const std::string name = world->calls.failed().empty() ? "" : world->calls.failed().front();
        SCOPED_TRACE("call " + std::to_string(number) + " failed " +
                     (mode == CallCounter::Fail::Once ? "once: " : "and all later ones: ") + name);
        if (run.armed) {
            EXPECT_FALSE(world->calls.failed().empty()) << "the runs of the scenario differ";
        }
        check(*world, run);
        return count;
    }
};

} // namespace cvlog::tests
