#include "tests/support/form_contract.h"

#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_peer_factory.h"
#include "platform/headless/headless_text_measurer.h"

namespace cvlog::platform::headless {
namespace {

class HeadlessScreen : public widgets::testbed::Screen {
public:
    ~HeadlessScreen() override { EXPECT_EQ(factory_.forms.faults, std::vector<std::string>()); }
    widgets::PeerFactory& peers() override { return factory_; }
    std::unique_ptr<widgets::ListView> makeList() override {
        auto made = std::make_unique<widgets::ListView>(collator_, measurer_);
        made->attach(factory_.makeListView(*made));
        return made;
    }
    std::int32_t refusingWindow() override {
        factory_.forms.refusedOwners.insert(9);
        return 9;
    }
    void userCloses(widgets::Form& form) override { peerOf(form).userCloses(); }
    void userClicks(widgets::Form& form, std::size_t button) override { peerOf(form).userClicks(button); }
    void hideByHandle(widgets::Form& form) override { peerOf(form).hideByHandle(); }
    bool isOnScreen(widgets::Form& form) override { return peerOf(form).onScreen(); }
    bool waitFor(const std::function<bool()>& something) override {
        while (!something())
            if (!factory_.timers.runNext()) return false;
        return true;
    }

private:
    static HeadlessFormPeer& peerOf(widgets::Form& form) {
        return static_cast<HeadlessFormPeer&>(*form.peer());
    }

    CallGate gate_;
    HeadlessPeerFactory factory_{gate_};
    HeadlessCollator collator_;
    HeadlessTextMeasurer measurer_;
};

} // namespace
} // namespace cvlog::platform::headless

namespace cvlog::widgets::testbed {

INSTANTIATE_TEST_SUITE_P(Headless, FormContract,
                         ::testing::Values(ScreenUnderTest{
                             "headless",
                             [] { return std::make_unique<platform::headless::HeadlessScreen>(); }}));

} // namespace cvlog::widgets::testbed
