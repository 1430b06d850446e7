// What changed options do on screen, a moment after they were saved.

#include "core/options.h"
#include "tests/support/placed_log.h"

namespace cvlog::host {
namespace {

class AppliedOptions : public tests::PlacedLog {
protected:
    AppliedOptions() {
        giveWindow();
        world.host.options.setDocked(u"false");
        globals().LogWindowVisible = true;
        world.host.options.addFilter(u"Errors", u"true");
        save();
        runTimer();
        world.calls.restart();
    }
    void save() { world.host.options.document->fire(1); }
    platform::headless::TimerBook& timers() { return world.platform.peers.timers; }
    bool runTimer() { return timers().enabledTimers() != 0 && timers().runNext(); }
    int placings() { return world.calls.countOf("Window.DisplayLog"); }
};

TEST_F(AppliedOptions, PlaceNothingInsideTheEvent) {
    world.host.options.setDocked(u"true");
    save();
    EXPECT_TRUE(globals().options.DockedOption);
    EXPECT_EQ(placings(), 0);
    EXPECT_TRUE(runTimer());
    EXPECT_EQ(placings(), 1);
    EXPECT_FALSE(runTimer()) << "once only";
}

TEST_F(AppliedOptions, PlaceALogWithoutAContainerToo) {
    ShowLog(globals());
    ASSERT_TRUE(floats());
    world.host.options.setDocked(u"true");
    save();
    EXPECT_TRUE(floats());
    runTimer();
    EXPECT_FALSE(floats());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
}

TEST_F(AppliedOptions, FollowAChangeOfTheErrorKinds) {
    world.host.options.clearFilters();
    world.host.options.addFilter(u"Errors", u"false");
    save();
    EXPECT_TRUE(runTimer());
    EXPECT_EQ(placings(), 1);
}

TEST_F(AppliedOptions, AreAppliedOnceForTwoSaves) {
    world.host.options.setDocked(u"true");
    save();
    world.host.options.setDocked(u"false");
    save();
    EXPECT_EQ(timers().enabledTimers(), 1);
    runTimer();
    EXPECT_EQ(placings(), 1);
    EXPECT_FALSE(runTimer());
}

TEST_F(AppliedOptions, LeaveTheLogAloneWhenNothingItShowsChanged) {
    save();
    world.host.options.setKeepInSession(u"true");
    save();
    EXPECT_TRUE(globals().options.KeepInSession);
    EXPECT_FALSE(runTimer());
    EXPECT_EQ(placings(), 0);
}

TEST_F(AppliedOptions, AreNotAppliedToAClosedLog) {
    world.host.options.setDocked(u"true");
    save();
    world.close();
    EXPECT_EQ(timers().enabledTimers(), 0);
    timers().advance(100);
    EXPECT_EQ(placings(), 0);
}

class AppliedOptionsFocus : public AppliedOptions {
protected:
    static constexpr std::int32_t kUsersWindow = 99;
    void apply(const char16_t* docked) {
        world.host.options.setDocked(docked);
        save();
        ASSERT_TRUE(runTimer());
    }
};

TEST_F(AppliedOptionsFocus, StaysWhereTheUserHasItWhenTheFloatingWindowOpens) {
    apply(u"true");
    forms().active = kUsersWindow;
    apply(u"false");
    ASSERT_TRUE(floats());
    EXPECT_EQ(forms().active, kUsersWindow);
    EXPECT_EQ(forms().broughtToFront.size(), 1U);
    EXPECT_EQ(world.calls.countOf("Window.SetFocus"), 0);
}

TEST_F(AppliedOptionsFocus, StaysWhereTheUserHasItWhenTheFloatingWindowComesToTheFront) {
    ShowLog(globals());
    ASSERT_EQ(forms().active, placement().frmLog->form()->windowHandle());
    forms().active = kUsersWindow;
    world.host.options.clearFilters();
    world.host.options.addFilter(u"Errors", u"false");
    apply(u"false");
    ASSERT_TRUE(floats());
    EXPECT_EQ(forms().broughtToFront.size(), 2U);
    EXPECT_EQ(forms().active, kUsersWindow);
}

TEST_F(AppliedOptionsFocus, StaysWhereTheUserHasItWhenTheFloatingWindowGoes) {
    ShowLog(globals());
    forms().active = kUsersWindow;
    apply(u"true");
    ASSERT_FALSE(floats());
    EXPECT_EQ(world.calls.countOf("Window.SetFocus"), 0);
    EXPECT_EQ(forms().active, kUsersWindow);
}

TEST_F(AppliedOptionsFocus, GoesToTheHostsWindowFromAFloatingWindowThatGoes) {
    ShowLog(globals());
    apply(u"true");
    ASSERT_FALSE(floats());
    EXPECT_EQ(world.calls.countOf("Window.SetFocus"), 1);
}

TEST_F(AppliedOptionsFocus, IsTakenByALogThatIsAskedForAfterwards) {
    apply(u"true");
    forms().active = kUsersWindow;
    apply(u"false");
    ShowLog(globals());
    EXPECT_EQ(forms().active, placement().frmLog->form()->windowHandle());
}

TEST_F(AppliedOptions, WaitWhileTheLogIsBusy) {
    world.host.options.setDocked(u"true");
    save();
    globals().ExpansionBusy = true;
    runTimer();
    EXPECT_EQ(placings(), 0);
    globals().ExpansionBusy = false;
    EXPECT_TRUE(runTimer());
    EXPECT_EQ(placings(), 1);
}

TEST_F(AppliedOptions, SurviveAHostThatClosesTheLogWhileItIsPlaced) {
    world.host.options.setDocked(u"true");
    save();
    window.window->before(u"DisplayLog", [&] { world.close(); });
    runTimer();
    EXPECT_EQ(timers().enabledTimers(), 0);
    EXPECT_FALSE(floats());
}

} // namespace
} // namespace cvlog::host
