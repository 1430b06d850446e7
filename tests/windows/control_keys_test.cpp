// Who gets a key while the control is active: the list, or the container.

#include "tests/windows/control_view_fixture.h"
#include "tests/windows/held_keys.h"

#include <commctrl.h>

namespace cvlog::tests {
namespace {

constexpr DWORD kShift = 1;
constexpr DWORD kControl = 2;
constexpr DWORD kAlt = 4;

class ControlKeys : public ControlViewTest {
protected:
    void SetUp() override {
        ControlViewTest::SetUp();
        ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
        active_ = as<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    }
    void TearDown() override {
        active_.Reset();
        ControlViewTest::TearDown();
    }
    MSG keyMessage(WPARAM key, UINT message = WM_KEYDOWN) {
        MSG made{};
        made.hwnd = list();
        made.message = message;
        made.wParam = key;
        made.lParam = 1;
        return made;
    }
    HRESULT translate(WPARAM key, UINT message = WM_KEYDOWN) {
        MSG made = keyMessage(key, message);
        return active_->TranslateAccelerator(&made);
    }
    LRESULT focusedRow() {
        return SendMessageW(list(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    }

    ComPtr<IOleInPlaceActiveObject> active_;
};

TEST_F(ControlKeys, TheListsKeysAreNotOfferedToTheContainer) {
    for (const WPARAM key : {VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN,
                             VK_SPACE, VK_DELETE, VK_ADD, VK_SUBTRACT, VK_F1})
        EXPECT_EQ(translate(key), S_OK) << key;
    {
        const HeldKeys control{VK_CONTROL};
        for (const WPARAM key : {int{'C'}, int{'E'}, VK_HOME}) EXPECT_EQ(translate(key), S_OK) << key;
    }
    const HeldKeys shift{VK_SHIFT};
    EXPECT_EQ(translate(VK_F10, WM_SYSKEYDOWN), S_OK);
    EXPECT_EQ(translate(VK_DOWN), S_OK);
    EXPECT_TRUE(site_.offered.empty());
}

TEST_F(ControlKeys, TheListActsOnItsKeys) {
    translate(VK_HOME);
    EXPECT_EQ(focusedRow(), 0);
    translate(VK_DOWN);
    EXPECT_EQ(focusedRow(), 1);
    translate(VK_END);
    EXPECT_EQ(focusedRow(), 2);
}

TEST_F(ControlKeys, OtherKeysAreOfferedWithWhatIsHeldDown) {
    EXPECT_EQ(translate(VK_TAB), S_FALSE);
    EXPECT_EQ(translate(VK_ESCAPE), S_FALSE);
    EXPECT_EQ(translate('C'), S_FALSE) << "without Ctrl a letter to look for";
    EXPECT_EQ(translate(VK_F10, WM_SYSKEYDOWN), S_FALSE) << "the menu bar";
    {
        const HeldKeys shift{VK_SHIFT};
        EXPECT_EQ(translate(VK_TAB), S_FALSE);
    }
    {
        const HeldKeys all{VK_SHIFT, VK_CONTROL, VK_MENU};
        EXPECT_EQ(translate(VK_DOWN, WM_SYSKEYDOWN), S_FALSE);
    }
    EXPECT_EQ(translate(VK_DELETE, WM_KEYUP), S_FALSE) << "a release goes its way";
    site_.translateAnswer = S_OK;
    EXPECT_EQ(translate(VK_F2), S_OK) << "the container used it";
    const std::vector<InPlaceSite::OfferedKey> expected = {
        {WM_KEYDOWN, VK_TAB, 0},      {WM_KEYDOWN, VK_ESCAPE, 0},
        {WM_KEYDOWN, 'C', 0},         {WM_SYSKEYDOWN, VK_F10, 0},
        {WM_KEYDOWN, VK_TAB, kShift}, {WM_SYSKEYDOWN, VK_DOWN, kShift | kControl | kAlt},
        {WM_KEYUP, VK_DELETE, 0},     {WM_KEYDOWN, VK_F2, 0},
    };
    EXPECT_EQ(site_.offered, expected);
}

TEST_F(ControlKeys, KeysOfOtherWindowsAreNotTheLists) {
    MSG other = keyMessage(VK_DOWN);
    other.hwnd = window_;
    EXPECT_EQ(active_->TranslateAccelerator(&other), S_FALSE);
    EXPECT_EQ(site_.offered.size(), 1U);
    EXPECT_EQ(active_->TranslateAccelerator(nullptr), E_POINTER);
}

TEST_F(ControlKeys, TabGoesThroughTheContainersFormInBothDirections) {
    const HWND first = CreateWindowExW(0, L"BUTTON", L"&First", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 200,
                                       80, 20, window_, nullptr, nullptr, nullptr);
    const HWND last = CreateWindowExW(0, L"BUTTON", L"&Last", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 90, 200, 80,
                                      20, window_, nullptr, nullptr, nullptr);
    SetWindowPos(GetParent(list()), first, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); // between the two
    const auto press = [this](HWND window, WPARAM key) {
        MSG message = keyMessage(key);
        message.hwnd = window;
        if (window != list() || active_->TranslateAccelerator(&message) != S_OK)
            IsDialogMessageW(window_, &message);
    };
    SetFocus(first);
    press(first, VK_TAB);
    EXPECT_EQ(GetFocus(), list());
    press(list(), VK_TAB);
    EXPECT_EQ(GetFocus(), last);
    const HeldKeys shift{VK_SHIFT};
    press(last, VK_TAB);
    EXPECT_EQ(GetFocus(), list());
    press(list(), VK_TAB);
    EXPECT_EQ(GetFocus(), first);
}

TEST_F(ControlKeys, TheControlHasNoMnemonicsAndKeepsEnter) {
    const auto control = as<IOleControl>(IID_IOleControl);
    CONTROLINFO info{};
    info.cb = sizeof info;
    info.cAccel = 99;
    EXPECT_EQ(control->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.cAccel, 0);
    EXPECT_EQ(info.hAccel, nullptr);
    EXPECT_EQ(info.dwFlags, static_cast<DWORD>(CTRLINFO_EATS_RETURN));
    EXPECT_EQ(control->GetControlInfo(nullptr), E_POINTER);
    SetFocus(window_);
    MSG any = keyMessage('L', WM_SYSCHAR);
    EXPECT_EQ(control->OnMnemonic(&any), S_OK);
    EXPECT_EQ(GetFocus(), window_) << "no key leads to a control without mnemonics";
}

} // namespace
} // namespace cvlog::tests
