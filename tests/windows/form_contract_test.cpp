// The forms and timers of this platform keep to what all platforms do.

#include "tests/support/form_contract.h"

#include "tests/windows/form_window_fixture.h"

namespace cvlog::platform::win32 {
namespace {

class WindowsScreen : public widgets::testbed::Screen {
public:
    ~WindowsScreen() override { takeMessages(); }
    widgets::PeerFactory& peers() override { return services_.peers; }
    std::unique_ptr<widgets::ListView> makeList() override {
        auto made = std::make_unique<widgets::ListView>(services_.collator, services_.measurer);
        made->attach(services_.peers.makeListView(*made));
        return made;
    }
    std::int32_t refusingWindow() override { return 0x7FFFFFF0; }
    void userCloses(widgets::Form& form) override {
        PostMessageW(windowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0);
        takeMessages();
    }
    void userClicks(widgets::Form& form, std::size_t button) override {
        HWND next = nullptr;
        for (std::size_t i = 0; i <= button; ++i)
            next = FindWindowExW(windowOf(form), next, L"BUTTON", nullptr);
        SendMessageW(next, BM_CLICK, 0, 0);
    }
    void hideByHandle(widgets::Form& form) override { ShowWindow(windowOf(form), SW_HIDE); }
    bool isOnScreen(widgets::Form& form) override { return IsWindowVisible(windowOf(form)) != FALSE; }
    bool waitFor(const std::function<bool()>& something) override { return takeMessagesUntil(something); }

private:
    static HWND windowOf(const widgets::Form& form) {
        return static_cast<FormWindow*>(form.peer())->window();
    }

    Services services_;
};

} // namespace
} // namespace cvlog::platform::win32

namespace cvlog::widgets::testbed {

INSTANTIATE_TEST_SUITE_P(Win32, FormContract,
                         ::testing::Values(ScreenUnderTest{
                             "win32", [] { return std::make_unique<platform::win32::WindowsScreen>(); }}));

} // namespace cvlog::widgets::testbed
