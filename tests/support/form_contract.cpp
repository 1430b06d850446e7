#include "tests/support/form_contract.h"

#include <stdexcept>

namespace cvlog::widgets::testbed {

namespace {

using Events = std::vector<std::string>;

Button button(std::function<void()> clicked) {
    return {{0, 0, 900, 360}, u"&OK", true, true, std::move(clicked)};
}

} // namespace

TEST_P(FormContract, HasAHiddenWindowAtFirst) {
    EXPECT_NE(window_->form.windowHandle(), 0);
    EXPECT_FALSE(window_->form.visible());
    EXPECT_FALSE(window_->form.placement());
}

TEST_P(FormContract, GoesWhenItsUserClosesIt) {
    window_->form.show();
    screen_->userCloses(window_->form);
    EXPECT_EQ(window_->unloads, (Events{"query: user", "unload"}));
    EXPECT_FALSE(window_->form.isLoaded());
    EXPECT_EQ(window_->form.windowHandle(), 0);
}

TEST_P(FormContract, HasItsWindowWhileItTellsThatItGoes) {
    std::int32_t handle = 0;
    window_->atUnload = [&] { handle = window_->form.windowHandle(); };
    window_->form.unload();
    EXPECT_NE(handle, 0);
}

TEST_P(FormContract, IsPlacedWhenItIsShown) {
    window_->form.show();
    ASSERT_TRUE(window_->form.placement());
    EXPECT_GT(window_->form.placement()->width, 0);
    EXPECT_GT(window_->form.clientArea().height, 0);
    EXPECT_GE(window_->resized, 1);
}

TEST_P(FormContract, TellsTheClientAreaOfAPlacementAtOnce) {
    window_->form.setPlacement({1500, 1500, 6000, 4500});
    EXPECT_EQ(window_->resized, 1);
    const base::Area client = window_->form.clientArea();
    EXPECT_GT(client.width, 5000);
    EXPECT_LE(client.width, 6000);
    EXPECT_GT(client.height, 3000);
    EXPECT_LT(client.height, 4500);
    EXPECT_EQ(window_->form.placement(), (base::Area{1500, 1500, 6000, 4500}));
}

TEST_P(FormContract, KeepsAPlacementThatWasGivenExactly) {
    const base::Area odd = {1501.25F, 1502.5F, 6001.75F, 4499.5F};
    window_->form.setPlacement(odd);
    window_->form.show();
    window_->form.bringToFront();
    EXPECT_EQ(window_->form.placement(), odd);
}

TEST_P(FormContract, StaysHiddenWhenItsOwnerWindowRefuses) {
    const std::int32_t refusing = screen_->refusingWindow();
    EXPECT_THROW(window_->form.show(refusing), std::runtime_error);
    EXPECT_FALSE(window_->form.visible());
    window_->form.show();
    EXPECT_TRUE(window_->form.visible());
}

TEST_P(FormContract, TakesTheUsersInputOnlyWhenItMay) {
    const auto other = RecordingForm::make(screen_->peers());
    other->form.show();
    other->form.bringToFront(); // the program itself may not be in front yet
    EXPECT_TRUE(other->form.isActive());
    window_->form.show(0, Activation::Leave);
    EXPECT_TRUE(screen_->isOnScreen(window_->form));
    EXPECT_TRUE(other->form.isActive());
    window_->form.bringToFront(Activation::Leave);
    EXPECT_TRUE(other->form.isActive());
    EXPECT_FALSE(window_->form.isActive());
    window_->form.bringToFront();
    EXPECT_TRUE(window_->form.isActive());
    EXPECT_FALSE(other->form.isActive());
    window_->form.unload();
    EXPECT_FALSE(window_->form.isActive());
}

TEST_P(FormContract, TakesNoInputAlsoWhenItComesUpMaximised) {
    const auto other = RecordingForm::make(screen_->peers());
    other->form.show();
    other->form.bringToFront();
    window_->form.setState(WindowState::Maximised);
    window_->form.show(0, Activation::Leave);
    EXPECT_EQ(window_->form.state(), WindowState::Maximised);
    EXPECT_TRUE(other->form.isActive());
    screen_->hideByHandle(window_->form);
    window_->form.bringToFront(Activation::Leave);
    EXPECT_TRUE(screen_->isOnScreen(window_->form));
    EXPECT_TRUE(other->form.isActive());
}

TEST_P(FormContract, ComesBackToTheScreenWhenSomebodyHasHiddenIt) {
    window_->form.show();
    for (const Activation activation : {Activation::Take, Activation::Leave}) {
        screen_->hideByHandle(window_->form);
        ASSERT_FALSE(screen_->isOnScreen(window_->form));
        window_->form.bringToFront(activation);
        EXPECT_TRUE(screen_->isOnScreen(window_->form));
    }
}

TEST_P(FormContract, IsNotShownByComingToTheFront) {
    window_->form.bringToFront();
    EXPECT_FALSE(screen_->isOnScreen(window_->form));
}

TEST_P(FormContract, MayGoInsideAClickWithAllThatHoldsIt) {
    int after = 0;
    window_->form.add(button([this, &after] {
        window_->form.unload();
        window_.reset();
        ++after;
    }));
    window_->form.show();
    screen_->userClicks(window_->form, 0);
    EXPECT_EQ(after, 1);
    EXPECT_EQ(window_, nullptr);
}

TEST_P(FormContract, MayGoWhenItHearsOfItsSize) {
    window_->form.setPlacement({1500, 1500, 6000, 4500});
    window_->atResize = [this] {
        if (window_->form.isLoaded()) window_->form.unload();
    };
    window_->form.show();
    EXPECT_FALSE(window_->form.visible());
    window_ = RecordingForm::make(screen_->peers());
    window_->atResize = [this] { window_.reset(); };
    window_->form.setPlacement({1500, 1500, 6000, 4500});
    EXPECT_EQ(window_, nullptr);
}

TEST_P(FormContract, OutlivesAFailingHandler) {
    window_->form.add(button([] { throw std::runtime_error("handler"); }));
    window_->form.show();
    try {
        screen_->userClicks(window_->form, 0);
    } catch (const std::runtime_error&) { // a platform without windows lets it pass
    }
    EXPECT_TRUE(window_->form.isLoaded());
}

TEST_P(FormContract, RunsModalUntilTheUserClicks) {
    int pressed = 0;
    window_->form.add(button([&] {
        ++pressed;
        window_->form.unload();
    }));
    Timer user(screen_->peers(), 1, [&] {
        user.disable();
        EXPECT_TRUE(window_->form.visible());
        screen_->userClicks(window_->form, 0);
    });
    user.enable();
    window_->form.showModal();
    EXPECT_EQ(pressed, 1);
    EXPECT_FALSE(window_->form.isLoaded());
    EXPECT_FALSE(window_->form.visible());
}

TEST_P(FormContract, RunsModalUntilItsTimerUnloadsIt) {
    Timer patience(screen_->peers(), 5, [&] { window_->form.unload(); });
    patience.enable();
    window_->form.showModal();
    EXPECT_EQ(window_->unloads, (Events{"query: code", "unload"}));
}

TEST_P(FormContract, MayLetItsOwnerGoWhileItRunsModal) {
    Form* form = &window_->form;
    Timer patience(screen_->peers(), 5, [&] {
        patience.disable();
        window_.reset(); // held by the run alone
        form->unload();
    });
    patience.enable();
    form->showModal();
    EXPECT_EQ(window_, nullptr);
}

TEST_P(FormContract, RunsAModalFormOverAnother) {
    const auto second = RecordingForm::make(screen_->peers(), Border::FixedDialog);
    bool outerWasThere = false;
    Timer inner(screen_->peers(), 5, [&] {
        inner.disable();
        second->form.unload();
    });
    Timer outer(screen_->peers(), 5, [&] {
        outer.disable();
        inner.enable();
        second->form.showModal(window_->form.windowHandle());
        outerWasThere = window_->form.visible();
        window_->form.unload();
    });
    outer.enable();
    window_->form.showModal();
    EXPECT_TRUE(outerWasThere);
    EXPECT_FALSE(second->form.isLoaded());
}

TEST_P(FormContract, GivesItsListBackBeforeItGoes) {
    const std::unique_ptr<ListView> list = screen_->makeList();
    const std::int32_t handle = list->peer()->windowHandle();
    window_->form.place(*list, {0, 0, 3000, 1500});
    window_->form.show();
    screen_->userCloses(window_->form);
    EXPECT_FALSE(window_->form.list());
    EXPECT_EQ(list->peer()->windowHandle(), handle);
}

TEST_P(FormContract, HandsAListFromFormToForm) {
    const std::unique_ptr<ListView> list = screen_->makeList();
    const auto second = RecordingForm::make(screen_->peers()); // goes before the list on it
    window_->form.place(*list, {0, 0, 3000, 1500});
    window_->form.takeOffList();
    second->form.place(*list, {0, 0, 3000, 1500});
    window_.reset();
    EXPECT_NE(list->peer()->windowHandle(), 0);
}

TEST_P(FormContract, TimersCallAgainAndAgainUntilTheyAreStopped) {
    int calls = 0;
    Timer timer(screen_->peers(), 1, [&] { ++calls; });
    timer.enable();
    EXPECT_TRUE(screen_->waitFor([&] { return calls == 3; }));
    timer.disable();
    int later = 0;
    Timer other(screen_->peers(), 1, [&] { ++later; });
    other.enable();
    EXPECT_TRUE(screen_->waitFor([&] { return later == 30; }));
    EXPECT_EQ(calls, 3);
}

TEST_P(FormContract, TimersMayEndInTheirHandlers) {
    int calls = 0;
    std::unique_ptr<Timer> timer;
    timer = std::make_unique<Timer>(screen_->peers(), 1, [&] {
        ++calls;
        timer.reset();
    });
    timer->enable();
    EXPECT_TRUE(screen_->waitFor([&] { return timer == nullptr; }));
    EXPECT_EQ(calls, 1);
}

} // namespace cvlog::widgets::testbed
