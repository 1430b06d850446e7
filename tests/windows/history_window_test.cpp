// The history in a real window: where the focus is, what keys do there, and that it goes with its database.

#include "store/frm_log_history.h"

#include "platform/headless/headless_fonts.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/recording_help_viewer.h"
#include "store/log_database.h"
#include "tests/store/history_world.h"
#include "tests/windows/form_window_fixture.h"
#include "tests/windows/from_the_loop.h"

#include <gtest/gtest.h>

namespace cvlog::platform::win32 {
namespace {

using store::FrmLogHistory;
using tests::FromTheLoop;

/// The services of Windows, but help that nobody has to close.
struct HistoryServices : Services {
    headless::CallGate gate;
    headless::HeadlessFonts fonts{gate};
    headless::HeadlessObjects objects{gate};
    headless::RecordingHelpViewer helpViewer{gate};
};

class Win32History : public testing::Test {
protected:
    void SetUp() override {
        host_.workspace->on(u"GetProductInfo",
                            [](std::span<automation::Value>) { return automation::Value(u"CVLog3 Tests"); });
        engine_.addLogFile(u"C:\\Proj\\PrjData.mdb");
        for (std::int32_t number = 1; number <= 3; ++number) addRecord(number);
        ASSERT_TRUE(store::OpenDB(globals_, log_, host_.workspace));
        addRecord(4);
        auto main = std::make_shared<tests::ScriptObject>("Main", calls_);
        main->set(u"hwnd", hosts_.handle());
        host_.workspace->set(u"CalvettaWindow", main);
    }
    void TearDown() override {
        store::CloseDB(globals_);
        takeMessages();
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\CVLog3 Tests");
    }
    void addRecord(std::int32_t number) {
        engine_.records().push_back({{u"RecordNum", number},
                                     {u"LogMessage", u"message " + base::decimal(number)},
                                     {u"ReturnMessage", std::int32_t{0}},
                                     {u"ObjectType", u"PROG"},
                                     {u"ObjectName", u"PAYROLL"},
                                     {u"Errors", u""}});
    }
    /// Opens the history; the user acts from its loop and leaves it open, or not.
    void inHistory(const std::function<void(FrmLogHistory&)>& user) {
        FromTheLoop acting([&] {
            const auto window = globals_.store.frmLogHistory;
            if (!window || !IsWindowVisible(windowOf(*window))) return false;
            user(*window);
            if (window->isLoaded()) PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
            return true;
        });
        store::ShowHistory(globals_);
        EXPECT_TRUE(acting.done());
        EXPECT_EQ(globals_.store.frmLogHistory, nullptr);
        EXPECT_TRUE(IsWindowEnabled(hosts_));
    }
    static HWND windowOf(FrmLogHistory& window) {
        const auto* peer = static_cast<FormWindow*>(window.form().peer());
        return peer ? peer->window() : nullptr;
    }
    static HWND listOf(FrmLogHistory& window) {
        return static_cast<ListViewWindow*>(window.lvHistory()->peer())->list();
    }
    static void key(FrmLogHistory& window, WORD code) { SendMessageW(listOf(window), WM_KEYDOWN, code, 1); }

    HistoryServices services_;
    tests::CallCounter calls_;
    tests::FakeEngine engine_{calls_};
    tests::FakeHost host_{calls_};
    core::Globals globals_{core::Platform::of(services_, engine_)};
    std::shared_ptr<core::CVLog> log_ = std::make_shared<core::CVLog>(globals_);
    HostsWindow hosts_;
};

TEST_F(Win32History, IsModalOverTheHostWithTheFocusInItsList) {
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(GetFocus(), listOf(window));
        EXPECT_EQ(GetWindow(windowOf(window), GW_OWNER), hosts_);
        EXPECT_FALSE(IsWindowEnabled(hosts_));
        EXPECT_EQ(store::testbed::rowNames(*window.lvHistory()), "1 2 3 S 4");
        EXPECT_EQ(SendMessageW(listOf(window), LVM_GETITEMCOUNT, 0, 0), 5);
        RECT list{}, client{};
        GetWindowRect(listOf(window), &list);
        GetClientRect(windowOf(window), &client);
        EXPECT_NEAR(list.right - list.left, client.right, 6);
    });
}

TEST_F(Win32History, ObeysItsKeys) {
    inHistory([&](FrmLogHistory& window) {
        window.lvHistory()->select(2, true);
        window.lvHistory()->focusRow(2);
        key(window, VK_DELETE);
        EXPECT_EQ(store::testbed::rowNames(*window.lvHistory()), "1 3 S 4");
        key(window, VK_F1);
        EXPECT_EQ(services_.helpViewer.shown.size(), 1U);
        EXPECT_TRUE(window.isLoaded());
    });
    EXPECT_EQ(engine_.records().size(), 3U);
}

TEST_F(Win32History, GoesWithItsDatabase) {
    HWND shown = nullptr;
    inHistory([&](FrmLogHistory& window) {
        shown = windowOf(window);
        store::CloseDB(globals_);
        EXPECT_FALSE(window.isLoaded());
    });
    EXPECT_FALSE(IsWindow(shown));
}

TEST_F(Win32History, ComesBackWhereItWas) {
    RECT before{};
    inHistory([&](FrmLogHistory& window) {
        MoveWindow(windowOf(window), 90, 80, 500, 300, TRUE);
        GetWindowRect(windowOf(window), &before);
    });
    inHistory([&](FrmLogHistory& window) {
        RECT after{};
        GetWindowRect(windowOf(window), &after);
        EXPECT_TRUE(EqualRect(&before, &after));
    });
}

TEST_F(Win32History, ShowsTheHourglassOverItsListWhileItIsBusy) {
    inHistory([&](FrmLogHistory& window) {
        const HWND list = listOf(window);
        const auto pointerOver = [&] {
            SendMessageW(list, WM_SETCURSOR, reinterpret_cast<WPARAM>(list),
                         MAKELONG(HTCLIENT, WM_MOUSEMOVE));
            return GetCursor();
        };
        const HCURSOR usual = pointerOver();
        window.form().setPointer(widgets::Pointer::Hourglass);
        EXPECT_EQ(pointerOver(), LoadCursorW(nullptr, IDC_WAIT));
        window.form().setPointer(widgets::Pointer::Default);
        EXPECT_EQ(pointerOver(), usual);
    });
}

} // namespace
} // namespace cvlog::platform::win32
