// The floating log in a real window: how its user closes it, where it comes back, and what goes before it.

#include "tests/windows/live_objects.h"
#include "tests/windows/placement_fixture.h"

#include <set>

namespace cvlog::tests {
namespace {

class FloatingWindow : public PlacementTest {
protected:
    static RECT placeOf(HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    std::set<std::wstring> storedKeys() const {
        std::set<std::wstring> keys;
        HKEY section = nullptr;
        RegOpenKeyExW(HKEY_CURRENT_USER, (settingsPath() + L"\\Activity Log").c_str(), 0, KEY_READ, &section);
        wchar_t name[64];
        DWORD size = 64;
        for (DWORD i = 0;
             RegEnumValueW(section, i, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
             ++i, size = 64)
            keys.insert(name);
        RegCloseKey(section);
        return keys;
    }
};

TEST_F(FloatingWindow, ClosedByItsCloseBoxIsAWishWithAContainer) {
    floats();
    const HWND window = floating();
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(takeMessagesUntil([&] { return !IsWindow(window); }));
    EXPECT_FALSE(is(L"Visible"));
    EXPECT_EQ(host_->focused, 1);
    call(L"CloseDB");
    EXPECT_EQ(stored(L"Visible"), L"0");
}

TEST_F(FloatingWindow, ClosedByItsCloseBoxLeavesTheWishWithoutAContainer) {
    put(L"Visible", true);
    PostMessageW(floating(), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(takeMessagesUntil([&] { return floating() == nullptr; }));
    EXPECT_FALSE(is(L"Visible"));
    call(L"CloseDB");
    EXPECT_EQ(stored(L"Visible"), L"1");
}

TEST_F(FloatingWindow, ClosesByAltAndF4InItsList) {
    floats();
    const HWND window = floating();
    call(L"SetFocus");
    ASSERT_TRUE(takeMessagesUntil([&] { return GetFocus() == listIn(window); }));
    PostMessageW(GetFocus(), WM_SYSKEYDOWN, VK_F4, 1 | (1 << 29));
    EXPECT_TRUE(takeMessagesUntil([&] { return !IsWindow(window); }));
    EXPECT_FALSE(is(L"Visible"));
    EXPECT_EQ(GetFocus(), host_->handle()) << "given back";
}

TEST_F(FloatingWindow, ComesBackWhereItsUserLeftIt) {
    floats();
    ASSERT_TRUE(MoveWindow(floating(), 120, 80, 500, 300, TRUE));
    put(L"Visible", false);
    EXPECT_EQ(stored(L"State"), L"0");
    EXPECT_EQ(storedKeys(), (std::set<std::wstring>{L"Left", L"Top", L"Width", L"Height", L"State"}));
    put(L"Visible", true);
    const RECT place = placeOf(floating());
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.top, 80);
    EXPECT_EQ(place.right, 620);
    EXPECT_EQ(place.bottom, 380);
    EXPECT_TRUE(is(L"Visible"));
    call(L"CloseDB");
    EXPECT_TRUE(storedKeys().contains(L"Visible"));
    EXPECT_EQ(stored(L"Left"), std::to_wstring(120 * 1440 / static_cast<int>(GetDpiForSystem())));
}

TEST_F(FloatingWindow, ComesBackMaximisedAndGoesBackToItsPlace) {
    floats();
    ASSERT_TRUE(MoveWindow(floating(), 120, 80, 500, 300, TRUE));
    ShowWindow(floating(), SW_SHOWMAXIMIZED);
    put(L"Visible", false);
    EXPECT_EQ(stored(L"State"), L"2");
    put(L"Visible", true);
    EXPECT_TRUE(IsZoomed(floating()));
    ShowWindow(floating(), SW_RESTORE);
    const RECT place = placeOf(floating());
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.bottom, 380);
}

TEST_F(FloatingWindow, IsFilledByItsListAtEverySize) {
    floats();
    for (const int side : {300, 500}) {
        MoveWindow(floating(), 50, 50, side, side, TRUE);
        RECT client{};
        GetClientRect(floating(), &client);
        const RECT list = placeOf(listIn(floating()));
        EXPECT_EQ(list.right - list.left, client.right);
        EXPECT_EQ(list.bottom - list.top, client.bottom);
    }
}

TEST_F(FloatingWindow, GoesWithTheHostsWindow) {
    floats();
    const HWND window = floating();
    ASSERT_EQ(GetWindow(window, GW_OWNER), host_->handle());
    DestroyWindow(host_->handle());
    takeMessages();
    EXPECT_FALSE(IsWindow(window));
    putParent(nullptr);
    EXPECT_FALSE(is(L"Visible"));
    put(L"Visible", true); // of no window now
    ASSERT_NE(floating(), nullptr);
    EXPECT_EQ(GetWindow(floating(), GW_OWNER), nullptr);
}

TEST_F(FloatingWindow, GoesWhenTheDatabaseIsClosed) {
    floats();
    const HWND window = floating();
    call(L"CloseDB");
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(is(L"Visible"));
    takeMessages();
    EXPECT_EQ(stored(L"Visible"), L"1") << "closing by the program is no wish";
    open();
    EXPECT_EQ(floating(), nullptr) << "until it is asked for";
}

TEST_F(FloatingWindow, LeavesNothingBehind) {
    putParent(host_->window());
    const auto rounds = [&](int count) {
        for (int i = 0; i < count; ++i) {
            put(L"Docked", true);
            put(L"Docked", false);
            PostMessageW(floating(), WM_SYSCOMMAND, SC_CLOSE, 0);
            EXPECT_TRUE(takeMessagesUntil([&] { return floating() == nullptr; }));
            put(L"Visible", true);
        }
        takeMessages();
    };
    rounds(3); // caches of the system fill
    const int windows = platform::win32::liveWindows();
    const int graphics = platform::win32::liveGraphicsObjects();
    rounds(20);
    EXPECT_EQ(platform::win32::liveWindows(), windows);
    EXPECT_LE(platform::win32::liveGraphicsObjects(), graphics);
}

TEST_F(FloatingWindow, KeepsTheComponentWhenItsHostHasReleasedEveryObject) {
    put(L"Visible", true);
    const HWND window = floating();
    host_->options().docked = L"true";
    releaseLog();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(library_->canUnload(), S_FALSE);
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(takeMessagesUntil([&] { return !IsWindow(window); }));
    EXPECT_EQ(library_->canUnload(), S_FALSE) << "the control in the host's window is left";
    host_.reset();
    takeMessages();
    EXPECT_EQ(library_->canUnload(), S_OK);
    host_.emplace(project_.path());
}

TEST_F(FloatingWindow, AloneKeepsTheComponentUntilItsUserClosesIt) {
    host_->toldHandle = 0;
    put(L"Visible", true);
    const HWND window = floating();
    add();
    host_->removeLogView();
    releaseLog();
    EXPECT_EQ(library_->canUnload(), S_FALSE);
    EXPECT_EQ(rowsOf(listIn(window)), 1) << "it is as alive as before";
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(takeMessagesUntil([&] { return library_->canUnload() == S_OK; }));
    EXPECT_FALSE(IsWindow(window));
}

} // namespace
} // namespace cvlog::tests
