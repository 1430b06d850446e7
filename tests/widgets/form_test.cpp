#include "widgets/form.h"

#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_peer_factory.h"
#include "platform/headless/headless_text_measurer.h"
#include "widgets/list_view.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cvlog::widgets {
namespace {

using platform::headless::HeadlessFormPeer;

/// A form as the component's own are: an object that owns it and hears of it.
struct Window : FormOwner, std::enable_shared_from_this<Window> {
    explicit Window(PeerFactory& peers) : form(peers, Border::Sizable, u"Window") {}
    void formResized() override { events.emplace_back("resized"); }
    void formQueryUnload(UnloadMode mode) override {
        events.emplace_back(mode == UnloadMode::User ? "query: user" : "query: code");
        if (atQuery) atQuery();
    }
    void formUnload() override {
        events.emplace_back("unload");
        if (atUnload) atUnload();
    }
    Form form;
    std::vector<std::string> events;
    std::function<void()> atQuery;
    std::function<void()> atUnload;
};

class FormTest : public testing::Test {
protected:
    FormTest() { window->form.setOwner(window); }
    ~FormTest() override { EXPECT_EQ(factory.forms.faults, std::vector<std::string>()); }
    HeadlessFormPeer& peer() { return *factory.forms.live.at(0); }
    using Events = std::vector<std::string>;

    platform::headless::CallGate gate;
    platform::headless::HeadlessPeerFactory factory{gate};
    std::shared_ptr<Window> window = std::make_shared<Window>(factory);
};

TEST_F(FormTest, IsLoadedAndHiddenAtFirst) {
    EXPECT_TRUE(window->form.isLoaded());
    EXPECT_FALSE(window->form.visible());
    EXPECT_NE(window->form.windowHandle(), 0);
}

TEST_F(FormTest, AsksAndTellsOnceWhenItsUserClosesIt) {
    window->atUnload = [this] { window->form.unload(); };
    peer().userCloses();
    EXPECT_EQ(window->events, (Events{"query: user", "unload"}));
    EXPECT_FALSE(window->form.isLoaded());
    EXPECT_EQ(window->form.windowHandle(), 0);
    window->form.unload();
    EXPECT_EQ(window->events.size(), 2U);
}

TEST_F(FormTest, GoesByTheProgramInTheSameSteps) {
    window->form.unload();
    EXPECT_EQ(window->events, (Events{"query: code", "unload"}));
}

TEST_F(FormTest, GoesAlsoWhenItsOwnerFails) {
    window->atQuery = [] { throw std::runtime_error("query"); };
    window->atUnload = [] { throw std::runtime_error("unload"); };
    window->form.unload();
    EXPECT_FALSE(window->form.isLoaded());
    EXPECT_TRUE(factory.forms.live.empty());
}

TEST_F(FormTest, MayLoseItsOwnerWhileItGoes) {
    window->atQuery = [this] { window.reset(); };
    peer().userCloses();
    EXPECT_TRUE(factory.forms.live.empty());
    EXPECT_EQ(window, nullptr);
}

TEST_F(FormTest, StaysHiddenWhenItsOwnerWindowRefuses) {
    factory.forms.refusedOwners.insert(9);
    EXPECT_THROW(window->form.show(9), std::runtime_error);
    EXPECT_FALSE(window->form.visible());
    window->form.show();
    EXPECT_TRUE(window->form.visible());
    EXPECT_EQ(factory.forms.shown,
              (std::vector<platform::headless::FormBook::Showing>{{u"Window", 0, false}}));
}

TEST_F(FormTest, TellsItsSizeInsideTheFrame) {
    window->form.setPlacement({100, 200, 3120, 2510});
    EXPECT_EQ(window->form.clientArea(), (base::Area{0, 0, 3000, 2000}));
    EXPECT_EQ(window->events, Events{"resized"});
    peer().userMoves({0, 0, 1120, 1510});
    EXPECT_EQ(window->form.clientArea(), (base::Area{0, 0, 1000, 1000}));
    peer().userMaximises();
    EXPECT_EQ(window->form.state(), WindowState::Maximised);
    EXPECT_EQ(window->form.placement(), (base::Area{0, 0, 1120, 1510}));
}

TEST_F(FormTest, RunsModalUntilItIsUnloaded) {
    int pressed = 0;
    window->form.add({{0, 0, 900, 360}, u"OK", true, true, [&] {
                          ++pressed;
                          window->form.unload();
                      }});
    factory.forms.whileModal = [](HeadlessFormPeer& open) { open.userClicks(0); };
    window->form.showModal(5);
    EXPECT_EQ(pressed, 1);
    EXPECT_FALSE(window->form.isLoaded());
    EXPECT_EQ(factory.forms.shown,
              (std::vector<platform::headless::FormBook::Showing>{{u"Window", 5, true}}));
}

TEST_F(FormTest, GivesItsListBackBeforeItGoes) {
    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    ListView list(collator, measurer);
    list.attach(factory.makeListView(list));
    window->form.place(list, {0, 0, 100, 100});
    window->form.unload();
    EXPECT_FALSE(window->form.list());
}

TEST_F(FormTest, HoldsOneListAtATime) {
    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    ListView first(collator, measurer);
    ListView second(collator, measurer);
    first.attach(factory.makeListView(first));
    second.attach(factory.makeListView(second));
    window->form.place(first, {0, 0, 100, 100});
    window->form.place(second, {0, 0, 100, 100});
    EXPECT_EQ(window->form.list()->list, &second);
    window.reset();
    EXPECT_TRUE(factory.forms.live.empty());
}

} // namespace
} // namespace cvlog::widgets
