#include "tests/windows/form_window_fixture.h"
#include "tests/windows/held_keys.h"
#include "tests/windows/live_objects.h"

#include <stdexcept>

namespace cvlog::platform::win32 {
namespace {

class Win32Form : public FormWindowFixture {};

TEST_F(Win32Form, HasTheFrameOfItsBorder) {
    const auto sizable = make();
    const auto dialog = make(Border::FixedDialog);
    const LONG_PTR frame = WS_CAPTION | WS_SYSMENU;
    const LONG_PTR sizing = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    EXPECT_EQ(GetWindowLongPtrW(windowOf(*sizable), GWL_STYLE) & (frame | sizing), frame | sizing);
    EXPECT_EQ(GetWindowLongPtrW(windowOf(*dialog), GWL_STYLE) & (frame | sizing), frame);
}

TEST_F(Win32Form, ShowsItsCaption) {
    const auto shown = make();
    shown->form.setCaption(u"\u4f5c\u696d\u30ed\u30b0");
    wchar_t caption[16] = L"";
    GetWindowTextW(windowOf(*shown), caption, 16);
    EXPECT_STREQ(caption, L"\u4f5c\u696d\u30ed\u30b0");
}

TEST_F(Win32Form, StaysInFrontOfItsOwner) {
    const HostsWindow host;
    const auto shown = make();
    shown->form.show(host.handle());
    EXPECT_EQ(GetWindow(windowOf(*shown), GW_OWNER), host);
    EXPECT_TRUE(IsWindowVisible(windowOf(*shown)));
    EXPECT_TRUE(IsWindowEnabled(host));
}

TEST_F(Win32Form, IsOwnedByTheTopLevelWindowRoundAChild) {
    const HostsWindow host;
    const HostsWindow middle(WS_CHILD | WS_VISIBLE, host);
    const HostsWindow child(WS_CHILD | WS_VISIBLE, middle);
    const auto shown = make();
    shown->form.show(child.handle());
    EXPECT_EQ(GetWindow(windowOf(*shown), GW_OWNER), host);
}

TEST_F(Win32Form, RefusesOwnersThatCannotOwnIt) {
    const HostsWindow unseen(WS_CHILD, HWND_MESSAGE);
    const auto shown = make();
    const auto behind = make();
    shown->form.show();
    behind->form.show(shown->form.windowHandle());
    for (const std::int32_t owner : {1, -1, unseen.handle(), handleOf(GetDesktopWindow()),
                                     shown->form.windowHandle(), behind->form.windowHandle()}) {
        EXPECT_THROW(shown->form.show(owner), std::runtime_error) << owner;
        EXPECT_EQ(GetWindow(windowOf(*shown), GW_OWNER), nullptr) << owner;
    }
}

TEST_F(Win32Form, GoesWithItsOwnerAndLeavesItsList) {
    const auto shown = make();
    const HWND list = window_->list();
    fill(3);
    {
        const HostsWindow host;
        shown->form.place(*model_, {0, 0, 3000, 1500});
        shown->form.show(host.handle());
        EXPECT_TRUE(IsWindowVisible(list));
    }
    EXPECT_FALSE(shown->form.isLoaded());
    EXPECT_EQ(shown->unloads, (std::vector<std::string>{"query: code", "unload"}));
    ASSERT_TRUE(IsWindow(list));
    EXPECT_FALSE(IsWindowVisible(list));
    EXPECT_EQ(GetAncestor(window_->frame(), GA_PARENT), services_.host.handle());
    expectInStep("the form's end");
}

TEST_F(Win32Form, ParksItsListBeforeItTellsThatItIsLost) {
    const auto shown = make();
    bool listWasSafe = false;
    shown->atUnload = [&] {
        takeMessages(); // other code may run here
        listWasSafe = GetAncestor(window_->frame(), GA_PARENT) == services_.host.handle();
    };
    shown->form.place(*model_, {0, 0, 3000, 1500});
    DestroyWindow(windowOf(*shown));
    EXPECT_TRUE(listWasSafe);
    EXPECT_FALSE(shown->form.isLoaded());
}

TEST_F(Win32Form, MayLoseItsWindowWhileItGoes) {
    auto host = std::make_unique<HostsWindow>();
    const auto shown = make();
    shown->form.place(*model_, {0, 0, 3000, 1500});
    shown->form.show(host->handle());
    const HWND window = windowOf(*shown);
    shown->atUnload = [&] { host.reset(); };
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(shown->form.isLoaded());
    EXPECT_EQ(shown->unloads, (std::vector<std::string>{"query: user", "unload"}));
    EXPECT_TRUE(IsWindow(window_->list()));
}

TEST_F(Win32Form, ClosesByAltF4) {
    const auto shown = make();
    addButtons(*shown);
    shown->form.show();
    takeMessages();
    PostMessageW(childrenOf(windowOf(*shown), L"BUTTON")[0], WM_SYSKEYDOWN, VK_F4, 1 << 29);
    takeMessages();
    EXPECT_EQ(shown->unloads, (std::vector<std::string>{"query: user", "unload"}));
}

TEST_F(Win32Form, IsHiddenAtOnceWhenItGoesInsideItsOwnMessage) {
    const auto shown = make();
    HWND window = windowOf(*shown);
    bool hidden = false;
    shown->form.add({{0, 0, 900, 360}, u"OK", true, true, [&] {
                         shown->form.unload();
                         hidden = IsWindow(window) && !IsWindowVisible(window);
                     }});
    shown->form.show();
    SendMessageW(childrenOf(window, L"BUTTON")[0], BM_CLICK, 0, 0);
    EXPECT_TRUE(hidden);
    EXPECT_TRUE(takeMessagesUntil([&] { return !IsWindow(window); }));
}

TEST_F(Win32Form, GoesWithTheHostWindowWhenNoMessageIsTakenAnyMore) {
    HWND window = nullptr;
    {
        Services services;
        const auto shown = RecordingForm::make(services.peers);
        window = windowOf(*shown);
        shown->form.show();
        SendMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Win32Form, GivesItsListTheFocusWhenItIsActivated) {
    const HostsWindow host;
    const auto shown = make();
    shown->form.place(*model_, {0, 0, 3000, 1500});
    shown->form.show();
    shown->form.bringToFront();
    EXPECT_TRUE(takeMessagesUntil([&] { return GetFocus() == window_->list(); }));
    SetActiveWindow(host);
    EXPECT_NE(GetFocus(), window_->list());
    shown->form.bringToFront();
    EXPECT_TRUE(takeMessagesUntil([&] { return GetFocus() == window_->list(); }));
}

TEST_F(Win32Form, GivesTheFocusBackToTheChildThatHadIt) {
    const HostsWindow host;
    const auto shown = make();
    addButtons(*shown);
    shown->form.show();
    takeMessages();
    const HWND second = childrenOf(windowOf(*shown), L"BUTTON")[1];
    SetFocus(second);
    SetActiveWindow(host);
    SetActiveWindow(windowOf(*shown));
    EXPECT_EQ(GetFocus(), second);
}

TEST_F(Win32Form, ComesToTheFrontAndOutOfTheTaskBar) {
    const HostsWindow host;
    const auto shown = make();
    shown->form.show();
    ShowWindow(windowOf(*shown), SW_MINIMIZE);
    shown->form.bringToFront();
    EXPECT_FALSE(IsIconic(windowOf(*shown)));
    EXPECT_TRUE(takeMessagesUntil([&] { return GetActiveWindow() == windowOf(*shown); }));
}

TEST_F(Win32Form, ComesOutOfTheTaskBarWithoutTheFocusWhenItIsToLeaveIt) {
    const HostsWindow host;
    const auto shown = make();
    shown->form.show();
    ShowWindow(windowOf(*shown), SW_MINIMIZE);
    SetForegroundWindow(host);
    SetFocus(host);
    shown->form.bringToFront(widgets::Activation::Leave);
    HWND behind = windowOf(*shown);
    while (behind && behind != host) behind = GetWindow(behind, GW_HWNDNEXT);
    EXPECT_EQ(behind, host) << "it is in front";
    takeMessages();
    EXPECT_FALSE(IsIconic(windowOf(*shown)));
    EXPECT_EQ(GetFocus(), host);
}

TEST_F(Win32Form, BreaksALabelIntoLinesAndLeavesItsAmpersands) {
    const auto shown = make(Border::FixedDialog);
    shown->form.add(widgets::Label{{0, 0, 900, 360}, u"You && I"});
    const HWND label = childrenOf(windowOf(*shown), L"STATIC").at(0);
    const LONG_PTR style = GetWindowLongPtrW(label, GWL_STYLE);
    EXPECT_EQ(style & SS_TYPEMASK, SS_LEFT); // the kind that breaks lines
    EXPECT_TRUE(style & SS_NOPREFIX);
    wchar_t text[16] = L"";
    GetWindowTextW(label, text, 16);
    EXPECT_STREQ(text, L"You && I");
}

TEST_F(Win32Form, ShowsAPictureAsLargeAsFitsInTheMiddleOfItsArea) {
    struct HalfSeen : ports::Picture {
        ports::Pixels render(int side) const override {
            rendered = side;
            return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), 0x80008000U)};
        }
        mutable int rendered = 0;
    };
    const auto picture = std::make_shared<HalfSeen>();
    const auto shown = make();
    shown->form.add(widgets::PictureBox{{150, 150, 900, 480}, picture});
    shown->form.show();
    takeMessages();
    RedrawWindow(windowOf(*shown), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const HWND box = childrenOf(windowOf(*shown), L"STATIC").at(0);
    const SIZE size = clientOf(box);
    EXPECT_EQ(picture->rendered, size.cy);

    const HDC screen = GetDC(box);
    const auto at = [&](LONG x) {
        return GetPixel(screen, static_cast<int>(x), static_cast<int>(size.cy / 2));
    };
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    const LONG left = (size.cx - size.cy) / 2;
    EXPECT_EQ(at(left - 1), face);
    EXPECT_EQ(at(left + size.cy), face);
    for (const LONG x : {left, left + size.cy - 1}) {
        EXPECT_NEAR(GetRValue(at(x)), GetRValue(face) / 2, 2);
        EXPECT_NEAR(GetGValue(at(x)), GetGValue(face) / 2 + 128, 2);
    }
    ReleaseDC(box, screen);
}

TEST_F(Win32Form, LeavesAPictureBoxWithoutAPictureEmpty) {
    const auto shown = make();
    shown->form.add(widgets::PictureBox{{150, 150, 900, 480}, nullptr});
    shown->form.show();
    takeMessages();
    const HWND box = childrenOf(windowOf(*shown), L"STATIC").at(0);
    const HDC screen = GetDC(box);
    EXPECT_EQ(GetPixel(screen, 5, 5), GetSysColor(COLOR_BTNFACE));
    ReleaseDC(box, screen);
}

/// Keys in a message loop that knows nothing of forms.
class Win32FormKeys : public FormWindowFixture {
protected:
    Win32FormKeys() {
        addButtons(*shown_);
        shown_->form.show();
        shown_->form.bringToFront();
        takeMessages();
        one_ = childrenOf(windowOf(*shown_), L"BUTTON")[0];
        two_ = childrenOf(windowOf(*shown_), L"BUTTON")[1];
        SetFocus(one_);
    }
    void TearDown() override {
        shown_.reset(); // before the list on it
        FormWindowFixture::TearDown();
    }

    std::shared_ptr<RecordingForm> shown_ = make();
    HWND one_ = nullptr;
    HWND two_ = nullptr;
};

TEST_F(Win32FormKeys, TabGoesThroughTheChildrenInTheirOrder) {
    shown_->form.place(*model_, {0, 1200, 3000, 1500});
    post(one_, WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), two_);
    post(two_, WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), window_->list());
}

TEST_F(Win32FormKeys, ShiftAndTabGoBack) {
    SetFocus(two_);
    BYTE keys[256] = {};
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    SendMessageW(two_, WM_KEYDOWN, VK_TAB, 1);
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    EXPECT_EQ(GetFocus(), one_);
}

TEST_F(Win32FormKeys, TabLeadsOnFromAListInBothDirections) {
    shown_->form.place(*model_, {0, 1200, 3000, 1500});
    SetFocus(window_->list());
    post(window_->list(), WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), one_) << "the last one leads to the first";
    SetFocus(window_->list());
    {
        const tests::HeldKeys shift{VK_SHIFT};
        SendMessageW(window_->list(), WM_KEYDOWN, VK_TAB, 1);
    }
    EXPECT_EQ(GetFocus(), two_);
    SetFocus(window_->list());
    const tests::HeldKeys control{VK_CONTROL};
    SendMessageW(window_->list(), WM_KEYDOWN, VK_TAB, 1);
    EXPECT_EQ(GetFocus(), window_->list()) << "Ctrl+Tab is something else";
}

TEST_F(Win32FormKeys, TabStaysInAListWhoseOwnerTakesItAndInOneThatIsTakenOff) {
    struct Taker : widgets::ListViewOwner {
        void keyPressed(widgets::KeyEvent& event) override { event.code = 0; }
    } taker;
    shown_->form.place(*model_, {0, 1200, 3000, 1500});
    SetFocus(window_->list());
    model_->setOwner(&taker);
    post(window_->list(), WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), window_->list());
    model_->setOwner(nullptr);
    shown_->form.takeOffList();
    const HWND other = showInWindow();
    post(window_->list(), WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), window_->list());
    EXPECT_TRUE(IsChild(other, window_->list()));
}

TEST_F(Win32FormKeys, EnterPressesTheButtonWithTheFocus) {
    post(one_, WM_KEYDOWN, VK_RETURN);
    SetFocus(two_);
    post(two_, WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(pressed_, (std::vector<std::string>{"one", "two"}));
}

TEST_F(Win32FormKeys, EnterPressesTheDefaultButtonWhereNoButtonHasTheFocus) {
    shown_->form.place(*model_, {0, 1200, 3000, 1500});
    SetFocus(window_->list());
    post(windowOf(*shown_), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(pressed_, (std::vector<std::string>{"one"}));
}

TEST_F(Win32FormKeys, EscapePressesTheCancelButton) {
    post(one_, WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(pressed_, (std::vector<std::string>{"two"}));
}

TEST_F(Win32FormKeys, AltAndTheMarkedLetterPressTheirButton) {
    PostMessageW(one_, WM_SYSCHAR, L't', 1 << 29);
    takeMessages();
    EXPECT_EQ(pressed_, (std::vector<std::string>{"two"}));
}

TEST_F(Win32FormKeys, TheButtonThatEnterPressesIsFramed) {
    const auto isFramed = [](HWND button) {
        return (GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    EXPECT_TRUE(isFramed(one_));
    SetFocus(two_);
    EXPECT_TRUE(isFramed(two_));
    EXPECT_FALSE(isFramed(one_));
    shown_->form.place(*model_, {0, 1200, 3000, 1500});
    SetFocus(window_->list());
    EXPECT_TRUE(isFramed(one_));
    EXPECT_FALSE(isFramed(two_));
}

TEST_F(Win32FormKeys, MayEndTheForm) {
    shown_->form.add({{0, 1200, 900, 360}, u"T&hree", false, false, [this] { shown_.reset(); }});
    const HWND three = childrenOf(windowOf(*shown_), L"BUTTON")[2];
    SetFocus(three);
    post(three, WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(shown_, nullptr);
    EXPECT_TRUE(takeMessagesUntil([&] { return !IsWindow(three); }));
}

TEST_F(Win32Form, IsCountedWithItsObjects) {
    const int graphics = liveGraphicsObjects();
    const int windows = liveWindows();
    const auto shown = make();
    addButtons(*shown);
    EXPECT_GT(liveGraphicsObjects(), graphics);
    EXPECT_EQ(liveWindows(), windows + 3);
}

TEST_F(Win32Form, FiveHundredLeaveNothingBehind) {
    struct Filled : ports::Picture {
        ports::Pixels render(int side) const override {
            return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), 0xFF00FF00U)};
        }
    };
    const auto rounds = [this](int count) {
        for (int i = 0; i < count; ++i) {
            const auto shown = make(i % 2 ? Border::Sizable : Border::FixedDialog);
            addButtons(*shown);
            shown->form.add(widgets::Label{{0, 0, 900, 360}, u"Label"});
            shown->form.add(widgets::PictureBox{{0, 0, 480, 480}, std::make_shared<Filled>()});
            shown->form.place(*model_, {0, 0, 3000, 1500});
            shown->form.show();
            takeMessages();
            SendMessageW(windowOf(*shown), WM_CLOSE, 0, 0);
            takeMessages();
        }
    };
    rounds(5);
    const auto handles = [] {
        DWORD number = 0;
        GetProcessHandleCount(GetCurrentProcess(), &number);
        return number;
    };
    const int graphics = liveGraphicsObjects();
    const int windows = liveWindows();
    const DWORD system = handles();
    rounds(500);
    EXPECT_LE(liveGraphicsObjects(), graphics + 5);
    EXPECT_EQ(liveWindows(), windows);
    EXPECT_LE(handles(), system + 5);
}

} // namespace
} // namespace cvlog::platform::win32
