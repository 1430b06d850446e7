// The strip over a long expansion, in a real window.

#include "tests/windows/form_window_fixture.h"

#include "details/frm_cancel.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/headless_platform.h"
#include "store/engine_selection.h"

namespace cvlog::platform::win32 {
namespace {

/// The user's screens, where windows may have other borders than the system draws here.
struct BorderedScreens : Screens {
    base::Twips borderWidth() override { return side; }
    base::Twips borderHeight() override { return top; }

    base::Twips side = Screens::borderWidth();
    base::Twips top = Screens::borderHeight();
};

class Win32CancelStrip : public FormWindowFixture {
protected:
    Win32CancelStrip() : engine_(store::makeLogEngine(services_.files, objects_)) {}
    ~Win32CancelStrip() override {
        if (globals_.frmCancel) globals_.frmCancel->unload();
        takeMessages();
    }

    std::shared_ptr<details::FrmCancel> show(const HostsWindow& host) {
        auto dialog = details::FrmCancel::load(globals_);
        dialog->move({1'500, 1'500, 6'000, 300});
        dialog->show(host.handle(), widgets::Activation::Take);
        takeMessages();
        return dialog;
    }
    static HWND windowOf(const details::FrmCancel& dialog) {
        return static_cast<FormWindow*>(dialog.form().peer())->window();
    }
    HWND button(const details::FrmCancel& dialog, std::size_t index) {
        return childrenOf(windowOf(dialog), L"BUTTON").at(index);
    }

    core::Platform platformOf() {
        const core::Platform rest = core::Platform::of(headless_, *engine_);
        return {
            .clipboard = services_.clipboard,
            .clock = services_.clock,
            .messages = services_.messages,
            .files = services_.files,
            .reader = services_.files,
            .codePage = services_.codePage,
            .pump = services_.pump,
            .settings = services_.settings,
            .collator = services_.collator,
            .measurer = services_.measurer,
            .pictures = services_.pictures,
            .screens = screens_,
            .windowMessages = services_.windowMessages,
            .fonts = rest.fonts,
            .objects = rest.objects,
            .helpViewer = services_.helpViewer,
            .messageFilters = services_.messageFilters,
            .peers = services_.peers,
            .engine = *engine_,
            .language = services_.language,
        };
    }

    /// The window comes to a screen of that resolution, with a place there.
    static void moveToScreen(HWND window, int dpi, const RECT& place) {
        SendMessageW(window, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                     reinterpret_cast<LPARAM>(&place));
    }
    static RECT placeIn(HWND window, HWND child) {
        RECT place = placeOf(child);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    BorderedScreens screens_;
    platform::headless::HeadlessPlatform headless_; // what the strip does not use
    platform::headless::HeadlessObjects objects_{headless_.gate};
    std::unique_ptr<store::Engine> engine_;
    core::Globals globals_{platformOf()};
    HostsWindow host_;
};

TEST_F(Win32CancelStrip, HasNoFrameAndIsAsHighAsItIsTold) {
    const auto dialog = show(host_);
    const LONG_PTR style = GetWindowLongPtrW(windowOf(*dialog), GWL_STYLE);
    EXPECT_EQ(style & (WS_CAPTION | WS_THICKFRAME | WS_SYSMENU), 0);
    const RECT place = placeOf(windowOf(*dialog));
    EXPECT_EQ(place.bottom - place.top, toPixels(300.0F, screenDpi()));
    EXPECT_EQ(place.right - place.left, toPixels(6'000.0F, screenDpi()));
    EXPECT_EQ(GetWindow(windowOf(*dialog), GW_OWNER), host_);
}

TEST_F(Win32CancelStrip, HasItsButtonAtTheRightEndAndThePictureOverIt) {
    const auto dialog = show(host_);
    const RECT whole = placeOf(windowOf(*dialog));
    const RECT filler = placeOf(button(*dialog, 0));
    const RECT cancel = placeOf(button(*dialog, 1));
    EXPECT_EQ(filler.left, whole.left);
    EXPECT_EQ(filler.right, cancel.left);
    EXPECT_EQ(cancel.right, whole.right);
    EXPECT_EQ(cancel.bottom - cancel.top, whole.bottom - whole.top);
    const HWND picture = childrenOf(windowOf(*dialog), L"STATIC").at(0);
    const RECT drawn = placeOf(picture);
    EXPECT_GT(drawn.left, cancel.left);
    EXPECT_EQ(drawn.right - drawn.left, drawn.bottom - drawn.top);
    EXPECT_EQ(cancel.bottom - cancel.top - (drawn.bottom - drawn.top), 6 * GetSystemMetrics(SM_CYBORDER));
    EXPECT_EQ(GetWindow(picture, GW_HWNDPREV), nullptr) << "nothing lies over the picture";
}

TEST_F(Win32CancelStrip, LeavesRoomForThreeBordersRoundItsPictureAtEveryResolution) {
    struct {
        base::Twips side, top;
        int dpi;
        RECT filler, cancel, picture;
    } const cases[] = {
        {15, 15, 96, {0, 0, 320, 20}, {320, 0, 400, 20}, {323, 3, 337, 17}},
        {30, 15, 96, {0, 0, 320, 20}, {320, 0, 400, 20}, {326, 3, 340, 17}},
        {15, 30, 96, {0, 0, 320, 20}, {320, 0, 400, 20}, {323, 6, 331, 14}},
        {15, 15, 192, {0, 0, 640, 40}, {640, 0, 800, 40}, {646, 6, 674, 34}},
        {30, 15, 192, {0, 0, 640, 40}, {640, 0, 800, 40}, {652, 6, 680, 34}},
        {7.5F, 22.5F, 192, {0, 0, 640, 40}, {640, 0, 800, 40}, {643, 9, 665, 31}},
    };
    for (const auto& each : cases) {
        screens_.side = each.side;
        screens_.top = each.top;
        const auto dialog = show(host_);
        const HWND strip = windowOf(*dialog);
        moveToScreen(strip, each.dpi, {50, 60, 50 + each.cancel.right, 60 + each.cancel.bottom});
        const RECT parts[] = {placeIn(strip, button(*dialog, 0)), placeIn(strip, button(*dialog, 1)),
                              placeIn(strip, childrenOf(strip, L"STATIC").at(0))};
        const RECT* const expected[] = {&each.filler, &each.cancel, &each.picture};
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_TRUE(EqualRect(&parts[i], expected[i]))
                << "part " << i << " with borders of " << each.side << " and " << each.top << " at "
                << each.dpi << ": " << parts[i].left << ", " << parts[i].top << ", " << parts[i].right << ", "
                << parts[i].bottom;
        dialog->unload();
    }
}

TEST_F(Win32CancelStrip, HasTheFocusOnCancelHoweverItCame) {
    const auto dialog = show(host_);
    SetForegroundWindow(windowOf(*dialog));
    takeMessages();
    EXPECT_EQ(GetFocus(), button(*dialog, 1));
    SetFocus(button(*dialog, 0));
    takeMessages();
    EXPECT_EQ(GetFocus(), button(*dialog, 1));
    post(GetFocus(), WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(GetFocus(), button(*dialog, 1));
}

TEST_F(Win32CancelStrip, IsCancelledByEnterEscAndAClick) {
    for (const int way : {0, 1, 2}) {
        const auto dialog = show(host_);
        SetForegroundWindow(windowOf(*dialog));
        takeMessages();
        EXPECT_FALSE(dialog->Cancelled());
        if (way == 0) post(GetFocus(), WM_KEYDOWN, VK_RETURN);
        if (way == 1) post(GetFocus(), WM_KEYDOWN, VK_ESCAPE);
        if (way == 2) SendMessageW(button(*dialog, 1), BM_CLICK, 0, 0);
        EXPECT_TRUE(dialog->Cancelled()) << way;
        EXPECT_TRUE(dialog->isLoaded());
        dialog->unload();
    }
}

TEST_F(Win32CancelStrip, TakesAClickOnItsPictureForOneOnTheButton) {
    const auto dialog = show(host_);
    const RECT drawn = placeOf(childrenOf(windowOf(*dialog), L"STATIC").at(0));
    const POINT middle{(drawn.left + drawn.right) / 2, (drawn.top + drawn.bottom) / 2};
    EXPECT_EQ(WindowFromPoint(middle), button(*dialog, 1));
}

TEST_F(Win32CancelStrip, GoesWithItsOwner) {
    std::shared_ptr<details::FrmCancel> dialog;
    {
        const HostsWindow other;
        dialog = show(other);
    }
    EXPECT_FALSE(dialog->isLoaded());
    EXPECT_FALSE(globals_.ExpansionBusy);
}

} // namespace
} // namespace cvlog::platform::win32
