// Visible, Parent, Docked, SetFocus, Move and Dock.

#include "core/options.h"
#include "tests/support/placed_log.h"

namespace cvlog::host {
namespace {

using Journal = std::vector<std::string>;

class Visible : public tests::PlacedLog {};

TEST_F(Visible, PutToWhatItIsDoesNothing) {
    giveWindow();
    PutVisible(globals(), false);
    EXPECT_TRUE(world.calls.journal().empty());
    ShowFloatingWindow(globals(), {});
    world.calls.restart();
    PutVisible(globals(), true);
    EXPECT_TRUE(world.calls.journal().empty());
    EXPECT_TRUE(floats());
}

TEST_F(Visible, IsTheWishWithAParentAndTheFloatingWindowWithoutOne) {
    globals().LogWindowVisible = true;
    EXPECT_FALSE(GetVisible(globals()));
    ShowFloatingWindow(globals(), {});
    EXPECT_TRUE(GetVisible(globals()));
    globals().LogWindowVisible = false;
    EXPECT_TRUE(GetVisible(globals()));
    assumeParent();
    EXPECT_FALSE(GetVisible(globals()));
    globals().LogWindowVisible = true;
    EXPECT_TRUE(GetVisible(globals()));
}

TEST_F(Visible, WithoutAParentOpensAndClosesTheWindowAndLeavesTheWish) {
    for (const bool hasWindow : {false, true}) {
        if (hasWindow) giveWindow();
        for (const bool wish : {false, true}) {
            globals().LogWindowVisible = wish;
            PutVisible(globals(), true);
            EXPECT_TRUE(floats());
            EXPECT_EQ(globals().LogWindowVisible, wish);
            PutVisible(globals(), false);
            EXPECT_FALSE(floats());
            EXPECT_EQ(globals().LogWindowVisible, wish);
        }
    }
}

TEST_F(Visible, WithAParentChangesTheWish) {
    giveWindow();
    setParent();
    PutVisible(globals(), true);
    EXPECT_TRUE(globals().LogWindowVisible);
    EXPECT_TRUE(floats());
    PutVisible(globals(), false);
    EXPECT_FALSE(globals().LogWindowVisible);
    EXPECT_FALSE(floats());
}

// Docked by the option, the log needs no floating window, even where nobody gave it a container: it shows as long as the
// put lasts, and the wish that is remembered is the old one.
TEST_F(Visible, InADockedLogWithoutAParentShowsTheControlAndOpensNoWindow) {
    giveWindow();
    globals().options.DockedOption = true;
    PutVisible(globals(), true);
    EXPECT_FALSE(floats());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
    EXPECT_FALSE(globals().LogWindowVisible);
    EXPECT_FALSE(GetVisible(globals()));
    PutVisible(globals(), false); // already so: the control stays
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
    ShowLog(globals());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(false));
}

class Parent : public tests::PlacedLog {};

TEST_F(Parent, PutOnceMoreDoesNothing) {
    giveWindow();
    setParent();
    world.calls.restart();
    setParent();
    EXPECT_TRUE(world.calls.journal().empty());
}

TEST_F(Parent, PutPlacesTheLogForTheOptions) {
    giveWindow();
    globals().options.DockedOption = true;
    globals().LogWindowVisible = true;
    setParent();
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
    EXPECT_FALSE(floats());
    globals().options.DockedOption = false;
    PutParent(globals(), anotherContainer());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(false));
    EXPECT_TRUE(floats());
}

TEST_F(Parent, OfNoneIsStoredBeforeTheLogIsHidden) {
    giveWindow();
    globals().LogWindowVisible = true;
    setParent();
    ASSERT_TRUE(floats());
    PutParent(globals(), nullptr);
    EXPECT_FALSE(floats()) << "hidden as a log without a container";
    EXPECT_TRUE(globals().LogWindowVisible) << "so the wish stays";
    EXPECT_EQ(placement().Parent, nullptr);
}

// The property already reads false then, so nothing is hidden: the control is the container's to take away.
TEST_F(Parent, OfNoneWhileDockedLeavesTheControl) {
    giveWindow();
    globals().options.DockedOption = true;
    globals().LogWindowVisible = true;
    setParent();
    world.calls.restart();
    PutParent(globals(), nullptr);
    EXPECT_TRUE(world.calls.journal().empty());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
    EXPECT_TRUE(globals().LogWindowVisible);
}

class Docked : public tests::PlacedLog {
protected:
    Docked() {
        giveWindow();
        world.host.options.setDocked(u"false");
        world.host.options.document->on(u"Save", [this](std::span<automation::Value>) {
            if (saveRaises) world.host.options.document->fire(1);
            return automation::Value();
        });
    }
    automation::Value stored() {
        const auto node = automation::toObject(
            world.host.options.document->invoke(u"selectSingleNode", u"//BOOL[@ID='LogDocked']"));
        return node->invoke(u"getAttribute", u"VALUE");
    }
    bool timerRuns() { return world.platform.peers.timers.enabledTimers() != 0; }
    bool saveRaises = true;
};

TEST_F(Docked, ReadsFalseWithoutAParentWhateverTheOptionSays) {
    globals().options.DockedOption = true;
    EXPECT_FALSE(GetDocked(globals()));
    assumeParent();
    EXPECT_TRUE(GetDocked(globals()));
}

TEST_F(Docked, PutChangesNothingWithoutAParentOrWithTheSameValue) {
    PutDocked(globals(), true);
    EXPECT_FALSE(globals().options.DockedOption);
    assumeParent();
    PutDocked(globals(), false);
    EXPECT_TRUE(world.calls.journal().empty());
}

TEST_F(Docked, PutStoresTheOptionAndPlacesTheLogAtOnce) {
    globals().LogWindowVisible = true;
    setParent();
    ASSERT_TRUE(floats());
    PutDocked(globals(), true);
    EXPECT_EQ(stored(), automation::Value(u"true"));
    EXPECT_FALSE(floats());
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(true));
    EXPECT_FALSE(timerRuns()) << "the document's own event finds nothing new";
    PutDocked(globals(), false);
    EXPECT_EQ(stored(), automation::Value(u"false"));
    EXPECT_TRUE(floats());
    EXPECT_FALSE(timerRuns());
}

TEST_F(Docked, StaysPutWhenTheDocumentCannotBeSaved) {
    setParent();
    world.host.options.document->raise(u"Save", tests::CallCounter::injectedError());
    PutDocked(globals(), true);
    EXPECT_TRUE(globals().options.DockedOption);
    EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(false)) << "placed, and not wanted";
}

TEST_F(Docked, StaysPutInMemoryWhenTheDocumentHasNoNodeForIt) {
    setParent();
    world.host.options.setDocked(std::nullopt);
    saveRaises = false;
    world.calls.restart();
    PutDocked(globals(), true);
    EXPECT_TRUE(globals().options.DockedOption);
    EXPECT_EQ(world.calls.countOf("Window.DisplayLog"), 1);
    EXPECT_FALSE(timerRuns());
}

// The save tells that the options were saved, and an option without a node is off.
TEST_F(Docked, IsTakenBackByTheSaveOfADocumentThatHasNoNodeForIt) {
    setParent();
    world.host.options.setDocked(std::nullopt);
    PutDocked(globals(), true);
    EXPECT_FALSE(globals().options.DockedOption);
    EXPECT_TRUE(timerRuns());
}

class Focus : public tests::PlacedLog {
protected:
    Focus() { world.log->events().advise(sink); }
    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
    static constexpr std::int32_t kGotFocus = 2;
};

TEST_F(Focus, IsNotGivenToALogThatIsNotWanted) {
    giveWindow();
    globals().options.DockedOption = true;
    FocusLog(globals(), *world.log);
    EXPECT_TRUE(world.calls.journal().empty());
    EXPECT_TRUE(sink->ids.empty());
}

TEST_F(Focus, OfADockedLogIsToldFirstAndThenGiven) {
    giveWindow();
    globals().options.DockedOption = true; // also without a Parent: the option counts
    globals().LogWindowVisible = true;
    sink->handler = [&](std::int32_t, std::span<automation::Value>) {
        EXPECT_EQ(world.calls.countOf("LogView.SetFocus"), 0);
    };
    FocusLog(globals(), *world.log);
    EXPECT_EQ(sink->ids, std::vector<std::int32_t>{kGotFocus});
    EXPECT_EQ(world.calls.countOf("LogView.SetFocus"), 1);
}

TEST_F(Focus, OfAFloatingLogIsGivenWithoutAWord) {
    globals().LogWindowVisible = true;
    ShowFloatingWindow(globals(), {});
    FocusLog(globals(), *world.log);
    EXPECT_EQ(world.calls.countOf("List.takeFocus"), 1);
    EXPECT_TRUE(sink->ids.empty());
}

TEST_F(Focus, MakesNoFloatingWindow) {
    globals().LogWindowVisible = true;
    FocusLog(globals(), *world.log);
    EXPECT_FALSE(floats());
    EXPECT_TRUE(world.calls.journal().empty());
}

class Move : public tests::PlacedLog {};

TEST_F(Move, PassesFourDoublesToTheHostsWindow) {
    MoveHostWindow(globals(), 1, 2, 3, 4);
    giveWindow();
    std::vector<automation::Value> passed;
    window.window->on(u"Move", [&](std::span<automation::Value> arguments) {
        passed.assign(arguments.begin(), arguments.end());
        arguments[0] = 99.0; // by reference: the host may, and nobody minds
        return automation::Value();
    });
    world.calls.restart();
    MoveHostWindow(globals(), 1.5, -2, 3, 4);
    EXPECT_EQ(passed, (std::vector<automation::Value>{1.5, -2.0, 3.0, 4.0}));
    window.window->raise(u"Move", tests::CallCounter::injectedError());
    MoveHostWindow(globals(), 1, 2, 3, 4);
}

class DockTest : public tests::PlacedLog {};

TEST_F(DockTest, ShowsTheAlertAndThenOnlyNotesTheWish) {
    giveWindow();
    world.host.options.setDocked(u"false");
    forms().whileModal = [&](platform::headless::HeadlessFormPeer& alert) {
        EXPECT_FALSE(globals().LogWindowVisible);
        alert.userClicks(0);
    };
    world.calls.restart();
    Dock(globals(), container());
    EXPECT_EQ(forms().shown.at(0).caption, u"Alert!");
    EXPECT_TRUE(globals().LogWindowVisible);
    EXPECT_TRUE(globals().options.DockedOption);
    EXPECT_EQ(placement().Parent, nullptr);
    EXPECT_EQ(world.calls.countOf("Options."), 0);
    EXPECT_EQ(world.calls.countOf("Window."), 0);
    globals().LogWindowVisible = false;
    Dock(globals(), nullptr);
    EXPECT_FALSE(globals().options.DockedOption);
    EXPECT_EQ(forms().shown.size(), 2U) << "each call alerts";
}

} // namespace
} // namespace cvlog::host
