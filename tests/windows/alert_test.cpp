// Boxes of the log in real windows: the alert of the obsolete way to dock it, and the question at the end of a series.

#include "tests/windows/placement_fixture.h"

namespace cvlog::tests {
namespace {

constexpr wchar_t kAlert[] = L"Alert!";

class Alert : public PlacementTest {
protected:
    void TearDown() override {
        EXPECT_EQ(windowTitled(kAlert), nullptr);
        EXPECT_TRUE(IsWindowEnabled(host_->handle()));
        PlacementTest::TearDown();
    }
    void dock(IDispatch* parent) { call(L"Dock", {objectArgument(parent)}); }
    /// Calls Dock; the user acts as soon as the alert is there.
    void dockWhile(IDispatch* parent, const std::function<void(HWND)>& acts) {
        const FromTheLoop user([&] {
            const HWND alert = windowTitled(kAlert);
            if (alert) acts(alert);
            return alert != nullptr;
        });
        dock(parent);
        EXPECT_TRUE(user.done()) << "Dock came back without an alert";
    }
    static void closeBox(HWND alert) { PostMessageW(alert, WM_SYSCOMMAND, SC_CLOSE, 0); }
};

TEST_F(Alert, ClosesByEnterAndThenOnlyTheWishIsNoted) {
    const int layouts = host_->layouts;
    dockWhile(host_->window(), [&](HWND alert) {
        EXPECT_FALSE(IsWindowEnabled(host_->handle())) << "modal";
        EXPECT_EQ(GetActiveWindow(), alert);
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
    });
    EXPECT_EQ(host_->layouts, layouts);
    EXPECT_EQ(host_->options().saves, 0);
    EXPECT_FALSE(is(L"Docked")) << "no container was put";
    putParent(host_->window());
    EXPECT_TRUE(is(L"Docked"));
    EXPECT_TRUE(is(L"Visible"));
}

TEST_F(Alert, ClosesByItsButton) {
    dockWhile(nullptr, [](HWND alert) {
        SendMessageW(FindWindowExW(alert, nullptr, L"BUTTON", nullptr), BM_CLICK, 0, 0);
    });
    putParent(host_->window());
    EXPECT_FALSE(is(L"Docked"));
    EXPECT_NE(floating(), nullptr);
}

TEST_F(Alert, ClosesByItsCloseBoxEachTimeItIsShown) {
    for (int i = 0; i < 2; ++i) dockWhile(nullptr, closeBox);
}

TEST_F(Alert, ClosesByItselfAfterFiveSeconds) {
    const ULONGLONG start = GetTickCount64();
    ULONGLONG seen = 0;
    const FromTheLoop watch([&] {
        if (windowTitled(kAlert)) seen = GetTickCount64();
        return false;
    });
    dock(nullptr);
    EXPECT_GE(seen - start, 4'500U) << "it was there until then";
    EXPECT_LT(GetTickCount64() - start, 60'000U);
}

// A host's timer goes on during the alert, and so does what it does with the log.
TEST_F(Alert, LetsItsHostReportAndDockOnceMoreMeanwhile) {
    int shown = 0;
    std::function<void(HWND)> inner = [&](HWND alert) {
        ++shown;
        closeBox(alert);
    };
    dockWhile(nullptr, [&](HWND alert) {
        ++shown;
        putParent(host_->window());
        add();
        EXPECT_EQ(rowsOf(host_->logView()->list()), 1);
        SetWindowTextW(alert, L"the first"); // so that the other one can be told from it
        dockWhile(nullptr, inner);
        EXPECT_TRUE(IsWindow(alert));
        SetWindowTextW(alert, kAlert);
        closeBox(alert);
    });
    EXPECT_EQ(shown, 2);
}

TEST_F(Alert, MaySeeItsLogReleasedMeanwhile) {
    const ComPtr<IDispatch> log = log_;
    dockWhile(nullptr, [&](HWND alert) {
        call(L"CloseDB");
        releaseLog();
        closeBox(alert);
    });
}

class SeriesQuestion : public PlacementTest {
protected:
    /// Ends a series that went wrong while the log is not in view; the user answers the question.
    void finish(const std::function<void(HWND)>& answer) {
        floats();
        put(L"Visible", false); // now it is not wanted
        call(L"SeriesStart", {Variant(L"verify")});
        add();
        const FromTheLoop user([&] {
            const HWND box = windowTitled(host_->product());
            if (box) answer(box);
            return box != nullptr;
        });
        call(L"SeriesFinish", {Variant(0L)});
        EXPECT_TRUE(user.done()) << "no question was asked";
    }
};

TEST_F(SeriesQuestion, AnsweredYesShowsTheLog) {
    finish([](HWND) { PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); });
    EXPECT_NE(floating(), nullptr);
    EXPECT_TRUE(is(L"Visible"));
}

TEST_F(SeriesQuestion, AnsweredNoLeavesTheLogHidden) {
    finish([](HWND box) { PostMessageW(box, WM_COMMAND, IDNO, 0); });
    EXPECT_EQ(floating(), nullptr);
    EXPECT_FALSE(is(L"Visible"));
}

// The series that a host's timer starts meanwhile is not the one that the question is about.
TEST_F(SeriesQuestion, LeavesTheSeriesThatItsHostStartsMeanwhile) {
    finish([&](HWND box) {
        call(L"SeriesStart", {Variant(L"verify")});
        add();
        PostMessageW(box, WM_COMMAND, IDNO, 0);
    });
    const LRESULT rows = rowsOf(host_->logView()->list());
    EXPECT_EQ(rows, 1);
    add(); // outside of a series it would ask
    EXPECT_EQ(rowsOf(host_->logView()->list()), rows + 1);
}

} // namespace
} // namespace cvlog::tests
