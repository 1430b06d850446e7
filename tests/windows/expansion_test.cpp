// Entries opened into the messages of real files, with the real strip over a real list and real keys.

#include "details/expansion.h"
#include "tests/support/fake_window.h"
#include "tests/windows/expansion_fixture.h"

namespace cvlog::platform::win32 {
namespace {

using tests::FromTheLoop;

/// Another window of the program, which notes whether it was ever activated.
class Bystander {
public:
    Bystander() {
        activated() = 0;
        WNDCLASSW description{};
        description.lpfnWndProc = procedure;
        description.lpszClassName = kClass;
        description.hInstance = GetModuleHandleW(nullptr);
        RegisterClassW(&description);
        window_ = CreateWindowExW(0, kClass, L"bystander", WS_POPUP | WS_VISIBLE, 700, 40, 100, 100, nullptr,
                                  nullptr, description.hInstance, nullptr);
    }
    ~Bystander() {
        DestroyWindow(window_);
        UnregisterClassW(kClass, GetModuleHandleW(nullptr));
    }
    Bystander(const Bystander&) = delete;
    Bystander& operator=(const Bystander&) = delete;

    static int& activated() {
        static int times;
        return times;
    }

private:
    static constexpr const wchar_t* kClass = L"CVLogTestBystander";

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) ++activated();
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window_;
};

class Win32Expansion : public ExpansionFixture {
protected:
    /// The log's window is the host's, which takes no input while an entry is opened.
    void freezeParent() {
        globals_.placement.Parent = host_.workspace;
        globals_.options.DockedOption = true;
        window_.window->set(u"Enabled", true).set(u"MousePointer", std::int16_t{0});
        window_.window->before(u"Enabled", [this] { EnableWindow(parent_, !IsWindowEnabled(parent_)); });
        const auto tools = std::make_shared<tests::ScriptCollection>("Tools", calls_);
        tools->add(u"", window_.tool);
        host_.workspace->set(u"ActiveToolList", tools);
    }

    tests::FakeWindow window_{calls_};
};

TEST_F(Win32Expansion, ShowsEveryLineAndTheStripOverTheList) {
    writeLines(kLong);
    addOpenable();
    RECT place{};
    bool repainted = false;
    FromTheLoop meanwhile([&] {
        if (!strip() || !IsWindowVisible(strip())) return false;
        GetWindowRect(strip(), &place);
        repainted = SendMessageW(window().list(), LVM_GETITEMCOUNT, 0, 0) >= 50;
        return true;
    });
    expand();
    EXPECT_TRUE(meanwhile.done()) << "the strip was there";
    EXPECT_TRUE(repainted);
    POINT origin{0, 0};
    ClientToScreen(window().list(), &origin);
    EXPECT_EQ(place.left, origin.x);
    EXPECT_EQ(place.top, origin.y);
    EXPECT_EQ(list().rowCount(), 1 + kLong);
    EXPECT_EQ(SendMessageW(window().list(), LVM_GETITEMCOUNT, 0, 0), 1 + kLong);
    EXPECT_EQ(list().row(1 + kLong).cellText(6), u"line 5000");
}

TEST_F(Win32Expansion, IsStoppedByEnter) {
    writeLines(kLong);
    addOpenable();
    FromTheLoop meanwhile([&] {
        if (!strip() || !IsWindowVisible(strip())) return false;
        typeKey(VK_RETURN);
        return true;
    });
    expand();
    EXPECT_GE(list().rowCount(), 51);
    EXPECT_LT(list().rowCount(), kLong);
    takeMessages();
    EXPECT_GE(list().rowCount(), 51) << "the key was the strip's: it opens and closes nothing";
}

TEST_F(Win32Expansion, EndsWithTheFocusInTheListAndNoOtherWindowComesToTheFront) {
    writeLines(kLong);
    addOpenable();
    freezeParent();
    const Bystander bystander;
    SetForegroundWindow(parent_);
    list().takeFocus();
    takeMessages();
    sink_->ids.clear();
    Bystander::activated() = 0;
    bool frozen = false;
    FromTheLoop meanwhile([&] {
        if (!strip() || !IsWindowVisible(strip())) return false;
        frozen = !IsWindowEnabled(parent_);
        return true;
    });
    expand();
    takeMessages();
    EXPECT_TRUE(frozen);
    EXPECT_TRUE(IsWindowEnabled(parent_));
    EXPECT_EQ(GetFocus(), window().list());
    EXPECT_EQ(GetActiveWindow(), parent_);
    EXPECT_EQ(Bystander::activated(), 0);
    EXPECT_EQ(countOf(kGotFocus), 0) << "it had the focus before";
}

TEST_F(Win32Expansion, TellsOfTheFocusThatTheListDidNotHave) {
    writeLines(3);
    addOpenable();
    SetFocus(parent_);
    takeMessages();
    sink_->ids.clear();
    expand();
    EXPECT_EQ(GetFocus(), window().list());
    EXPECT_EQ(countOf(kGotFocus), 1);
}

TEST_F(Win32Expansion, EndsWhenTheWindowOfItsListIsDestroyed) {
    writeLines(kLong);
    addOpenable();
    FromTheLoop meanwhile([&] {
        if (!strip()) return false;
        DestroyWindow(parent_);
        return true;
    });
    expand();
    EXPECT_TRUE(meanwhile.done());
}

TEST_F(Win32Expansion, EndsWhenItsControlIsDestroyed) {
    writeLines(kLong);
    addOpenable();
    FromTheLoop meanwhile([&] {
        if (!strip()) return false;
        control_.reset();
        return true;
    });
    expand();
    EXPECT_EQ(globals_.LogViews.count(), 0);
    control_ = std::make_shared<view::LogControl>(globals_);
}

TEST_F(Win32Expansion, EndsWithTheProgramAndKeepsTheMessageThatEndsIt) {
    writeLines(kLong);
    addOpenable();
    FromTheLoop meanwhile([&] {
        if (!strip()) return false;
        PostQuitMessage(7);
        return true;
    });
    expand();
    EXPECT_LT(list().rowCount(), kLong);
    MSG message{};
    bool quit = false;
    while (!quit && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) quit = message.message == WM_QUIT;
    EXPECT_TRUE(quit);
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32Expansion, IsClosedAgainByADoubleClick) {
    writeLines(200);
    addOpenable();
    expand();
    list().selectAll(false);
    list().select(1, true);
    list().focusRow(1);
    list().scrollTo(1);
    takeMessages();
    RECT row{};
    row.left = LVIR_LABEL;
    SendMessageW(window().list(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    const LPARAM spot = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
    PostMessageW(window().list(), WM_LBUTTONDBLCLK, MK_LBUTTON, spot);
    PostMessageW(window().list(), WM_LBUTTONUP, 0, spot);
    takeMessages();
    EXPECT_EQ(list().rowCount(), 1);
}

} // namespace
} // namespace cvlog::platform::win32
