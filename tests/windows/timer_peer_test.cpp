#include "platform/win32/services.h"
#include "tests/windows/form_window_fixture.h"
#include "widgets/timer.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace cvlog::platform::win32 {
namespace {

constexpr int kNever = 0x7FFFFFF; // a day and a half

class Win32Timer : public testing::Test {
protected:
    /// Every timer message that may still be on its way.
    void messagesOfAllTimers() const {
        for (WPARAM timer = 1; timer <= 20; ++timer)
            PostMessageW(services_.host.handle(), WM_TIMER, timer, 0);
        takeMessages();
    }

    Services services_;
    int calls_ = 0;
    std::unique_ptr<widgets::Timer> timer_ =
        std::make_unique<widgets::Timer>(services_.peers, kNever, [this] { ++calls_; });
};

TEST_F(Win32Timer, CallsForAMessageOfItsOwn) {
    messagesOfAllTimers();
    EXPECT_EQ(calls_, 0);
    timer_->enable();
    messagesOfAllTimers();
    EXPECT_EQ(calls_, 1);
}

TEST_F(Win32Timer, DoesNotCallForAMessageThatComesAfterItsStop) {
    timer_->enable();
    timer_->disable();
    messagesOfAllTimers();
    EXPECT_EQ(calls_, 0);
}

TEST_F(Win32Timer, DoesNotCallForAMessageThatComesAfterItsEnd) {
    timer_->enable();
    timer_.reset();
    messagesOfAllTimers();
    EXPECT_EQ(calls_, 0);
}

TEST_F(Win32Timer, DoesNotCallForAMessageFromBeforeItWasStartedAnew) {
    timer_->enable();
    PostMessageW(services_.host.handle(), WM_TIMER, 1, 0);
    takeMessages();
    ASSERT_EQ(calls_, 1) << "the first timer of all has the number 1";
    PostMessageW(services_.host.handle(), WM_TIMER, 1, 0);
    timer_->enable();
    takeMessages();
    EXPECT_EQ(calls_, 1);
}

TEST_F(Win32Timer, CallsItsOwnTimerOnly) {
    int others = 0;
    widgets::Timer other(services_.peers, 1, [&] { ++others; });
    timer_->enable();
    other.enable();
    EXPECT_TRUE(takeMessagesUntil([&] { return others >= 3; }));
    EXPECT_EQ(calls_, 0);
}

TEST_F(Win32Timer, GoesOnAfterAFailingHandler) {
    int failed = 0;
    widgets::Timer failing(services_.peers, 1, [&] {
        ++failed;
        throw std::runtime_error("handler");
    });
    failing.enable();
    EXPECT_TRUE(takeMessagesUntil([&] { return failed >= 2; }));
}

TEST_F(Win32Timer, FailsWhenTheSystemHasNoneLeft) {
    DestroyWindow(services_.host.handle());
    EXPECT_THROW(timer_->enable(), std::runtime_error);
    EXPECT_FALSE(timer_->enabled());
}

TEST_F(Win32Timer, LeavesNoMessageToAWindowThatIsGone) {
    timer_->enable();
    const HWND host = services_.host.handle();
    timer_.reset();
    EXPECT_FALSE(KillTimer(host, 1)) << "the system's timer went with it";
}

} // namespace
} // namespace cvlog::platform::win32
