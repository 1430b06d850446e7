// A list on screens of other resolutions, where one window's is not another's.

#include "tests/windows/list_painting_fixture.h"

#include <array>

namespace cvlog::platform::win32 {
namespace {

class Win32ListResolution : public Win32ListPainting, public testing::WithParamInterface<int> {
protected:
    Win32ListResolution() { window_->fixResolution(GetParam()); }

    int there(base::Twips twips) const { return toPixels(twips, GetParam()); }

    RECT headerItem(int column) const {
        RECT item{};
        SendMessageW(header(), HDM_GETITEMRECT, static_cast<WPARAM>(column - 1),
                     reinterpret_cast<LPARAM>(&item));
        return item;
    }

    /// How tall what stands last in a cell is: dots are lower than letters.
    static int heightOfLastInk(const Shown& cell) {
        const std::vector<int> ink = cell.columnsNot(systemColour(COLOR_WINDOW));
        if (ink.empty()) return 0;
        int first = cell.height;
        int last = -1;
        for (int x = std::max(0, ink.back() - 2); x <= ink.back(); ++x)
            for (int y = 0; y < cell.height; ++y)
                if (cell.at(x, y) != systemColour(COLOR_WINDOW)) {
                    first = std::min(first, y);
                    last = std::max(last, y);
                }
        return last - first + 1;
    }

    /// The columns as wide as the log makes them for a row whose captions need no room.
    void fitToTexts() {
        widen(1);
        core::AutoSizeColumns(*model_, 0);
        for (int i = 1; i <= 3; ++i)
            model_->setColumnWidth(i, model_->cellWidth(1, i) + (i == 1 ? 420 : i == 2 ? 650 : 180));
    }
};

INSTANTIATE_TEST_SUITE_P(Percents, Win32ListResolution, testing::Values(96, 120, 144, 192, 288),
                         [](const auto& dpi) { return std::to_string(dpi.param * 100 / 96); });

TEST_P(Win32ListResolution, FontColumnsAndIconsHaveTheSameSizeOnEveryScreen) {
    model_->setFont({u"Tahoma", 20.0F, 400, false});
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(send(WM_GETFONT)), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -MulDiv(20, GetParam(), 72));
    for (int column = 1; column <= 3; ++column)
        EXPECT_EQ(headerItem(column).right - headerItem(column).left, there(1500)) << column;
    int side = 0;
    ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, LVSIL_SMALL)), &side, &side);
    EXPECT_EQ(side, smallIconSide(GetParam()));
    const RECT cellArea = areaOf(1, 1);
    EXPECT_GE(cellArea.bottom - cellArea.top, std::max(side, MulDiv(20, GetParam(), 72))) << "room for both";
}

TEST_P(Win32ListResolution, IconsAndTextsKeepTheirMargins) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    const Shown first = cell(1, 1);
    const int side = smallIconSide(GetParam());
    const int left = there(60);
    EXPECT_EQ(first.at(left, first.height / 2), kGreen & 0xFFFFFFU);
    EXPECT_EQ(first.at(left + side - 1, first.height / 2), kGreen & 0xFFFFFFU);
    EXPECT_EQ(first.at(left - 1, first.height / 2), systemColour(COLOR_WINDOW));
    const std::vector<int> text =
        first.part(left + side, first.width - left - side).columnsNot(systemColour(COLOR_WINDOW));
    ASSERT_FALSE(text.empty());
    EXPECT_GE(text.front(), there(60));
    EXPECT_LE(text.front(), there(60) + there(45));
    const std::vector<int> withoutIcon = inked(1, 3);
    ASSERT_FALSE(withoutIcon.empty());
    EXPECT_GE(withoutIcon.front(), there(60));
    EXPECT_LE(withoutIcon.front(), there(90) + there(45));
}

TEST_P(Win32ListResolution, FittedColumnsShowTheLastLetterOfATextAndNoEllipsis) {
    const std::vector<Texts> texts = {
        {u"2026-03-14 15:09:26 H", u"src/very_long_module_name.H", u"0 errors, 108 warnings H"},
        {u"WWWWWWH", u"aH", u"100% of A&B && H"},
        {u"fH", u"AVATAR To. Ty, fi ffiH", u"\u65E5\u672C\u8A9E\u30C6\u30B9\u30C8H"},
        {u"iiiiiiiiiiiiiiiiiiiiiiiiiiH", u"caf\u00E9 \uD55C\uAD6D\uC5B4H", u"xH"},
    };
    for (const Texts& each : texts) {
        model_->clear();
        model_->append(rowOf(each, u"green"));
        fitToTexts();
        const std::array widths = {model_->column(1).width, model_->column(2).width, model_->column(3).width};
        for (int column = 1; column <= 3; ++column) {
            for (int i = 1; i <= 3; ++i) // one at a time, so that the window is wide enough
                model_->setColumnWidth(i, i == column ? widths[static_cast<std::size_t>(i) - 1] : 15);
            EXPECT_GT(heightOfLastInk(cell(1, column)), MulDiv(5, GetParam(), 96))
                << base::toUtf8(each.message) << ", column " << column;
        }
        model_->setColumnWidth(3, widths[2] - 240);
        EXPECT_LE(heightOfLastInk(cell(1, 3)), MulDiv(3, GetParam(), 96)) << "dots, where it does not fit";
    }
}

TEST_P(Win32ListResolution, AColumnThatTheUserDragsKeepsItsWidthInTwips) {
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = there(3000);
    SendMessageW(header(), HDM_SETITEMW, 1, reinterpret_cast<LPARAM>(&item));
    takeMessages();
    EXPECT_NEAR(model_->column(2).width, 3000, 1440 / GetParam() + 1);
}

TEST_F(Win32ListPainting, LooksAtItsResolutionAgainWhenItsParentCameToAnotherScreen) {
    constexpr UINT kDpiChangedAfterParent = 0x02E3;
    int changes = 0;
    window_->viewChanged = [&changes] { ++changes; };
    SendMessageW(window_->frame(), kDpiChangedAfterParent, 0, 0);
    EXPECT_EQ(changes, 1);
}

TEST_P(Win32ListResolution, ComesBackFromAnotherScreenAsItWas) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    const Shown before = cell(1, 1);
    window_->fixResolution(GetParam() == 96 ? 192 : 96);
    EXPECT_NE(cell(1, 1), before);
    window_->fixResolution(GetParam());
    EXPECT_EQ(cell(1, 1), before);
}

} // namespace
} // namespace cvlog::platform::win32
