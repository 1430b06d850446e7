#include "host/frm_msg.h"

#include "resources/form_layouts.h"
#include "tests/support/placed_log.h"

namespace cvlog::host {
namespace {

class Alert : public tests::PlacedLog, public testing::WithParamInterface<resources::Language> {
protected:
    platform::headless::TimerBook& timers() { return world.platform.peers.timers; }
};

TEST_F(Alert, ClosesFiveSecondsAfterItWasLoaded) {
    bool stillOpen = false;
    forms().whileModal = [&](platform::headless::HeadlessFormPeer&) {
        timers().advance(4999);
        stillOpen = forms().live.size() == 1;
    };
    const std::int64_t start = timers().now();
    ShowAlert(globals());
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(timers().now() - start, 5000);
    EXPECT_TRUE(forms().live.empty());
    EXPECT_EQ(timers().liveTimers(), 0);
}

TEST_F(Alert, ClosesByItsButtonAndNothingFiresAfterwards) {
    forms().whileModal = [](platform::headless::HeadlessFormPeer& alert) { alert.userClicks(0); };
    const std::int64_t start = timers().now();
    ShowAlert(globals());
    EXPECT_EQ(timers().now(), start);
    EXPECT_EQ(timers().liveTimers(), 0);
    timers().advance(10'000);
}

TEST_F(Alert, ClosesByItsCloseBox) {
    forms().whileModal = [](platform::headless::HeadlessFormPeer& alert) { alert.userCloses(); };
    ShowAlert(globals());
    EXPECT_EQ(timers().liveTimers(), 0);
}

TEST_F(Alert, CanBeShownWhileOneIsOpen) {
    int depth = 0;
    forms().whileModal = [&](platform::headless::HeadlessFormPeer&) {
        if (++depth < 3) ShowAlert(globals());
    };
    ShowAlert(globals());
    EXPECT_EQ(forms().shown.size(), 3U);
}

TEST_F(Alert, IsOwnedByTheHostsMainWindow) {
    auto main = std::make_shared<tests::ScriptObject>("Main", world.calls);
    main->set(u"hwnd", std::int32_t{77});
    ShowAlert(globals());
    world.host.workspace->set(u"CalvettaWindow", main);
    ShowAlert(globals());
    EXPECT_EQ(forms().shown.at(0).owner, 0);
    EXPECT_EQ(forms().shown.at(1).owner, 77);
}

TEST_P(Alert, SpeaksTheUsersLanguageUnderOneCaption) {
    world.globals.platform.language = GetParam();
    forms().whileModal = [&](platform::headless::HeadlessFormPeer& alert) {
        EXPECT_EQ(alert.form().caption(), u"Alert!");
        EXPECT_EQ(alert.form().labels().at(0).caption, resources::text(GetParam(), 127));
        EXPECT_EQ(alert.form().buttons().at(0).caption, resources::text(GetParam(), 126));
        EXPECT_EQ(alert.form().buttons().at(0).area, (base::Area{2985, 675, 930, 360}));
        EXPECT_EQ(alert.form().clientArea(), (base::Area{0, 0, 7050, 1185}));
        EXPECT_NE(alert.form().pictureBoxes().at(0).picture, nullptr);
    };
    ShowAlert(globals());
    EXPECT_EQ(forms().shown.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Languages, Alert,
                         testing::Values(resources::Language::English, resources::Language::Japanese,
                                         resources::Language::Korean));

} // namespace
} // namespace cvlog::host
