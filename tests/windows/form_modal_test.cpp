// A form that is run modal, and the program's other windows meanwhile.

#include "tests/windows/form_window_fixture.h"

#include <stdexcept>

namespace cvlog::platform::win32 {
namespace {

class Win32ModalForm : public FormWindowFixture {
protected:
    /// Runs a form with two buttons modal; `user` acts as soon as messages are taken.
    void run(std::function<void()> user, std::int32_t owner = 0) {
        widgets::Timer acting(services_.peers, 1, [&] {
            acting.disable();
            user();
        });
        acting.enable();
        shown_->form.showModal(owner);
    }
    HWND button(std::size_t index) const { return childrenOf(windowOf(*shown_), L"BUTTON")[index]; }
    /// A key for where the focus is.
    static void key(WORD code) { PostMessageW(GetFocus(), WM_KEYDOWN, code, 1); }

    void addClosingButtons() {
        shown_->form.add({{0, 0, 900, 360}, u"&One", true, false, [this] {
                              pressed_.emplace_back("one");
                              shown_->form.unload();
                          }});
        shown_->form.add({{0, 600, 900, 360}, u"&Two", false, true, [this] {
                              pressed_.emplace_back("two");
                              shown_->form.unload();
                          }});
    }

    void TearDown() override {
        shown_.reset(); // before the list on it
        FormWindowFixture::TearDown();
    }

    HostsWindow host_;
    std::shared_ptr<RecordingForm> shown_ = make(Border::FixedDialog);
};

TEST_F(Win32ModalForm, AloneTakesInputUntilItGoes) {
    const HostsWindow other;
    const HostsWindow disabledBefore(WS_POPUP | WS_VISIBLE | WS_DISABLED);
    const HostsWindow hidden(WS_POPUP);
    run(
        [&] {
            EXPECT_TRUE(IsWindowVisible(windowOf(*shown_)));
            EXPECT_TRUE(IsWindowEnabled(windowOf(*shown_)));
            EXPECT_EQ(GetWindow(windowOf(*shown_), GW_OWNER), host_);
            EXPECT_FALSE(IsWindowEnabled(host_));
            EXPECT_FALSE(IsWindowEnabled(other));
            EXPECT_TRUE(IsWindowEnabled(hidden));
            shown_->form.unload();
        },
        host_.handle());
    EXPECT_TRUE(IsWindowEnabled(host_));
    EXPECT_TRUE(IsWindowEnabled(other));
    EXPECT_FALSE(IsWindowEnabled(disabledBefore)) << "it was disabled by somebody else";
}

TEST_F(Win32ModalForm, LeavesItsOwnerActive) {
    const HostsWindow other;
    SetForegroundWindow(other);
    run(
        [&] {
            EXPECT_EQ(GetActiveWindow(), windowOf(*shown_));
            shown_->form.unload();
            EXPECT_EQ(GetActiveWindow(), host_) << "at once, before the window is gone";
        },
        host_.handle());
    EXPECT_EQ(GetActiveWindow(), host_);
}

TEST_F(Win32ModalForm, LeavesTheWindowActiveThatWasWhenItHasNoOwner) {
    const HostsWindow other;
    SetForegroundWindow(host_);
    run([&] { shown_->form.unload(); });
    EXPECT_EQ(GetActiveWindow(), host_);
}

TEST_F(Win32ModalForm, RefusedByItsOwnerDisablesNothing) {
    EXPECT_THROW(shown_->form.showModal(1), std::runtime_error);
    EXPECT_TRUE(IsWindowEnabled(host_));
    EXPECT_FALSE(IsWindowVisible(windowOf(*shown_)));
    EXPECT_FALSE(shown_->form.visible());
}

TEST_F(Win32ModalForm, NestedEnablesWhatItDisabledItself) {
    const auto inner = make(Border::FixedDialog);
    run(
        [&] {
            widgets::Timer closing(services_.peers, 1, [&] {
                EXPECT_FALSE(IsWindowEnabled(windowOf(*shown_)));
                inner->form.unload();
            });
            closing.enable();
            inner->form.showModal(host_.handle());
            EXPECT_TRUE(IsWindowEnabled(windowOf(*shown_)));
            EXPECT_EQ(GetActiveWindow(), windowOf(*shown_)) << "the owner takes no input yet";
            EXPECT_FALSE(IsWindowEnabled(host_));
            shown_->form.unload();
        },
        host_.handle());
    EXPECT_TRUE(IsWindowEnabled(host_));
}

TEST_F(Win32ModalForm, EndsWithTheProgramAndPassesThatOn) {
    const auto inner = make(Border::FixedDialog);
    run(
        [&] {
            widgets::Timer quitting(services_.peers, 1, [&] {
                quitting.disable();
                PostQuitMessage(7);
            });
            quitting.enable();
            inner->form.showModal();
        },
        host_.handle());
    EXPECT_FALSE(inner->form.isLoaded());
    EXPECT_FALSE(shown_->form.isLoaded());
    EXPECT_EQ(shown_->unloads, (std::vector<std::string>{"query: code", "unload"}));
    EXPECT_TRUE(IsWindowEnabled(host_));
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32ModalForm, EndsWithItsOwner) {
    auto owner = std::make_unique<HostsWindow>();
    const std::int32_t handle = owner->handle();
    run([&] { owner.reset(); }, handle);
    EXPECT_FALSE(shown_->form.isLoaded());
    EXPECT_TRUE(IsWindowEnabled(host_));
}

TEST_F(Win32ModalForm, EndsWhenItIsClosedByASentMessage) {
    run([&] { SendMessageW(windowOf(*shown_), WM_CLOSE, 0, 0); });
    EXPECT_EQ(shown_->unloads, (std::vector<std::string>{"query: user", "unload"}));
}

TEST_F(Win32ModalForm, StaysWhenAHandlerFails) {
    bool wasThere = false;
    int clicks = 0;
    shown_->form.add({{0, 0, 900, 360}, u"OK", true, true, [&] {
                          if (++clicks == 1) throw std::runtime_error("handler");
                          wasThere = IsWindowVisible(windowOf(*shown_)) && !IsWindowEnabled(host_);
                          shown_->form.unload();
                      }});
    run([&] {
        SendMessageW(button(0), BM_CLICK, 0, 0);
        SendMessageW(button(0), BM_CLICK, 0, 0);
    });
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(IsWindowEnabled(host_));
}

TEST_F(Win32ModalForm, TakesEnter) {
    addClosingButtons();
    run([] { key(VK_RETURN); });
    EXPECT_EQ(pressed_, (std::vector<std::string>{"one"}));
}

TEST_F(Win32ModalForm, TakesEscape) {
    addClosingButtons();
    run([] { key(VK_ESCAPE); });
    EXPECT_EQ(pressed_, (std::vector<std::string>{"two"}));
}

TEST_F(Win32ModalForm, TakesTabAndEnter) {
    addClosingButtons();
    run([this] {
        key(VK_TAB);
        takeMessagesUntil([this] { return GetFocus() == button(1); });
        key(VK_RETURN);
    });
    EXPECT_EQ(pressed_, (std::vector<std::string>{"two"}));
}

TEST_F(Win32ModalForm, TakesAltAndAMarkedLetter) {
    addClosingButtons();
    run([] { PostMessageW(GetFocus(), WM_SYSCHAR, L't', 1 << 29); });
    EXPECT_EQ(pressed_, (std::vector<std::string>{"two"}));
}

TEST_F(Win32ModalForm, LeavesEnterAndEscapeToAListWithoutButtons) {
    struct Owner : widgets::ListViewOwner {
        void keyPressed(widgets::KeyEvent& event) override { codes.push_back(event.code); }
        std::vector<int> codes;
    } owner;
    model_->setOwner(&owner);
    shown_->form.place(*model_, {0, 0, 3000, 1500});
    run([&] {
        EXPECT_EQ(GetFocus(), window_->list());
        key(VK_RETURN);
        key(VK_ESCAPE);
        PostMessageW(windowOf(*shown_), WM_CLOSE, 0, 0);
    });
    model_->setOwner(nullptr);
    EXPECT_EQ(owner.codes, (std::vector<int>{VK_RETURN, VK_ESCAPE}));
}

TEST_F(Win32ModalForm, EscapeWithoutACancelButtonDoesNothing) {
    run([&] {
        PostMessageW(windowOf(*shown_), WM_KEYDOWN, VK_ESCAPE, 1);
        PostMessageW(windowOf(*shown_), WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(shown_->unloads, (std::vector<std::string>{"query: user", "unload"}));
}

} // namespace
} // namespace cvlog::platform::win32
