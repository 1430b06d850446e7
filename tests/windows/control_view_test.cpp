// The control as a picture, which containers draw where the control is not active.

#include "platform/win32/screen_units.h"
#include "tests/windows/control_view_fixture.h"
#include "tests/windows/drawn_pixels.h"

#include <commctrl.h>

namespace cvlog::tests {
namespace {

constexpr SIZE kSize{380, 160};
constexpr LONG kBack = 0x30E0F0; // blue, green, red
constexpr std::uint32_t kShownBack = 0xF0E030;

class ControlView : public ControlViewTest {
protected:
    void SetUp() override {
        ControlViewTest::SetUp();
        putMember(control_.Get(), L"BackColor", Variant(kBack));
        setPixelExtent(kSize);
    }
    static LONG himetric(LONG pixels) { return MulDiv(pixels, 2540, platform::win32::screenDpi()); }
    void setPixelExtent(SIZE size) {
        SIZEL extent = {himetric(size.cx), himetric(size.cy)};
        EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    }
    HRESULT draw(HDC dc, RECTL bounds) {
        return view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
    }
    static RECTL wholeOf(SIZE size) { return {0, 0, size.cx, size.cy}; }
    /// Rows of pixels, from the top, before the first that is all of the background: the header and the rows.
    static int filledHeight(const DrawnPixels& picture, int right) {
        int y = picture.height() - 1;
        while (y > 0 && picture.count(kShownBack, {0, y, right, y + 1}) == right) --y;
        return y + 1;
    }
};

TEST_F(ControlView, AnInactiveControlLooksAsItDoesInItsWindow) {
    site_.area = site_.visible = {0, 0, kSize.cx, kSize.cy};
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    RedrawWindow(list(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT client{};
    GetClientRect(list(), &client);
    DrawnPixels shown(kSize.cx, kSize.cy);
    const HDC screen = GetDC(list());
    BitBlt(shown.dc(), 0, 0, client.right, client.bottom, screen, 0, 0, SRCCOPY);
    ReleaseDC(list(), screen);
    EXPECT_GT(shown.count(kShownBack, client), 1000) << "there is something to compare";
    DrawnPixels active(kSize.cx, kSize.cy);
    EXPECT_EQ(draw(active.dc(), wholeOf(kSize)), S_OK);
    EXPECT_EQ(active.differences(shown, client.right, client.bottom), 0);
    ASSERT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
    DrawnPixels inactive(kSize.cx, kSize.cy);
    EXPECT_EQ(draw(inactive.dc(), wholeOf(kSize)), S_OK);
    EXPECT_EQ(inactive.differences(shown, client.right, client.bottom), 0);
}

TEST_F(ControlView, APictureKeepsToItsPlaceWhateverTheUnitsOfTheDevice) {
    DrawnPixels plain(kSize.cx, kSize.cy);
    ASSERT_EQ(draw(plain.dc(), wholeOf(kSize)), S_OK);
    DrawnPixels moved(kSize.cx + 100, kSize.cy + 100);
    SetViewportOrgEx(moved.dc(), 40, 30, nullptr);
    SetMapMode(moved.dc(), MM_ANISOTROPIC);
    SetWindowExtEx(moved.dc(), 10, -10, nullptr); // ten units a pixel, upwards
    SetViewportExtEx(moved.dc(), 1, 1, nullptr);
    EXPECT_EQ(draw(moved.dc(), {100, -200, 100 + 10 * kSize.cx, -200 - 10 * kSize.cy}), S_OK);
    const RECT place = moved.touched();
    EXPECT_EQ(place.left, 50);
    EXPECT_EQ(place.top, 50);
    EXPECT_EQ(place.right - place.left, kSize.cx);
    EXPECT_EQ(place.bottom - place.top, kSize.cy);
    int different = 0;
    for (int y = 0; y < kSize.cy; ++y)
        for (int x = 0; x < kSize.cx; ++x)
            if (moved.at(50 + x, 50 + y) != plain.at(x, y)) ++different;
    EXPECT_EQ(different, 0);
    SIZE unit{};
    GetWindowExtEx(moved.dc(), &unit);
    EXPECT_EQ(unit.cy, -10) << "the device is given back as it was";
}

TEST_F(ControlView, APictureIsScaledToItsPlaceAndUsesItsPixels) {
    DrawnPixels plain(kSize.cx, kSize.cy);
    ASSERT_EQ(draw(plain.dc(), wholeOf(kSize)), S_OK);
    constexpr SIZE kThrice{3 * kSize.cx, 3 * kSize.cy};
    DrawnPixels large(kThrice.cx, kThrice.cy);
    ASSERT_EQ(draw(large.dc(), wholeOf(kThrice)), S_OK);
    EXPECT_EQ(large.count(DrawnPixels::kUntouched, {0, 0, kThrice.cx, kThrice.cy}), 0);
    const int height = filledHeight(plain, 100);
    EXPECT_GT(height, 40);
    EXPECT_NEAR(filledHeight(large, 300), 3 * height, height / 2);
    int mixed = 0; // an enlarged picture would be of squares of one colour each
    for (int y = 0; y < kThrice.cy; y += 3)
        for (int x = 0; x < kThrice.cx; x += 3)
            if (large.at(x, y) != large.at(x + 2, y + 2)) ++mixed;
    EXPECT_GT(mixed, 20);
}

TEST_F(ControlView, ADistortedOrTinyPictureFillsItsPlaceToo) {
    for (const SIZE size : {SIZE{kSize.cx, 40}, SIZE{50, kSize.cy}, SIZE{7, 5}, SIZE{1, 1}}) {
        DrawnPixels picture(kSize.cx, kSize.cy);
        EXPECT_EQ(draw(picture.dc(), wholeOf(size)), S_OK);
        const RECT place = picture.touched();
        EXPECT_EQ(place.right, size.cx);
        EXPECT_EQ(place.bottom, size.cy);
    }
    DrawnPixels none(10, 10);
    EXPECT_EQ(draw(none.dc(), {3, 3, 3, 8}), S_OK);
    EXPECT_EQ(none.count(DrawnPixels::kUntouched, {0, 0, 10, 10}), 100);
}

TEST_F(ControlView, AMetafileTakesThePicture) {
    DrawnPixels plain(kSize.cx, kSize.cy);
    ASSERT_EQ(draw(plain.dc(), wholeOf(kSize)), S_OK);
    const HDC recorder = CreateMetaFileW(nullptr);
    SetMapMode(recorder, MM_ANISOTROPIC);
    SetWindowOrgEx(recorder, 0, 0, nullptr);
    SetWindowExtEx(recorder, 5000, 3000, nullptr);
    EXPECT_EQ(draw(recorder, {0, 0, 5000, 3000}), S_OK);
    const HMETAFILE file = CloseMetaFile(recorder);
    DrawnPixels played(kSize.cx, kSize.cy);
    SetMapMode(played.dc(), MM_ANISOTROPIC);
    SetViewportExtEx(played.dc(), kSize.cx, kSize.cy, nullptr);
    EXPECT_TRUE(PlayMetaFile(played.dc(), file));
    DeleteMetaFile(file);
    EXPECT_EQ(played.differences(plain, kSize.cx, kSize.cy), 0);
}

TEST_F(ControlView, AnEnhancedMetafileTakesThePicture) {
    DrawnPixels plain(kSize.cx, kSize.cy);
    ASSERT_EQ(draw(plain.dc(), wholeOf(kSize)), S_OK);
    const HDC recorder = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(draw(recorder, wholeOf(kSize)), S_OK);
    const HENHMETAFILE file = CloseEnhMetaFile(recorder);
    DrawnPixels played(kSize.cx, kSize.cy);
    const RECT whole{0, 0, kSize.cx - 1,
                     kSize.cy - 1}; // which the system takes with its right and lower edges
    EXPECT_TRUE(PlayEnhMetaFile(played.dc(), file, &whole));
    DeleteEnhMetaFile(file);
    EXPECT_LT(played.differences(plain, kSize.cx, kSize.cy), kSize.cx * kSize.cy / 50);
}

TEST_F(ControlView, AControlThatLostItsWindowIsStillDrawn) {
    DrawnPixels plain(kSize.cx, kSize.cy);
    ASSERT_EQ(draw(plain.dc(), wholeOf(kSize)), S_OK);
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    DestroyWindow(window_); // a container that does not deactivate before
    DrawnPixels after(kSize.cx, kSize.cy);
    EXPECT_EQ(draw(after.dc(), wholeOf(kSize)), S_OK);
    EXPECT_EQ(after.differences(plain, kSize.cx, kSize.cy), 0);
}

TEST_F(ControlView, APictureShowsTheRowsThatTheWindowIsScrolledTo) {
    site_.area = site_.visible = {0, 0, kSize.cx, kSize.cy};
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    for (int i = 0; i < 40; ++i) addRow(i % 2 ? L"odd" : L"even");
    SendMessageW(list(), LVM_ENSUREVISIBLE, 42, FALSE);
    SendMessageW(list(), LVM_SCROLL, 60, 0);
    RedrawWindow(list(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT client{};
    GetClientRect(list(), &client);
    DrawnPixels shown(kSize.cx, kSize.cy);
    const HDC screen = GetDC(list());
    BitBlt(shown.dc(), 0, 0, client.right, client.bottom, screen, 0, 0, SRCCOPY);
    ReleaseDC(list(), screen);
    DrawnPixels drawn(kSize.cx, kSize.cy);
    EXPECT_EQ(draw(drawn.dc(), wholeOf(kSize)), S_OK);
    EXPECT_EQ(drawn.differences(shown, client.right, client.bottom), 0);
}

BOOL CALLBACK goOn(ULONG_PTR counter) {
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

BOOL CALLBACK stop(ULONG_PTR) { return FALSE; }

TEST_F(ControlView, DrawingMayBeStoppedAndRefusesWhatItCannotDo) {
    DrawnPixels picture(20, 20);
    const RECTL bounds{0, 0, 20, 20};
    const auto drawing = [&](DWORD aspect, HDC dc, BOOL(CALLBACK * proceed)(ULONG_PTR), ULONG_PTR argument) {
        return view_->Draw(aspect, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, proceed, argument);
    };
    EXPECT_EQ(drawing(DVASPECT_CONTENT, picture.dc(), stop, 0), E_ABORT);
    EXPECT_EQ(drawing(DVASPECT_ICON, picture.dc(), nullptr, 0), DV_E_DVASPECT);
    EXPECT_EQ(drawing(DVASPECT_CONTENT, nullptr, nullptr, 0), E_INVALIDARG);
    EXPECT_EQ(picture.count(DrawnPixels::kUntouched, {0, 0, 20, 20}), 400);
    int asked = 0;
    EXPECT_EQ(drawing(DVASPECT_CONTENT, picture.dc(), goOn, reinterpret_cast<ULONG_PTR>(&asked)), S_OK);
    EXPECT_GT(asked, 0);
    EXPECT_EQ(picture.count(DrawnPixels::kUntouched, {0, 0, 20, 20}), 0);
}

TEST_F(ControlView, TheExtentComesBackAsItWasGiven) {
    SIZEL extent = {12'345, 6'789};
    EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    SIZEL negative = {-1, 5};
    EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, &negative), E_INVALIDARG);
    EXPECT_EQ(object_->SetExtent(DVASPECT_ICON, &extent), DV_E_DVASPECT);
    SIZEL got = {};
    EXPECT_EQ(object_->GetExtent(DVASPECT_CONTENT, &got), S_OK);
    EXPECT_EQ(got.cx, 12'345);
    EXPECT_EQ(got.cy, 6'789);
    EXPECT_EQ(view_->GetExtent(DVASPECT_CONTENT, -1, nullptr, &got), S_OK);
    EXPECT_EQ(got.cx, 12'345);
    EXPECT_EQ(view_->GetExtent(DVASPECT_ICON, -1, nullptr, &got), DV_E_DVASPECT);
    RECTL area = {};
    EXPECT_EQ(view_->GetRect(DVASPECT_CONTENT, &area), S_OK);
    EXPECT_EQ(area.right, 12'345);
    EXPECT_EQ(area.bottom, 6'789);
    EXPECT_EQ(view_->GetRect(DVASPECT_TRANSPARENT, &area), DV_E_DVASPECT);
}

TEST_F(ControlView, TheViewIsOpaqueAndHitWhereItIs) {
    DWORD status = 0;
    EXPECT_EQ(view_->GetViewStatus(&status), S_OK);
    EXPECT_TRUE(status & VIEWSTATUS_OPAQUE);
    const RECT bounds{10, 10, 50, 40};
    DWORD hit = 99;
    EXPECT_EQ(view_->QueryHitPoint(DVASPECT_CONTENT, &bounds, {10, 39}, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    EXPECT_EQ(view_->QueryHitPoint(DVASPECT_CONTENT, &bounds, {50, 20}, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
    const RECT across{0, 0, 11, 11};
    EXPECT_EQ(view_->QueryHitRect(DVASPECT_CONTENT, &bounds, &across, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    EXPECT_EQ(view_->QueryHitPoint(DVASPECT_ICON, &bounds, {10, 10}, 0, &hit), DV_E_DVASPECT);
}

} // namespace
} // namespace cvlog::tests
