// The log's menu in real windows: by the mouse and by keys, with help, and while its windows go.

#include "host/help_contexts.h"
#include "platform/win32/popup_menu.h"
#include "tests/windows/from_the_loop.h"
#include "tests/windows/log_window_fixture.h"
#include "view/list_set.h"
#include "view/log_menu.h"

#include <gtest/gtest.h>

#include <set>

namespace cvlog::platform::win32 {
namespace {

using tests::FromTheLoop;

HMENU menuOf(HWND window) {
    constexpr UINT kGetMenu = 0x01E1; // MN_GETHMENU
    return reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
}

/// What an item says and how it looks: "E&xpand default".
std::wstring itemOf(HMENU menu, UINT place) {
    wchar_t text[80] = L"";
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_STRING;
    info.dwTypeData = text;
    info.cch = 80;
    if (!GetMenuItemInfoW(menu, place, TRUE, &info)) return L"none";
    std::wstring item = (info.fType & MFT_SEPARATOR) ? L"|" : text;
    if (info.fState & MFS_DEFAULT) item += L" default";
    if (info.fState & MFS_CHECKED) item += L" checked";
    if (!(info.fType & MFT_SEPARATOR) && (info.fState & MFS_GRAYED)) item += L" grayed";
    return item;
}

std::vector<std::wstring> itemsOf(HMENU menu) {
    std::vector<std::wstring> items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) items.push_back(itemOf(menu, static_cast<UINT>(i)));
    return items;
}

class Win32LogMenu : public LogWindowTest {
protected:
    /// A real click at a place of the list's client area.
    void rightClickAt(POINT place) {
        ClientToScreen(window().list(), &place);
        SetCursorPos(place.x, place.y);
        takeMessages();
        for (const DWORD flags : {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP}) {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = flags;
            SendInput(1, &input, sizeof input);
        }
    }
    /// Opens the menu by the keys; `act` is asked again and again while it is open until it answers true.
    void withMenu(std::function<bool(HMENU)> act) {
        FromTheLoop inMenu([&] {
            const HWND open = menuWindow();
            return open && act(menuOf(open));
        });
        shiftF10();
        EXPECT_TRUE(takeMessagesUntil([&] { return inMenu.done() && !menuWindow(); }));
    }
};

TEST_F(Win32LogMenu, ShowsWhatTheModelSaysAtTheMouse) {
    addEntry(u"C:\\x.errors");
    RECT place{};
    std::vector<std::wstring> items;
    HMENU menu = nullptr;
    const HWND list = window().list();
    FromTheLoop inMenu([&] {
        const HWND open = menuWindow();
        if (!open) return false;
        GetWindowRect(open, &place);
        menu = menuOf(open);
        items = itemsOf(menu);
        typeKey(VK_ESCAPE);
        return true;
    });
    RECT row{};
    row.left = LVIR_LABEL;
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    POINT mouse{row.left + 20, (row.top + row.bottom) / 2};
    rightClickAt(mouse);
    ASSERT_TRUE(takeMessagesUntil([&] { return inMenu.done() && !menuWindow(); }));
    const std::vector<std::wstring> expected = {L"E&xpand                    ( Grey +) default",
                                                L"|",
                                                L"&Delete Records",
                                                L"Cle&ar Log",
                                                L"&Copy Records",
                                                L"|",
                                                L"&Report...",
                                                L"|",
                                                L"H&istory",
                                                L"Col&umns",
                                                L"&Hide"};
    EXPECT_EQ(items, expected);
    ClientToScreen(list, &mouse);
    EXPECT_LE(std::abs(place.left - mouse.x), 4);
    EXPECT_LE(std::abs(place.top - mouse.y), 4);
    EXPECT_FALSE(IsMenu(menu)) << "it is destroyed";
    EXPECT_EQ(control_->lvLog().rowCount(), 1);
}

TEST_F(Win32LogMenu, OpensByKeysAndLetsKeysChoose) {
    addEntry(u"C:\\x.errors");
    withMenu([](HMENU menu) {
        EXPECT_EQ(itemsOf(menu).front(), L"E&xpand                    ( Grey +) default");
        typeKey('A'); // Cle&ar Log
        return true;
    });
    EXPECT_EQ(control_->lvLog().rowCount(), 0);
}

TEST_F(Win32LogMenu, KeepsTheKeyThatChoseFromTheListWhenItIsReleased) {
    addEntry(u"C:\\x.errors");
    const auto errorsFile = [this] { return std::u16string(control_->lvLog().row(1).cellTag(1)); };
    withMenu([](HMENU) {
        typeKey(VK_UP); // to the last one
        typeKey(VK_RETURN);
        return true;
    });
    takeMessages();
    EXPECT_EQ(errorsFile(), u"C:\\x.errors") << "Enter opens an entry, but it was the menu's";
    typeKey(VK_RETURN);
    EXPECT_TRUE(takeMessagesUntil([&] { return errorsFile().empty(); })) << "opened: the file is gone";
}

TEST_F(Win32LogMenu, ChecksTheColumnsAndTurnsTheOneThatIsChosen) {
    control_->lvLog().setColumnWidth(2, 0);
    withMenu([](HMENU menu) {
        const HMENU columns = GetSubMenu(menu, GetMenuItemCount(menu) - 2);
        const std::vector<std::wstring> expected = {
            L"Date checked",   L"Elapsed",        L"Method checked", L"Entity Type checked",
            L"Object checked", L"Result checked", L"Message checked"};
        EXPECT_EQ(itemsOf(columns), expected);
        typeKey('U'); // Col&umns
        typeKey(VK_DOWN);
        typeKey(VK_RETURN);
        return true;
    });
    EXPECT_GT(control_->lvLog().column(2).width, 0);
}

TEST_F(Win32LogMenu, ShowsHelpOnceForF1) {
    int keys = 0;
    withMenu([&](HMENU) {
        if (keys++ < 3) return typeKey(VK_F1), false;
        typeKey(VK_ESCAPE);
        return true;
    });
    ASSERT_EQ(services_.helpViewer.shown.size(), 1U);
    EXPECT_EQ(services_.helpViewer.shown[0].context, host::kLogMenuHelp);
    EXPECT_EQ(services_.helpViewer.shown[0].file, u"C:\\Prod\\Calvetta.hlp");
}

TEST_F(Win32LogMenu, SurvivesItsControlAndItsWindowWhileItIsOpen) {
    addEntry(u"C:\\x.errors");
    const HWND list = window().list();
    withMenu([&](HMENU) {
        control_.reset();
        DestroyWindow(parent_);
        typeKey(VK_ESCAPE);
        return true;
    });
    takeMessages();
    EXPECT_FALSE(IsWindow(list));
    EXPECT_EQ(globals_.LogViews.count(), 0);
    control_ = std::make_shared<view::LogControl>(globals_);
}

TEST_F(Win32LogMenu, SurvivesItsControlAloneAndCarriesTheChoiceOut) {
    addEntry(u"C:\\x.errors");
    view::LogControl other(globals_);
    const HWND list = window().list();
    withMenu([&](HMENU) {
        control_.reset();
        typeKey('A');
        return true;
    });
    takeMessages();
    EXPECT_FALSE(IsWindow(list));
    EXPECT_EQ(other.lvLog().rowCount(), 0);
    control_ = std::make_shared<view::LogControl>(globals_);
}

TEST_F(Win32LogMenu, OnNoRowGraysWhatNeedsOne) {
    addEntry(u"C:\\x.errors");
    std::vector<std::wstring> items;
    FromTheLoop inMenu([&] {
        const HWND open = menuWindow();
        if (!open) return false;
        items = itemsOf(menuOf(open));
        typeKey(VK_ESCAPE);
        return true;
    });
    rightClickAt({400, 150}); // which takes the selection away
    ASSERT_TRUE(takeMessagesUntil([&] { return inMenu.done() && !menuWindow(); }));
    const std::vector<std::wstring> expected = {L"&Delete Records grayed",
                                                L"Cle&ar Log",
                                                L"&Copy Records grayed",
                                                L"|",
                                                L"&Report...",
                                                L"|",
                                                L"H&istory",
                                                L"Col&umns",
                                                L"&Hide"};
    EXPECT_EQ(items, expected);
}

TEST_F(Win32LogMenu, IsTheOnlyOneForAClick) {
    static int asked = 0;
    static WNDPROC original = nullptr;
    asked = 0;
    struct Above {
        static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_CONTEXTMENU) ++asked;
            return CallWindowProcW(original, window, message, wParam, lParam);
        }
    };
    original = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(parent_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Above::procedure)));
    SendMessageW(window().list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window().list()), -1);
    EXPECT_EQ(asked, 0) << "the windows above would show theirs as well";
}

class Win32PopupMenu : public testing::Test {
protected:
    static widgets::MenuItemRef item(const char16_t* caption) {
        return std::make_shared<widgets::MenuItem>(widgets::MenuItem{.name = caption, .caption = caption});
    }
    Services services_;
    widgets::MenuItemRef menu_ = item(u"menu");
};

TEST_F(Win32PopupMenu, WithoutAnOwnerBelongsToTheHiddenWindow) {
    menu_->items = {item(u"&One"), item(u"&Two")};
    widgets::MenuItemRef chosen;
    {
        const auto peer = services_.peers.makePopupMenu(*menu_, nullptr);
        FromTheLoop inMenu([] {
            if (!menuWindow()) return false;
            typeKey('T');
            return true;
        });
        chosen = peer->popUp(0);
    }
    EXPECT_EQ(chosen, menu_->items[1]);
    takeMessages();
}

TEST_F(Win32PopupMenu, WithNothingToShowIsNotShown) {
    menu_->items = {item(u"&One")};
    menu_->items[0]->visible = false;
    const auto peer = services_.peers.makePopupMenu(*menu_, nullptr);
    FromTheLoop inMenu([] {
        typeKey(VK_ESCAPE); // a system that shows an empty menu all the same
        return menuWindow() == nullptr;
    });
    EXPECT_EQ(peer->popUp(0), nullptr);
    takeMessages();
}

TEST_F(Win32PopupMenu, LeavesNoMenuWithTheSystem) {
    menu_->items = {item(u"&One"), item(u"Sub")};
    menu_->items[1]->items = {item(u"a"), item(u"b")};
    HMENU made = nullptr;
    HMENU below = nullptr;
    {
        const auto peer = services_.peers.makePopupMenu(*menu_, menu_->items[0].get());
        made = static_cast<PopupMenu&>(*peer).handle();
        below = GetSubMenu(made, 1);
        EXPECT_EQ(itemsOf(made), (std::vector<std::wstring>{L"&One default", L"Sub"}));
        EXPECT_EQ(itemsOf(below), (std::vector<std::wstring>{L"a", L"b"}));
    }
    EXPECT_FALSE(IsMenu(made));
    EXPECT_FALSE(IsMenu(below));
}

} // namespace
} // namespace cvlog::platform::win32
