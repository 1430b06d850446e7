// What is seen of a list, its scroll bars and its header when rows come or go between others.

#include "tests/windows/list_painting_fixture.h"

namespace cvlog::platform::win32 {
namespace {

class Win32MovingRows : public Win32ListPainting {
protected:
    HWND list() const { return window_->list(); }

    /// The whole window as it is on the screen, with its scroll bars; what the header covers is not in it.
    Shown whole() const {
        takeMessages();
        RECT place{};
        GetWindowRect(list(), &place);
        return shownOf(GetWindowDC(list()), list(),
                       {0, 0, place.right - place.left, place.bottom - place.top});
    }
    Shown captions() const {
        takeMessages();
        RECT area{};
        GetClientRect(header(), &area);
        return shownOf(GetDC(header()), header(), area);
    }
    static Shown shownOf(HDC screen, HWND window, const RECT& area) {
        Shown shown{static_cast<int>(area.right), static_cast<int>(area.bottom), {}};
        const BITMAPINFO info = topDownBitmap(shown.width, shown.height);
        void* bits = nullptr;
        const BitmapHandle bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        const MemoryDc dc(CreateCompatibleDC(nullptr));
        const HGDIOBJ previous = SelectObject(dc.get(), bitmap.get());
        BitBlt(dc.get(), 0, 0, shown.width, shown.height, screen, 0, 0, SRCCOPY);
        ReleaseDC(window, screen);
        GdiFlush();
        const auto* first = static_cast<const std::uint32_t*>(bits);
        for (int i = 0; i < shown.width * shown.height; ++i) shown.pixels.push_back(first[i] & 0xFFFFFFU);
        SelectObject(dc.get(), previous);
        return shown;
    }
    /// Nothing else is seen when all is drawn anew.
    void expectDrawn(const std::string& after) const {
        const Shown window = whole();
        const Shown header = captions();
        RedrawWindow(list(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
        ASSERT_EQ(window, whole()) << after;
        ASSERT_EQ(header, captions()) << after;
    }
    void stainWindow(HDC screen, HWND window, const RECT& spot) const {
        SetDCBrushColor(screen, RGB(0x12, 0x34, 0x56));
        FillRect(screen, &spot, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        ReleaseDC(window, screen);
    }
    /// Colours the left end of the lower scroll bar and the upper end of the right one.
    void stainBars() const {
        const Shown window = whole();
        stainWindow(GetWindowDC(list()), list(), {2, window.height - 8, 6, window.height - 4});
        stainWindow(GetWindowDC(list()), list(), {window.width - 8, 2, window.width - 4, 6});
    }
    bool isStained(int x, int y) const { return whole().at(x, y) == kStain; }
    bool lowerBarIsStained() const { return isStained(4, whole().height - 6); }
    bool rightBarIsStained() const { return isStained(whole().width - 6, 4); }
    bool hasStyle(LONG_PTR style) const { return (GetWindowLongPtrW(list(), GWL_STYLE) & style) != 0; }
    static Texts texts(int number) { return {base::decimal(number), u"name", u"message"}; }
    void insertFirst(int number) { model_->insert(1, rowOf(texts(number), u"green")); }
    /// So many rows and so wide columns that both scroll bars are there.
    void overfill() {
        widen(9'000);
        for (int row = 1; row <= 40; ++row) insertFirst(row);
        takeMessages();
        ASSERT_TRUE(hasStyle(WS_HSCROLL));
        ASSERT_TRUE(hasStyle(WS_VSCROLL));
    }
};

TEST_F(Win32MovingRows, AreShownAsIfAllWereDrawnAnewAlsoWhenScrollBarsComeAndGo) {
    for (int step = 1; step <= 30; ++step) {
        const widgets::ListView::Batch batch(*model_);
        const int place = 1 + step * 7 % (model_->rowCount() + 1);
        model_->insert(place, rowOf(texts(step), u"green"));
        if (step % 3 == 0) model_->scrollTo(model_->rowCount());
        if (step % 5 == 0) model_->scrollTo(1);
        if (step == 20) widen(9'000);
    }
    expectDrawn("rows came");
    EXPECT_TRUE(hasStyle(WS_HSCROLL));
    EXPECT_TRUE(hasStyle(WS_VSCROLL));
    widen(1'500);
    for (int step = 30; step >= 1; --step) {
        model_->remove(1 + 11 % step);
        expectDrawn("row " + std::to_string(step) + " went");
    }
    EXPECT_FALSE(hasStyle(WS_HSCROLL));
    EXPECT_FALSE(hasStyle(WS_VSCROLL));
    for (int row = 1; row <= 20; ++row) {
        insertFirst(row);
        expectDrawn("row " + std::to_string(row) + " came");
    }
}

TEST_F(Win32MovingRows, HaveTheScrollBarDrawnThatChangesAndNotTheOther) {
    overfill();
    stainBars();
    insertFirst(41);
    EXPECT_FALSE(rightBarIsStained());
    EXPECT_TRUE(lowerBarIsStained());
}

TEST_F(Win32MovingRows, LeaveNothingOutThatWaitedToBeDrawn) {
    overfill();
    stainBars();
    stainWindow(GetDC(header()), header(), {20, 2, 40, 8});
    ASSERT_TRUE(captions().has(kStain));
    RedrawWindow(list(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
    insertFirst(41);
    EXPECT_FALSE(rightBarIsStained());
    EXPECT_FALSE(lowerBarIsStained());
    EXPECT_FALSE(captions().has(kStain));
    expectDrawn("a row came");
}

TEST_F(Win32MovingRows, ShowNoListThatIsHidden) {
    overfill();
    ShowWindow(list(), SW_HIDE);
    insertFirst(41);
    model_->selectAll(true);
    EXPECT_FALSE(hasStyle(WS_VISIBLE));
    EXPECT_EQ(send(LVM_GETITEMCOUNT), 41);
    ShowWindow(list(), SW_SHOW);
    expectDrawn("the list was shown again");
}

TEST_F(Win32MovingRows, LeaveTheFocusWhereItIs) {
    overfill();
    ASSERT_EQ(GetFocus(), list());
    insertFirst(41);
    EXPECT_EQ(GetFocus(), list());
    EXPECT_TRUE(IsWindowVisible(list()));
}

TEST_F(Win32MovingRows, AreScrolledToWithinTheSameBatchAsRowsThatStay) {
    overfill();
    {
        const widgets::ListView::Batch batch(*model_);
        for (int row = 41; row <= 60; ++row) insertFirst(row);
        model_->scrollTo(60);
    }
    EXPECT_EQ(model_->peer()->topRow() + static_cast<int>(send(LVM_GETCOUNTPERPAGE)) - 1, 60);
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    GetScrollInfo(list(), SB_VERT, &bar);
    EXPECT_EQ(bar.nPos, model_->peer()->topRow() - 1);
    EXPECT_EQ(bar.nMax, 59);
    expectDrawn("a scrolled batch");
}

} // namespace
} // namespace cvlog::platform::win32
