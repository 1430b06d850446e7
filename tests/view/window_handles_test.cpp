// The system gives a dead window's handle to the next window: by then the registry must have forgotten it.

#include "platform/headless/headless_platform.h"
#include "tests/support/fake_engine.h"
#include "view/log_control.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace cvlog::view {
namespace {

constexpr std::int32_t kHandle = 4660;

/// A list's window that always has the same handle and tells of its end.
class OnlyWindow : public platform::headless::HeadlessListViewPeer {
public:
    OnlyWindow(widgets::ListView& list, const platform::headless::CallGate& gate,
               platform::headless::PeerBook& book, const std::function<void()>& gone)
        : HeadlessListViewPeer(list, gate, book, false), gone_(gone) {}
    ~OnlyWindow() override { gone_(); }
    std::int32_t windowHandle() const override { return lost ? 0 : kHandle; }
    bool lost = false; // a container took the window along into its own end

private:
    const std::function<void()>& gone_;
};

class OnlyWindowFactory : public platform::headless::HeadlessPeerFactory {
public:
    explicit OnlyWindowFactory(const platform::headless::CallGate& gate)
        : HeadlessPeerFactory(gate), gate_(gate) {}
    std::unique_ptr<widgets::ListViewPeer> makeListView(widgets::ListView& list) override {
        return std::make_unique<OnlyWindow>(list, gate_, book, windowGone);
    }
    std::function<void()> windowGone = [] {};

private:
    const platform::headless::CallGate& gate_;
};

class MeasurerThatMayFail : public platform::headless::HeadlessTextMeasurer {
public:
    base::Twips width(std::uint32_t font, base::CompactTextView text) override {
        if (fails) throw std::runtime_error("no font");
        return HeadlessTextMeasurer::width(font, text);
    }
    bool fails = false;
};

/// A platform on which all windows have one handle, one after the other.
struct OneHandlePlatform : platform::headless::HeadlessPlatform {
    MeasurerThatMayFail measurer;
    OnlyWindowFactory peers{gate};
};

class ReusedWindowHandles : public testing::Test {
protected:
    ReusedWindowHandles() {
        platform.peers.windowGone = [this] {
            ++windowsGone;
            listsWhenGone += globals.LogViews.count();
        };
    }
    std::unique_ptr<LogControl> makeControl() { return std::make_unique<LogControl>(globals); }

    tests::CallCounter calls;
    OneHandlePlatform platform;
    tests::FakeEngine engine{calls};
    core::Globals globals{core::Platform::of(platform, engine)};
    int windowsGone = 0;
    int listsWhenGone = 0; // lists that were still registered when their window went, all in all
};

TEST_F(ReusedWindowHandles, AreForgottenBeforeTheWindowGoes) {
    for (int round = 1; round <= 10; ++round) {
        auto control = makeControl();
        ASSERT_EQ(globals.LogViews.count(), 1) << "round " << round;
        EXPECT_EQ(globals.LogViews.first().get(), &control->lvLog());
        control.reset();
        EXPECT_EQ(windowsGone, round);
    }
    EXPECT_EQ(listsWhenGone, 0);
}

TEST_F(ReusedWindowHandles, BelongToTheNextListWhileSomeoneStillHoldsTheLast) {
    auto control = makeControl();
    core::LogViews::ListRef held = globals.LogViews.first();
    control.reset();
    control = makeControl();
    EXPECT_EQ(windowsGone, 1);
    held.reset();
    ASSERT_EQ(globals.LogViews.count(), 1) << "the end of a dead control's list is not the end of another's";
    EXPECT_EQ(globals.LogViews.first().get(), &control->lvLog());
}

TEST_F(ReusedWindowHandles, BelongToTheNextListWhenAContainerDestroyedTheLastWindow) {
    auto robbed = makeControl();
    static_cast<OnlyWindow*>(robbed->lvLog().peer())->lost = true;
    const auto next = makeControl();
    EXPECT_EQ(globals.LogViews.count(), 2) << "a live list is never left out";
    robbed.reset();
    ASSERT_EQ(globals.LogViews.count(), 1) << "the robbed one takes nobody's place along";
    EXPECT_EQ(globals.LogViews.first().get(), &next->lvLog());
}

TEST_F(ReusedWindowHandles, AreForgottenWhenAControlCannotBeMade) {
    platform.measurer.fails = true;
    EXPECT_THROW(makeControl(), std::runtime_error);
    EXPECT_EQ(windowsGone, 1);
    EXPECT_EQ(listsWhenGone, 0);
    platform.measurer.fails = false;
    const auto control = makeControl();
    EXPECT_EQ(globals.LogViews.count(), 1);
}

} // namespace
} // namespace cvlog::view
