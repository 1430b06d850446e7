// Where a form's window is and how large: what the program gives, what the user does, what the resolution asks.

#include "platform/win32/form_placement.h"
#include "tests/windows/form_window_fixture.h"

#include <cmath>

namespace cvlog::platform::win32 {
namespace {

constexpr base::Area kPlace = {1500, 1200, 6000, 4500};

bool operator==(const RECT& left, const RECT& right) { return EqualRect(&left, &right) != FALSE; }

class Win32FormPlacement : public FormWindowFixture {
protected:
    static RECT workArea() {
        RECT work{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        return work;
    }
    /// The client area that a form was told is the one its window has.
    static void expectToldSize(const RecordingForm& recording) {
        const RECT told = toPixels(recording.form.clientArea(), dpiOf(recording));
        const SIZE client = clientOf(windowOf(recording));
        EXPECT_EQ(told.right, client.cx);
        EXPECT_EQ(told.bottom, client.cy);
    }
    static LONG middle(LONG from, LONG to) { return (from + to) / 2; }
};

TEST_F(Win32FormPlacement, IsThatOfTheWholeWindowOnTheScreen) {
    const auto shown = make();
    shown->form.setPlacement(kPlace);
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(kPlace, screenDpi()));
    shown->form.show();
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(kPlace, screenDpi()));
    expectToldSize(*shown);
}

TEST_F(Win32FormPlacement, MayBeLeftOfAndAboveTheFirstMonitor) {
    const auto shown = make();
    shown->form.setPlacement({-3000, -750, 6000, 4500});
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(base::Area{-3000, -750, 6000, 4500}, screenDpi()));
}

TEST_F(Win32FormPlacement, FollowsTheUser) {
    const auto shown = make();
    shown->form.show();
    const int resized = shown->resized;
    SetWindowPos(windowOf(*shown), nullptr, 40, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(shown->resized, resized) << "a move is no change of the size";
    SetWindowPos(windowOf(*shown), nullptr, 0, 0, 444, 333, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(shown->resized, resized + 1);
    EXPECT_EQ(shown->form.placement(), toTwips(RECT{40, 60, 484, 393}, screenDpi()));
    expectToldSize(*shown);
}

TEST_F(Win32FormPlacement, StaysTheNormalOneWhileTheWindowIsMaximised) {
    const auto shown = make();
    shown->form.setPlacement(kPlace);
    shown->form.show();
    ShowWindow(windowOf(*shown), SW_MAXIMIZE);
    EXPECT_EQ(shown->form.state(), widgets::WindowState::Maximised);
    EXPECT_EQ(shown->form.placement(), kPlace);
    expectToldSize(*shown);
    EXPECT_GT(shown->form.clientArea().width, kPlace.width);
    ShowWindow(windowOf(*shown), SW_RESTORE);
    EXPECT_EQ(shown->form.state(), widgets::WindowState::Normal);
    EXPECT_EQ(shown->form.placement(), kPlace);
    expectToldSize(*shown);
}

TEST_F(Win32FormPlacement, ComesBackAsItWasLeft) {
    base::Area left;
    {
        const auto shown = make();
        shown->form.setPlacement(kPlace);
        shown->form.show();
        SetWindowPos(windowOf(*shown), nullptr, 33, 77, 501, 301, SWP_NOZORDER);
        ShowWindow(windowOf(*shown), SW_MAXIMIZE);
        left = *shown->form.placement();
    }
    const auto again = make();
    again->form.setPlacement(left);
    again->form.setState(widgets::WindowState::Maximised);
    again->form.show();
    EXPECT_TRUE(IsZoomed(windowOf(*again)));
    EXPECT_EQ(again->form.state(), widgets::WindowState::Maximised);
    ShowWindow(windowOf(*again), SW_RESTORE);
    EXPECT_TRUE(placeOf(windowOf(*again)) == (RECT{33, 77, 534, 378}));
}

TEST_F(Win32FormPlacement, MinimisingIsNoChangeOfSizeOrState) {
    const auto shown = make();
    shown->form.setPlacement(kPlace);
    shown->form.show();
    const int resized = shown->resized;
    const base::Area client = shown->form.clientArea();
    ShowWindow(windowOf(*shown), SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(windowOf(*shown)));
    EXPECT_EQ(shown->resized, resized);
    EXPECT_EQ(shown->form.clientArea(), client);
    EXPECT_EQ(shown->form.placement(), kPlace);
    EXPECT_EQ(shown->form.state(), widgets::WindowState::Normal);
}

TEST_F(Win32FormPlacement, AMinimisedWindowKeepsTheStateItWillHave) {
    const auto shown = make();
    shown->form.setPlacement(kPlace);
    shown->form.show();
    ShowWindow(windowOf(*shown), SW_MAXIMIZE);
    ShowWindow(windowOf(*shown), SW_MINIMIZE);
    EXPECT_EQ(shown->form.state(), widgets::WindowState::Maximised);
    shown->form.setPlacement({3000, 3000, 4500, 3000});
    EXPECT_TRUE(IsIconic(windowOf(*shown)));
    shown->form.bringToFront();
    EXPECT_TRUE(IsZoomed(windowOf(*shown)));
    ShowWindow(windowOf(*shown), SW_RESTORE);
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(base::Area{3000, 3000, 4500, 3000}, screenDpi()));
}

TEST_F(Win32FormPlacement, MayChangeWhileTheWindowIsSeen) {
    const auto shown = make();
    shown->form.show();
    shown->form.setState(widgets::WindowState::Maximised);
    EXPECT_TRUE(IsZoomed(windowOf(*shown)));
    shown->form.setPlacement(kPlace);
    EXPECT_TRUE(IsZoomed(windowOf(*shown)));
    shown->form.setState(widgets::WindowState::Normal);
    EXPECT_FALSE(IsZoomed(windowOf(*shown)));
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(kPlace, screenDpi()));
    expectToldSize(*shown);
}

TEST_F(Win32FormPlacement, TheFrameGrowsRoundTheClientArea) {
    for (const Border border : {Border::Sizable, Border::FixedDialog}) {
        const auto shown = make(border);
        shown->form.setClientSize(7050, 1185);
        const RECT wanted = toPixels(base::Area{0, 0, 7050, 1185}, dpiOf(*shown));
        EXPECT_EQ(clientOf(windowOf(*shown)).cx, wanted.right);
        EXPECT_EQ(clientOf(windowOf(*shown)).cy, wanted.bottom);
        shown->form.show();
        EXPECT_EQ(clientOf(windowOf(*shown)).cx, wanted.right);
        EXPECT_EQ(clientOf(windowOf(*shown)).cy, wanted.bottom);
        EXPECT_EQ(shown->form.clientArea(), (base::Area{0, 0, 7050, 1185})) << "exactly as it was given";
    }
}

TEST_F(Win32FormPlacement, TheFrameOfAMaximisedWindowGrowsForLater) {
    const auto shown = make();
    shown->form.show();
    ShowWindow(windowOf(*shown), SW_MAXIMIZE);
    const SIZE maximised = clientOf(windowOf(*shown));
    shown->form.setClientSize(4500, 3000);
    EXPECT_EQ(clientOf(windowOf(*shown)).cx, maximised.cx);
    ShowWindow(windowOf(*shown), SW_RESTORE);
    EXPECT_EQ(clientOf(windowOf(*shown)).cx, toPixels(4500.0F, dpiOf(*shown)));
    EXPECT_EQ(clientOf(windowOf(*shown)).cy, toPixels(3000.0F, dpiOf(*shown)));
}

TEST_F(Win32FormPlacement, ADialogComesUpInTheMiddleOfItsOwner) {
    const HostsWindow host;
    const auto shown = make(Border::FixedDialog);
    shown->form.setClientSize(3000, 1500);
    shown->form.show(host.handle());
    const RECT place = placeOf(windowOf(*shown));
    const RECT owner = placeOf(host);
    EXPECT_NEAR(middle(place.left, place.right), middle(owner.left, owner.right), 1);
    EXPECT_NEAR(middle(place.top, place.bottom), middle(owner.top, owner.bottom), 1);
    EXPECT_EQ(shown->form.placement(), toTwips(place, screenDpi()));
}

TEST_F(Win32FormPlacement, ADialogOfNobodyComesUpInTheMiddleOfTheMonitor) {
    const auto shown = make(Border::FixedDialog);
    shown->form.setClientSize(3000, 1500);
    shown->form.show();
    const RECT place = placeOf(windowOf(*shown));
    EXPECT_NEAR(middle(place.left, place.right), middle(workArea().left, workArea().right), 1);
    EXPECT_NEAR(middle(place.top, place.bottom), middle(workArea().top, workArea().bottom), 1);
}

TEST_F(Win32FormPlacement, ADialogStaysOnTheMonitorOfAnOwnerAtItsEdge) {
    const HostsWindow host;
    SetWindowPos(host, nullptr, workArea().right - 60, workArea().bottom - 60, 0, 0, SWP_NOSIZE);
    const auto shown = make(Border::FixedDialog);
    shown->form.setClientSize(3000, 1500);
    shown->form.show(host.handle());
    EXPECT_EQ(placeOf(windowOf(*shown)).right, workArea().right);
    EXPECT_EQ(placeOf(windowOf(*shown)).bottom, workArea().bottom);
}

TEST_F(Win32FormPlacement, APlacedDialogStaysWhereItIsPut) {
    const HostsWindow host;
    const auto shown = make(Border::FixedDialog);
    shown->form.setPlacement({150, 300, 6000, 3000});
    shown->form.show(host.handle());
    EXPECT_TRUE(placeOf(windowOf(*shown)) == toPixels(base::Area{150, 300, 6000, 3000}, screenDpi()));
}

TEST_F(Win32FormPlacement, EverythingOnItFollowsTheResolution) {
    const auto shown = make();
    addButtons(*shown);
    shown->form.place(*model_, {1200, 1500, 3000, 1500});
    shown->form.setClientSize(4800, 3600);
    shown->form.show();
    const HWND window = windowOf(*shown);
    const HWND button = childrenOf(window, L"BUTTON")[1];
    const auto fontHeight = [button] {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(button, WM_GETFONT, 0, 0)), sizeof font, &font);
        return -font.lfHeight;
    };
    for (const int dpi : {144, 192, 120, 96}) {
        // The frame stays as the system draws it here: only the message says that the resolution is another.
        const SIZE size = sizeAround(window, {toPixels(4800.0F, dpi), toPixels(3600.0F, dpi)}, dpiOf(*shown));
        const RECT suggested{30, 40, 30 + size.cx, 40 + size.cy};
        SendMessageW(window, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                     reinterpret_cast<LPARAM>(&suggested));
        EXPECT_TRUE(placeOf(window) == suggested) << dpi;
        EXPECT_EQ(shown->form.clientArea(), (base::Area{0, 0, 4800, 3600})) << dpi;
        RECT place = placeOf(button);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(place == toPixels(base::Area{0, 600, 900, 360}, dpi)) << dpi;
        place = placeOf(window_->frame());
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(place == toPixels(base::Area{1200, 1500, 3000, 1500}, dpi)) << dpi;
        EXPECT_EQ(fontHeight(), std::lround(shown->form.font().points * static_cast<float>(dpi) / 72)) << dpi;
    }
}

} // namespace
} // namespace cvlog::platform::win32
