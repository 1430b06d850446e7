// The model and its owner learn what the user does in the list's window.

#include "platform/win32/screen_units.h"
#include "tests/windows/held_keys.h"
#include "tests/windows/list_view_peer_fixture.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

using tests::HeldKeys;

class Win32ListViewInput : public ListViewPeerFixture {};

/// Writes down what it hears; `during` runs inside every handler.
struct RecordingOwner : widgets::ListViewOwner {
    std::vector<std::string> heard;
    std::function<void()> during;
    bool consumeKeys = false;

    void note(std::string what) {
        heard.push_back(std::move(what));
        if (auto action = during) action();
    }
    void columnClicked(int column) override { note("column " + std::to_string(column)); }
    void doubleClicked() override { note("double"); }
    void keyPressed(widgets::KeyEvent& event) override {
        const std::string what = "down " + std::to_string(event.code);
        if (consumeKeys) event.code = 0;
        note(what);
    }
    void keyReleased(widgets::KeyEvent& event) override {
        const std::string what = "up " + std::to_string(event.code);
        if (consumeKeys) event.code = 0;
        note(what);
    }
    void mouseReleased(widgets::MouseButton button) override {
        note("mouse " + std::to_string(static_cast<int>(button)));
    }
    void gotFocus() override { note("focus"); }
    void lostFocus() override { note("blur"); }
};

TEST_F(Win32ListViewInput, TellsTheModelOfKeyboardSelection) {
    fill(40);
    showInWindow();
    model_->focusRow(1);
    key(VK_DOWN);
    key(VK_DOWN);
    expectInStep("moving down");
    EXPECT_EQ(model_->selectedRow(), 3);
    key(VK_END);
    expectInStep("moving to the end");
    EXPECT_EQ(model_->selectedRow(), 40);
}

TEST_F(Win32ListViewInput, TellsTheModelOfARangeThatKeysSelect) {
    fill(8);
    showInWindow();
    model_->focusRow(1);
    key(VK_DOWN);
    {
        const HeldKeys shift({VK_SHIFT});
        key(VK_DOWN);
        key(VK_DOWN);
    }
    expectInStep("widening the selection");
    EXPECT_EQ(model_->selectedCount(), 3);
    EXPECT_TRUE(model_->isSelected(2) && model_->isSelected(3) && model_->isSelected(4));
}

TEST_F(Win32ListViewInput, TellsTheModelOfSeveralRowsThatTheMouseSelects) {
    fill(8);
    showInWindow();
    const auto click = [this](int position, WPARAM held) {
        PostMessageW(window_->list(), WM_LBUTTONDOWN, MK_LBUTTON | held, middleOfRow(position));
        PostMessageW(window_->list(), WM_LBUTTONUP, held, middleOfRow(position));
        takeMessages();
    };
    click(2, 0);
    {
        const HeldKeys ctrl({VK_CONTROL});
        click(5, MK_CONTROL);
    }
    expectInStep("adding a row");
    EXPECT_EQ(model_->selectedCount(), 2);
    EXPECT_TRUE(model_->isSelected(2) && model_->isSelected(5));
    {
        const HeldKeys shift({VK_SHIFT});
        click(7, MK_SHIFT);
    }
    expectInStep("selecting a range");
    EXPECT_EQ(model_->selectedCount(), 3);
    EXPECT_TRUE(model_->isSelected(5) && model_->isSelected(7));
}

TEST_F(Win32ListViewInput, TellsTheModelOfMouseSelection) {
    fill(8);
    showInWindow();
    for (const int position : {2, 5}) {
        PostMessageW(window_->list(), WM_LBUTTONDOWN, MK_LBUTTON, middleOfRow(position));
        PostMessageW(window_->list(), WM_LBUTTONUP, 0, middleOfRow(position));
        takeMessages();
        expectInStep("clicking");
        EXPECT_EQ(model_->selectedRow(), position);
        EXPECT_EQ(model_->selectedCount(), 1);
    }
}

TEST_F(Win32ListViewInput, ChangesInsideABatchReachTheWindowBeforeTheUserActs) {
    fill(10);
    showInWindow();
    model_->focusRow(3);
    const widgets::RowId below = model_->idAt(4);
    const widgets::ListView::Batch batch(*model_);
    model_->insert(1, row(50));
    key(VK_DOWN);
    EXPECT_EQ(model_->idAt(model_->selectedRow()), below);
}

TEST_F(Win32ListViewInput, ReportsEachClickOnce) {
    RecordingOwner owner;
    fill(8);
    showInWindow();
    model_->setOwner(&owner);
    const struct {
        UINT down, up;
        WPARAM held;
        const char* heard;
    } cases[] = {{WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON, "mouse 0"},
                 {WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON, "mouse 1"},
                 {WM_MBUTTONDOWN, WM_MBUTTONUP, MK_MBUTTON, "mouse 2"}};
    for (const auto& click : cases) {
        owner.heard.clear();
        PostMessageW(window_->list(), click.down, click.held, middleOfRow(2));
        PostMessageW(window_->list(), click.up, 0, middleOfRow(2));
        takeMessages();
        EXPECT_EQ(owner.heard, std::vector<std::string>{click.heard});
    }
    model_->setOwner(nullptr);
}

TEST_F(Win32ListViewInput, ReportsEachClickOfARealMouseOnce) {
    RecordingOwner owner;
    fill(8);
    showInWindow();
    model_->repaint();
    model_->setOwner(&owner);
    const auto press = [](DWORD flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        SendInput(1, &input, sizeof input);
    };
    const struct {
        DWORD down, up;
        const char* heard;
    } cases[] = {{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, "mouse 0"},
                 {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, "mouse 1"},
                 {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, "mouse 2"}};
    int position = 2;
    for (const auto& click : cases) {
        owner.heard.clear();
        const LPARAM spot = middleOfRow(position++);
        POINT point{LOWORD(spot), HIWORD(spot)};
        ClientToScreen(window_->list(), &point);
        SetCursorPos(point.x, point.y);
        takeMessages();
        press(click.down);
        press(click.up); // at once: the list may wait for it in a loop of its own
        takeMessages();
        EXPECT_EQ(owner.heard, std::vector<std::string>{click.heard});
        expectInStep(click.heard);
    }
    EXPECT_EQ(model_->selectedRow(), 3); // of the right button
    model_->setOwner(nullptr);
}

TEST_F(Win32ListViewInput, ForwardsKeysAndKeepsConsumedOnesFromTheList) {
    RecordingOwner owner;
    fill(10);
    showInWindow();
    model_->focusRow(1);
    model_->setOwner(&owner);
    key(VK_DOWN);
    EXPECT_EQ(owner.heard, (std::vector<std::string>{"down 40", "up 40"}));
    EXPECT_EQ(model_->selectedRow(), 2);
    owner.consumeKeys = true;
    key(VK_DOWN);
    EXPECT_EQ(model_->selectedRow(), 2);
    owner.heard.clear();
    PostMessageW(window_->list(), WM_SYSKEYDOWN, VK_F10, 1);
    takeMessages();
    EXPECT_EQ(owner.heard, std::vector<std::string>{"down 121"});
    model_->setOwner(nullptr);
}

TEST_F(Win32ListViewInput, ForwardsFocusDoubleClickAndColumnClick) {
    RecordingOwner owner;
    fill(3);
    showInWindow();
    model_->setOwner(&owner);
    SetFocus(parent_);
    model_->takeFocus();
    EXPECT_EQ(owner.heard, (std::vector<std::string>{"blur", "focus"}));
    owner.heard.clear();
    PostMessageW(window_->list(), WM_LBUTTONDBLCLK, MK_LBUTTON, middleOfRow(1));
    takeMessages();
    EXPECT_EQ(std::count(owner.heard.begin(), owner.heard.end(), "double"), 1);
    owner.heard.clear();
    PostMessageW(header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(130, 5));
    PostMessageW(header(), WM_LBUTTONUP, 0, MAKELPARAM(130, 5));
    takeMessages();
    EXPECT_EQ(owner.heard, std::vector<std::string>{"column 2"});
    model_->setOwner(nullptr);
}

TEST_F(Win32ListViewInput, SurvivesAHandlerThatThrows) {
    RecordingOwner owner;
    fill(3);
    showInWindow();
    owner.during = [] { throw std::runtime_error("a handler's failure"); };
    model_->setOwner(&owner);
    key(VK_DOWN);
    EXPECT_EQ(owner.heard.size(), 2U);
    model_->setOwner(nullptr);
    expectInStep("the failures");
}

TEST_F(Win32ListViewInput, SurvivesAHandlerThatDestroysTheList) {
    const auto destroyOn = [this](auto act) {
        RecordingOwner owner;
        auto dying = makeModel();
        auto* window = static_cast<ListViewWindow*>(dying->peer());
        dying->append(row(1));
        window->moveTo(parent_, {0, 0, 400, 300});
        const HWND list = window->list();
        SetFocus(list);
        dying->setOwner(&owner);
        owner.during = [&] {
            owner.during = nullptr;
            dying->setOwner(nullptr);
            dying.reset();
        };
        act(list);
        takeMessages();
        EXPECT_EQ(owner.heard.size(), 1U);
        EXPECT_FALSE(dying);
        EXPECT_FALSE(IsWindow(list));
        dying.reset();
    };
    showInWindow();
    const LPARAM spot = MAKELPARAM(20, 30);
    destroyOn([](HWND list) { SendMessageW(list, WM_KEYDOWN, VK_DOWN, 1); });
    destroyOn([](HWND list) { SendMessageW(list, WM_KEYUP, VK_DOWN, 1); });
    destroyOn([spot](HWND list) {
        PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, spot);
        PostMessageW(list, WM_LBUTTONUP, 0, spot);
    });
    destroyOn([spot](HWND list) {
        PostMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, spot);
        PostMessageW(list, WM_RBUTTONUP, 0, spot);
    });
    destroyOn([spot](HWND list) { PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, spot); });
    destroyOn([](HWND) { SetFocus(nullptr); });
    destroyOn([](HWND list) {
        const HWND head = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
        PostMessageW(head, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 5));
        PostMessageW(head, WM_LBUTTONUP, 0, MAKELPARAM(30, 5));
    });
}

TEST_F(Win32ListViewInput, LearnsWidthsAndOrderFromTheHeader) {
    showInWindow();
    const int dpi = windowDpi(window_->list());
    const int edge = toPixels(1500, dpi);
    const auto drag = [this](int from, int to) {
        PostMessageW(header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
        for (const int step : {1, 2, 3, 4, 5})
            PostMessageW(header(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from + (to - from) * step / 5, 5));
        PostMessageW(header(), WM_LBUTTONUP, 0, MAKELPARAM(to, 5));
        takeMessages();
    };
    drag(edge, edge + 40);
    const int width = static_cast<int>(send(LVM_GETCOLUMNWIDTH, 0));
    EXPECT_NE(width, edge);
    EXPECT_FLOAT_EQ(model_->column(1).width, toTwips(width, dpi));

    drag(20, width + toPixels(3000, dpi) - 10);
    std::vector<int> order(3);
    send(LVM_GETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(order.data()));
    EXPECT_NE(order, (std::vector<int>{0, 1, 2}));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(model_->column(order[static_cast<std::size_t>(i)] + 1).position, i + 1);
}

TEST_F(Win32ListViewInput, HiddenColumnsCannotBeDraggedOpen) {
    NMHEADERW request{};
    request.hdr = {header(), 0, static_cast<UINT>(HDN_BEGINTRACKW)};
    request.iItem = 2;
    EXPECT_TRUE(send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request)));
    request.iItem = 1;
    EXPECT_FALSE(send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request)));
}

TEST_F(Win32ListViewInput, ShowsTheToolTipOfTheCellUnderTheMouse) {
    model_->append(widgets::makeRow({u"a", u"", u"", {{u"Text", u"b", u"", u"", u"tip of b"}}}));
    showInWindow();
    const auto tipAt = [this](int x) {
        POINT point{x, HIWORD(middleOfRow(1))};
        ClientToScreen(window_->list(), &point);
        SetCursorPos(point.x, point.y);
        wchar_t text[20] = L"own";
        NMLVGETINFOTIPW question{};
        question.hdr = {window_->list(), 0, static_cast<UINT>(LVN_GETINFOTIPW)};
        question.pszText = text;
        question.cchTextMax = 20;
        SendMessageW(window_->frame(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&question));
        return std::wstring(text);
    };
    EXPECT_EQ(tipAt(20), L"own");
    EXPECT_EQ(tipAt(150), L"tip of b");
}

TEST_F(Win32ListViewInput, FindsRowsByTyping) {
    for (const auto* text : {u"apple", u"Banana", u"blue", u"cherry"})
        model_->append(widgets::makeRow({text, u"", u"", {}}));
    const auto find = [this](const wchar_t* typed, int from) {
        LVFINDINFOW wanted{};
        wanted.flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
        wanted.psz = typed;
        return static_cast<int>(
            send(LVM_FINDITEMW, static_cast<WPARAM>(from), reinterpret_cast<LPARAM>(&wanted)));
    };
    EXPECT_EQ(find(L"b", -1), 1);
    EXPECT_EQ(find(L"BL", -1), 2);
    EXPECT_EQ(find(L"a", 2), 0);
    EXPECT_EQ(find(L"x", -1), -1);
}

} // namespace
} // namespace cvlog::platform::win32
