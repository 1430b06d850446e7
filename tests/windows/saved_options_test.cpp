// Options that the host saves while the log is open: applied a moment later, from the message loop.

#include "tests/windows/placement_fixture.h"

namespace cvlog::tests {
namespace {

class SavedOptions : public PlacementTest {
protected:
    void save(const wchar_t* docked) {
        host_->options().docked = docked;
        host_->options().fireSaved();
    }
    bool isDocked() const { return IsWindowVisible(host_->logView()->list()) != FALSE; }
    /// Takes messages until a timer that was started afterwards has come: those before it came first.
    static void passTime() {
        const FromTheLoop later([] { return true; });
        EXPECT_TRUE(takeMessagesUntil([&] { return later.done(); }));
    }
};

TEST_F(SavedOptions, PlaceTheLogFromTheMessageLoop) {
    floats();
    const int layouts = host_->layouts;
    save(L"true");
    EXPECT_NE(floating(), nullptr) << "not inside the event";
    EXPECT_EQ(host_->layouts, layouts);
    EXPECT_TRUE(takeMessagesUntil([&] { return floating() == nullptr; }));
    EXPECT_TRUE(isDocked());
    EXPECT_EQ(host_->layouts, layouts + 1);
    passTime();
    EXPECT_EQ(host_->layouts, layouts + 1) << "once";
}

TEST_F(SavedOptions, PlaceALogWithoutAContainerToo) {
    save(L"true");
    EXPECT_TRUE(takeMessagesUntil([&] { return host_->layouts == 1; }));
    EXPECT_TRUE(isDocked()) << "wanted from the start";
}

TEST_F(SavedOptions, AreAppliedOnceForTwoSaves) {
    floats();
    const int layouts = host_->layouts;
    save(L"true");
    save(L"false");
    passTime();
    EXPECT_EQ(host_->layouts, layouts + 1);
    EXPECT_NE(floating(), nullptr);
}

TEST_F(SavedOptions, LeaveTheFocusWhereTheUserHasIt) {
    docks();
    const int focused = host_->focused;
    const HostsWindow dialog;
    SetForegroundWindow(dialog);
    SetFocus(dialog);
    takeMessages();
    for (const auto* docked : {L"false", L"true", L"false"}) {
        const bool floats = docked == std::wstring(L"false");
        save(docked);
        EXPECT_TRUE(takeMessagesUntil([&] { return (floating() != nullptr) == floats; }));
        passTime();
        EXPECT_EQ(GetFocus(), dialog) << docked;
        EXPECT_EQ(GetActiveWindow(), dialog);
    }
    EXPECT_EQ(host_->focused, focused);
    host_->options().errors = L"false"; // the open window comes to the front
    host_->options().fireSaved();
    passTime();
    EXPECT_EQ(GetFocus(), dialog);
}

TEST_F(SavedOptions, GiveTheHostTheFocusThatTheFloatingWindowHad) {
    floats();
    call(L"SetFocus");
    ASSERT_TRUE(takeMessagesUntil([&] { return GetActiveWindow() == floating(); }));
    save(L"true");
    EXPECT_TRUE(takeMessagesUntil([&] { return floating() == nullptr; }));
    EXPECT_EQ(host_->focused, 1);
    EXPECT_EQ(GetFocus(), host_->handle());
}

TEST_F(SavedOptions, AreNotAppliedToAClosedLog) {
    floats();
    save(L"true");
    call(L"CloseDB");
    const int layouts = host_->layouts;
    passTime();
    EXPECT_EQ(host_->layouts, layouts);
    EXPECT_FALSE(host_->options().hasListener());
}

TEST_F(SavedOptions, AreNotAppliedWhenEverythingWasReleased) {
    docks();
    save(L"false");
    const int layouts = host_->layouts;
    host_->removeLogView();
    releaseLog();
    EXPECT_EQ(library_->canUnload(), S_OK) << "no timer keeps it, and none comes any more";
    EXPECT_FALSE(host_->options().hasListener());
    passTime();
    EXPECT_EQ(host_->layouts, layouts);
    EXPECT_EQ(floating(), nullptr);
}

} // namespace
} // namespace cvlog::tests
