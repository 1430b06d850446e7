#include "widgets/timer.h"

#include "platform/headless/headless_peer_factory.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace cvlog::widgets {
namespace {

class TimerTest : public testing::Test {
protected:
    platform::headless::CallGate gate;
    platform::headless::HeadlessPeerFactory factory{gate};
    platform::headless::TimerBook& time = factory.timers;
    int calls = 0;
};

TEST_F(TimerTest, IsQuietUntilItIsEnabled) {
    Timer timer(factory, 10, [&] { ++calls; });
    time.advance(1000);
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(timer.enabled());
}

TEST_F(TimerTest, CallsOnceAnInterval) {
    Timer timer(factory, 10, [&] { ++calls; });
    timer.enable();
    time.advance(9);
    EXPECT_EQ(calls, 0);
    time.advance(1);
    EXPECT_EQ(calls, 1);
    time.advance(25);
    EXPECT_EQ(calls, 3);
}

TEST_F(TimerTest, StartsAWholeIntervalAnewWhenItIsEnabledAgain) {
    Timer timer(factory, 10, [&] { ++calls; });
    timer.enable();
    time.advance(9);
    timer.enable();
    time.advance(9);
    EXPECT_EQ(calls, 0);
    time.advance(1);
    EXPECT_EQ(calls, 1);
}

TEST_F(TimerTest, IsOneShotWhenItsHandlerDisablesIt) {
    std::optional<Timer> timer;
    timer.emplace(factory, 1, [&] {
        ++calls;
        timer->disable();
    });
    timer->enable();
    time.advance(100);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(time.enabledTimers(), 0);
}

TEST_F(TimerTest, MayEndInsideItsHandler) {
    auto timer = std::make_unique<Timer>(factory, 1, std::function<void()>());
    timer = std::make_unique<Timer>(factory, 1, [&, kept = std::make_shared<int>(7)] {
        timer.reset();
        calls += *kept; // what the handler holds lives until it ends
    });
    timer->enable();
    time.advance(100);
    EXPECT_EQ(calls, 7);
    EXPECT_EQ(time.liveTimers(), 0);
}

TEST_F(TimerTest, StaysDisabledWhenTheSystemHasNoneLeft) {
    Timer timer(factory, 1, [&] { ++calls; });
    gate.watcher = [](std::string_view name) {
        if (name == "Timer.start") throw std::runtime_error("none left");
    };
    EXPECT_THROW(timer.enable(), std::runtime_error);
    EXPECT_FALSE(timer.enabled());
    time.advance(100);
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace cvlog::widgets
