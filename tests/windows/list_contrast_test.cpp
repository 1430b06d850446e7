// A list in the colours of a contrast scheme: few of them, and some of them alike.

#include "tests/windows/list_painting_fixture.h"

#include <array>

namespace cvlog::platform::win32 {
namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kYellow = RGB(255, 255, 0);
constexpr COLORREF kCyan = RGB(0, 255, 255);
constexpr COLORREF kLime = RGB(0, 255, 0);

/// Black windows with white text and a cyan selection; buttons have the colours of windows.
class Win32ListContrast : public Win32ListPainting {
protected:
    static constexpr std::array kElements = {COLOR_WINDOW,        COLOR_WINDOWTEXT, COLOR_HIGHLIGHT,
                                             COLOR_HIGHLIGHTTEXT, COLOR_BTNFACE,    COLOR_BTNTEXT,
                                             COLOR_GRAYTEXT};
    static constexpr std::array kScheme = {kBlack, kWhite, kCyan, kBlack, kBlack, kYellow, kLime};

    Win32ListContrast() {
        for (std::size_t i = 0; i < kElements.size(); ++i) before_[i] = GetSysColor(kElements[i]);
        use(kScheme.data());
        for (int i = 0; i < 2; ++i) model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    }
    ~Win32ListContrast() override { use(before_.data()); }

    void use(const COLORREF* colours) const {
        SetSysColors(static_cast<int>(kElements.size()), kElements.data(), colours);
        SendMessageW(services_.host.handle(), WM_SYSCOLORCHANGE, 0, 0);
    }

    /// Back and text of every column, and nothing of the other pair.
    void expectRow(int row, COLORREF back, COLORREF text) const {
        for (int column = 1; column <= 3; ++column) {
            const Shown shown = cell(row, column);
            EXPECT_EQ(shown.at(1, shown.height / 2), seen(back)) << row << ", " << column;
            EXPECT_TRUE(shown.has(seen(text))) << row << ", " << column;
        }
    }
    static std::uint32_t seen(COLORREF colour) {
        return static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
               static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
    }

    std::array<COLORREF, kElements.size()> before_{};
};

TEST_F(Win32ListContrast, RowsHaveTheSchemesColours) {
    expectRow(1, kBlack, kWhite);
    EXPECT_TRUE(cell(1, 1).has(kGreen & 0xFFFFFFU)) << "icons keep theirs";
}

TEST_F(Win32ListContrast, ASelectedRowIsSeenWithTheFocusAndWithout) {
    model_->select(2, true);
    expectRow(1, kBlack, kWhite);
    expectRow(2, kCyan, kBlack);
    SetFocus(parent_);
    expectRow(2, kCyan, kBlack); // the quiet colour is that of the list here
}

TEST_F(Win32ListContrast, TheFocusIsSeenOnBothGrounds) {
    SendMessageW(parent_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    SendMessageW(window_->list(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    for (const bool selected : {false, true}) {
        model_->select(1, selected);
        model_->focusRow(2);
        const Shown without = cell(1, 2);
        model_->focusRow(1);
        EXPECT_NE(cell(1, 2), without) << selected;
    }
}

TEST_F(Win32ListContrast, ADisabledListIsReadable) {
    model_->setEnabled(false);
    expectRow(1, kBlack, kLime);
    model_->select(2, true);
    expectRow(2, kLime, kBlack);
}

TEST_F(Win32ListContrast, TheUsualColoursComeBack) {
    use(before_.data());
    expectRow(1, before_[0], before_[1]);
}

} // namespace
} // namespace cvlog::platform::win32
