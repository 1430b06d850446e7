#include "host/frm_log.h"

#include "core/log_resources.h"
#include "tests/support/placed_log.h"

namespace cvlog::host {
namespace {

class FloatingLog : public tests::PlacedLog {
protected:
    void open() { ShowFloatingWindow(globals(), FindHostWindow(globals())); }
    void store(std::u16string_view key, std::u16string_view value) {
        world.platform.settings.save(u"Calvetta", u"Activity Log", key, value);
    }
    std::u16string stored(std::u16string_view key) {
        return world.platform.settings.get(u"Calvetta", u"Activity Log", key, u"none");
    }
    void storePlace(std::u16string_view left, std::u16string_view top, std::u16string_view width,
                    std::u16string_view height) {
        store(u"Left", left);
        store(u"Top", top);
        store(u"Width", width);
        store(u"Height", height);
    }
    base::Area place() { return placement().frmLog->form()->placement().value(); }
};

TEST_F(FloatingLog, IsNamedAfterTheProductAndKeepsItsDesignNameWithoutOne) {
    open();
    EXPECT_EQ(placement().frmLog->form()->caption(), u"Calvetta Activity Log");
    EXPECT_EQ(placement().frmLog->mnuPopUp().caption, u"PopUp");
    EXPECT_EQ(placement().frmLog->mnuPopUp().items.at(0)->name, u"mnuHistory");
    EXPECT_EQ(placement().frmLog->mnuPopUp().items.at(0)->caption, u"&History");
    CloseFloatingWindow(globals());
    world.host.workspace->on(u"GetProductInfo",
                             [](std::span<automation::Value>) { return automation::Value(u"Prod"); });
    open();
    EXPECT_EQ(placement().frmLog->form()->caption(), u"Prod Activity Log");
    CloseFloatingWindow(globals());
    world.host.workspace->raise(u"GetProductInfo", tests::CallCounter::injectedError());
    open();
    EXPECT_EQ(placement().frmLog->form()->caption(), u"Calvetta Activity Log");
    world.host.workspace->heal(u"GetProductInfo");
}

TEST_F(FloatingLog, IsFilledByOneLogThatIsInStepWithTheOthers) {
    world.hideBoxes();
    widgets::ListView& docked = world.addControl();
    world.add({u"M1", 0, u"P1", u"first", u""});
    open();
    widgets::Form& form = *placement().frmLog->form();
    ASSERT_TRUE(form.list());
    EXPECT_EQ(form.list()->area, form.clientArea());
    EXPECT_EQ(globals().LogViews.count(), 2);
    EXPECT_EQ(tests::rowsOf(*form.list()->list), tests::rowsOf(docked));
    floatingPeer().userMoves({0, 0, 5000, 5000});
    EXPECT_EQ(form.list()->area, form.clientArea());
    EXPECT_EQ(form.list()->area.width, 5000 - platform::headless::HeadlessFormPeer::kFrame.width);
    CloseFloatingWindow(globals());
    EXPECT_EQ(globals().LogViews.count(), 1);
}

TEST_F(FloatingLog, ComesBackWhereItWas) {
    storePlace(u"300", u"-0", u"6000", u"4000");
    open();
    EXPECT_EQ(place(), (base::Area{300, 0, 6000, 4000}));
    floatingPeer().userMoves({1200, 900, 7000, 3000});
    floatingPeer().userMaximises();
    CloseFloatingWindow(globals());
    EXPECT_EQ(stored(u"Left"), u"1200");
    EXPECT_EQ(stored(u"Top"), u"900");
    EXPECT_EQ(stored(u"Width"), u"7000");
    EXPECT_EQ(stored(u"Height"), u"3000");
    EXPECT_EQ(stored(u"State"), u"2");
    open();
    EXPECT_EQ(place(), (base::Area{1200, 900, 7000, 3000}));
    EXPECT_EQ(placement().frmLog->form()->state(), widgets::WindowState::Maximised);
}

TEST_F(FloatingLog, IsBroughtBackFromAMonitorThatHasGone) {
    storePlace(u"25000", u"-3000", u"6000", u"4000");
    open();
    EXPECT_EQ(place(), (base::Area{19'200 - 6000, 0, 6000, 4000}));
    CloseFloatingWindow(globals());
    world.platform.screens.monitors.push_back({19'200, -5000, 19'200, 14'400});
    storePlace(u"25000", u"-3000", u"6000", u"4000");
    open();
    EXPECT_EQ(place(), (base::Area{25'000, -3000, 6000, 4000}));
    CloseFloatingWindow(globals());
    world.platform.screens.monitors.pop_back();
    storePlace(u"100", u"100", u"99999", u"1");
    open();
    EXPECT_EQ(place().left, 0);
    EXPECT_EQ(place().width, 19'200);
    EXPECT_GT(place().height, 1000) << "low windows cannot be found again";
}

TEST_F(FloatingLog, TakesNoNonsenseFromTheSettings) {
    for (const auto* text : {u"", u"abc", u"nan", u"1e99", u"99999999999"}) {
        storePlace(u"300", text, u"6000", u"4000");
        open();
        EXPECT_EQ(place(), (base::Area{3900, 4950, 11'400, 4500})) << "centred";
        CloseFloatingWindow(globals());
    }
    storePlace(u"300", u"300", u"6000", u"4000");
    store(u"State", u"7");
    open();
    EXPECT_EQ(placement().frmLog->form()->state(), widgets::WindowState::Normal);
}

TEST_F(FloatingLog, IsForgottenBeforeItsUserIsHeard) {
    giveWindow();
    setParent();
    PutVisible(globals(), true);
    ASSERT_TRUE(floats());
    bool forgotten = false;
    window.window->on(u"DisplayLog", [&](std::span<automation::Value>) {
        forgotten = !floats();
        return automation::Value();
    });
    floatingPeer().userCloses();
    EXPECT_TRUE(forgotten);
    EXPECT_FALSE(floats());
    EXPECT_FALSE(globals().LogWindowVisible) << "with a container closing it is a wish";
    world.close();
    EXPECT_EQ(stored(u"Visible"), u"0");
}

TEST_F(FloatingLog, ClosedWithoutAContainerLeavesTheWish) {
    globals().LogWindowVisible = true;
    open();
    floatingPeer().userCloses();
    EXPECT_FALSE(floats());
    EXPECT_TRUE(globals().LogWindowVisible);
    EXPECT_FALSE(GetVisible(globals()));
}

TEST_F(FloatingLog, ClosesAlsoWhenNoLogIsOpen) {
    open();
    globals().store.CurrentLog.reset();
    globals().LogWindowVisible = true;
    floatingPeer().userCloses();
    EXPECT_FALSE(floats());
    EXPECT_TRUE(globals().LogWindowVisible);
}

TEST_F(FloatingLog, UnloadedByTheProgramNeverPutsVisible) {
    giveWindow();
    setParent();
    PutVisible(globals(), true);
    CloseFloatingWindow(globals());
    EXPECT_TRUE(globals().LogWindowVisible);
}

TEST_F(FloatingLog, GivesTheFocusBackToTheHost) {
    giveWindow();
    open();
    CloseFloatingWindow(globals());
    EXPECT_EQ(world.calls.countOf("Window.SetFocus"), 1);
    open();
    window.window->raise(u"SetFocus", tests::CallCounter::injectedError());
    floatingPeer().userCloses();
    EXPECT_TRUE(forms().live.empty());
}

TEST_F(FloatingLog, GoesWithItsOwnerWindow) {
    giveWindow();
    globals().LogWindowVisible = true;
    ShowLog(globals());
    floatingPeer().form().windowLost();
    EXPECT_FALSE(floats());
    EXPECT_TRUE(globals().LogWindowVisible);
    EXPECT_EQ(globals().LogViews.count(), 0);
}

TEST_F(FloatingLog, GoesWhenTheDatabaseIsClosed) {
    open();
    world.close();
    EXPECT_FALSE(floats());
    EXPECT_TRUE(forms().live.empty());
}

TEST_F(FloatingLog, ClosesAfterTheWishWasSavedAndBeforeTheListsLoseTheirIcons) {
    widgets::ListView& docked = world.addControl();
    core::AttachImageLists(globals(), docked);
    globals().LogWindowVisible = true;
    open();
    std::vector<std::string> steps;
    world.calls.insideCall = [&](const std::string& name) {
        if (name == "Settings.save" && floats()) steps.emplace_back("saved");
        if (name == "List.appearanceChanged") steps.emplace_back(floats() ? "too early" : "unbound");
    };
    world.close();
    world.calls.insideCall = nullptr;
    EXPECT_EQ(steps, (std::vector<std::string>{"saved", "unbound", "unbound"}));
    EXPECT_EQ(stored(u"Visible"), u"1");
}

TEST_F(FloatingLog, IsOneHoweverOftenItIsAskedForWhileItLoads) {
    globals().LogWindowVisible = true;
    bool nested = false;
    world.host.workspace->before(u"GetProductInfo", [&] {
        if (!std::exchange(nested, true)) ShowLog(globals());
    });
    ShowLog(globals());
    world.host.workspace->before(u"GetProductInfo", nullptr);
    EXPECT_TRUE(nested);
    EXPECT_EQ(forms().live.size(), 1U);
    EXPECT_EQ(forms().shown.size(), 1U);
}

TEST_F(FloatingLog, MayBeClosedWhileItLoads) {
    globals().LogWindowVisible = true;
    world.host.workspace->before(u"GetProductInfo", [&] { CloseFloatingWindow(globals()); });
    ShowLog(globals());
    EXPECT_FALSE(floats());
    EXPECT_TRUE(forms().live.empty());
    EXPECT_TRUE(forms().shown.empty());
    EXPECT_EQ(globals().LogViews.count(), 0);
}

TEST_F(FloatingLog, HoldsTheComponentsStateAsLongAsItIsOpen) {
    auto state = std::make_shared<int>(1);
    globals().holder = [state] { return state; };
    open();
    EXPECT_EQ(state.use_count(), 3);
    CloseFloatingWindow(globals());
    EXPECT_EQ(state.use_count(), 2);
}

} // namespace
} // namespace cvlog::host
