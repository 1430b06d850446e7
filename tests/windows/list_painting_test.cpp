// What is seen of a list: its window's own pixels.

#include "tests/windows/list_painting_fixture.h"

#include <array>
#include <utility>

namespace cvlog::platform::win32 {
namespace {

TEST_F(Win32ListPainting, StartsATextAtTheSmallMarginWhereThereIsNoIcon) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u""));
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    for (const auto& [row, column] : {std::pair(1, 1), {1, 2}, {1, 3}, {2, 3}}) {
        const std::vector<int> ink = inked(row, column);
        ASSERT_FALSE(ink.empty());
        EXPECT_GE(ink.front(), pixels(60)) << row << ", " << column;
        EXPECT_LE(ink.front(), pixels(90) + 3) << row << ", " << column;
    }
}

TEST_F(Win32ListPainting, ShowsIconAndTextSideBySide) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    const int side = smallIconSide(windowDpi(window_->list()));
    for (const int column : {1, 2}) {
        const Shown shown = cell(1, column);
        const int left = pixels(60);
        EXPECT_EQ(shown.at(left, shown.height / 2), kGreen & 0xFFFFFFU);
        EXPECT_EQ(shown.at(left + side - 1, shown.height / 2), kGreen & 0xFFFFFFU);
        EXPECT_EQ(shown.at(left - 1, shown.height / 2), systemColour(COLOR_WINDOW));
        const int end = left + side;
        const Shown behind = shown.part(end, shown.width - end);
        EXPECT_FALSE(behind.has(kGreen & 0xFFFFFFU));
        const std::vector<int> ink = behind.columnsNot(systemColour(COLOR_WINDOW));
        ASSERT_FALSE(ink.empty());
        EXPECT_GE(ink.front(), pixels(60));
        EXPECT_LE(ink.front(), pixels(60) + 3);
    }
    EXPECT_FALSE(cell(1, 3).has(kGreen & 0xFFFFFFU));
}

TEST_F(Win32ListPainting, ShowsRowsThatComeOneByOneAsIfAllWereDrawnAnew) {
    for (int row = 1; row <= 30; ++row) { // into the window, and then out of it at the top
        appendInSight({base::decimal(row), u"name", u"message " + base::decimal(row)});
        const Shown seen = allRows();
        RedrawWindow(window_->list(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        ASSERT_EQ(seen, allRows()) << "row " << row;
    }
}

TEST_F(Win32ListPainting, DrawsOneRowForOneThatComesAtTheEndAndAllWhenRowsMove) {
    for (int row = 1; row <= 30; ++row) appendInSight({base::decimal(row), u"name", u"message"});
    takeMessages();
    stain(areaOf(28, 2));
    appendInSight({u"31", u"name", u"message"});
    EXPECT_TRUE(allRows().has(kStain));
    model_->insert(1, rowOf({u"first", u"", u""}, u""));
    EXPECT_FALSE(allRows().has(kStain));
}

TEST_F(Win32ListPainting, ErasesNothingBeforeTheRowsAreDrawnSoThatNothingFlickers) {
    for (int row = 1; row <= 3; ++row) appendInSight({base::decimal(row), u"name", u"message"});
    takeMessages();
    const RECT row = areaOf(2, 2);
    RECT below = row; // beyond the last row
    OffsetRect(&below, 0, 3 * (row.bottom - row.top));
    stain(row);
    stain(below);
    RedrawWindow(window_->list(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW);
    EXPECT_TRUE(shownIn(row).has(kStain)) << "what was there stays until the new is ready";
    EXPECT_TRUE(shownIn(below).has(kStain));
    UpdateWindow(window_->list());
    EXPECT_FALSE(shownIn(row).has(kStain));
    EXPECT_FALSE(shownIn(below).has(kStain));
}

TEST_F(Win32ListPainting, RepaintDrawsTheWholeWindowAnew) {
    for (int row = 1; row <= 3; ++row) appendInSight({base::decimal(row), u"name", u"message"});
    takeMessages();
    const RECT row = areaOf(2, 2);
    RECT below = row;
    OffsetRect(&below, 0, 3 * (row.bottom - row.top));
    const RECT caption{20, 2, 60, 10};
    for (const RECT& spot : {row, below, caption}) stain(spot);
    const HDC captions = GetDC(header());
    SetPixel(captions, 30, 5, RGB(0x12, 0x34, 0x56));
    ReleaseDC(header(), captions);
    model_->repaint();
    for (const RECT& spot : {row, below, caption}) EXPECT_FALSE(shownIn(spot).has(kStain)) << spot.top;
}

TEST_F(Win32ListPainting, ShowsWholeTextsInFittedColumns) {
    const std::vector<Texts> texts = {
        {u"2026-03-14 15:09:26", u"src/very_long_module_name.c", u"0 errors, 108 warnings"},
        {u"WWWWWW", u"a", u"100% of A&B && C"},
        {u"f", u"AVATAR To. Ty, fi ffi", u"\u65E5\u672C\u8A9E\u30C6\u30B9\u30C8"},
        {u"iiiiiiiiiiiiiiiiiiiiiiiiii", u"caf\u00E9 \uD55C\uAD6D\uC5B4", u"x"},
    };
    for (const float points : {8.25F, 9.75F, 12.0F}) {
        base::Font font;
        font.points = points;
        model_->setFont(font);
        for (const Texts& each : texts) {
            model_->clear();
            widen(1);
            model_->append(rowOf(each, u"green"));
            core::AutoSizeColumns(*model_, 0);
            // The caption must not be what gives the room.
            for (int i = 1; i <= 3; ++i)
                model_->setColumnWidth(i, model_->cellWidth(1, i) + (i == 1 ? 420 : i == 2 ? 650 : 180));
            std::array<Shown, 3> fitted;
            for (int i = 1; i <= 3; ++i) fitted[static_cast<std::size_t>(i) - 1] = cell(1, i);
            for (int i = 1; i <= 3; ++i) {
                const Shown& narrow = fitted[static_cast<std::size_t>(i) - 1];
                model_->setColumnWidth(1, i == 1 ? 5000 : 15);
                model_->setColumnWidth(2, i == 2 ? 5000 : 15);
                model_->setColumnWidth(3, i == 3 ? 5000 : 15);
                const Shown wide = cell(1, i);
                EXPECT_EQ(wide.part(0, narrow.width), narrow)
                    << base::toUtf8(each.message) << ", column " << i;
            }
        }
    }
}

TEST_F(Win32ListPainting, DrawsEveryTextAsTheSystemDoes) {
    struct Case {
        std::u16string_view face;
        std::u16string text;
    };
    const std::vector<Case> cases = {
        {u"Tahoma", u"AVATAR To. Ty, fi ffi 100% (\"x\")"},
        {u"Tahoma", u"caf\u00E9 \u65E5\u672C\u8A9E x"},
        {u"Tahoma", u"\u05D0\u05D1\u05D2 abc \u0627\u0644"},
        {u"System", u"a font of bitmaps"},
        {u"Courier New", u"i i i WWW"},
    };
    model_->setColumnWidth(3, 5000); // room for the whole texts
    for (const Case& each : cases) {
        base::Font font;
        font.face = each.face;
        model_->setFont(font);
        model_->clear();
        model_->append(rowOf({u"", u"", each.text}, u""));
        const Shown drawn = cell(1, 3);
        const RECT area = areaOf(1, 3);
        const HDC screen = GetDC(window_->list());
        const HGDIOBJ previous = SelectObject(screen, reinterpret_cast<HFONT>(send(WM_GETFONT)));
        FillRect(screen, &area, GetSysColorBrush(COLOR_WINDOW));
        SetBkMode(screen, TRANSPARENT);
        SetTextColor(screen, GetSysColor(COLOR_WINDOWTEXT));
        RECT room = area;
        room.left += pixels(90);
        room.right -= pixels(30);
        const std::wstring text(each.text.begin(), each.text.end());
        DrawTextW(screen, text.c_str(), -1, &room, DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER | DT_LEFT);
        SelectObject(screen, previous);
        ReleaseDC(window_->list(), screen);
        EXPECT_EQ(cellAsItIs(1, 3), drawn) << base::toUtf8(each.text);
    }
}

TEST_F(Win32ListPainting, DrawsInAFontThatAnotherProgramGaveTheWindow) {
    model_->append(rowOf({u"", u"", u"HHH mmm iii"}, u""));
    base::Font font;
    font.points = 14.0F;
    font.face = u"Courier New";
    model_->setFont(font);
    const Shown wanted = cell(1, 3);
    const FontHandle given = makeFont(font, windowDpi(window_->list()));
    font.points = 8.0F;
    font.face = u"Tahoma";
    model_->setFont(font);
    EXPECT_NE(cell(1, 3), wanted);
    send(WM_SETFONT, reinterpret_cast<WPARAM>(given.get()), TRUE);
    EXPECT_EQ(cell(1, 3), wanted);
}

TEST_F(Win32ListPainting, EndsACutTextWithAnEllipsis) {
    model_->append(rowOf({u"HHHHHHHHHHHHHHHHHHHH", u"", u""}, u""));
    model_->setColumnWidth(1, 5000);
    const Shown whole = cell(1, 1);
    model_->setColumnWidth(1, model_->cellWidth(1, 1) + 60);
    const Shown cut = cell(1, 1);
    EXPECT_NE(whole.part(0, cut.width), cut);
    const base::Twips room = model_->column(1).width - 90 - 30;
    std::u16string longest = u"...";
    while (model_->textWidth(u"H" + longest) <= room) longest = u"H" + longest;
    model_->append(rowOf({longest, u"", u""}, u""));
    EXPECT_EQ(cut, cell(2, 1)) << "as much of the text as fits with a whole ellipsis";
    EXPECT_EQ(whole.part(0, cut.width / 2), cut.part(0, cut.width / 2));
}

TEST_F(Win32ListPainting, HighlightsTheWholeOfASelectedRow) {
    model_->append(rowOf({u"one", u"two", u"three"}, u"green"));
    model_->append(rowOf({u"one", u"two", u"three"}, u"green"));
    model_->select(2, true);
    const auto expectBack = [this](std::uint32_t colour, std::uint32_t text) {
        for (int column = 1; column <= 3; ++column) {
            const Shown shown = cell(2, column);
            for (const int x : {1, shown.width - 2})
                EXPECT_EQ(shown.at(x, shown.height / 2), colour) << column << ", " << x;
            EXPECT_FALSE(shown.has(systemColour(COLOR_WINDOW)) && text != systemColour(COLOR_WINDOW));
            EXPECT_TRUE(shown.has(text)) << column;
        }
    };
    expectBack(systemColour(COLOR_HIGHLIGHT), systemColour(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(cell(1, 3).at(1, 5), systemColour(COLOR_WINDOW));
    SetFocus(parent_);
    expectBack(systemColour(COLOR_BTNFACE), systemColour(COLOR_BTNTEXT));
    model_->setColours({0x8000'0000U | COLOR_BTNFACE, 0x8000'0000U | COLOR_BTNTEXT});
    expectBack(systemColour(COLOR_HIGHLIGHT),
               systemColour(COLOR_HIGHLIGHTTEXT)); // the quiet one would not be seen
}

TEST_F(Win32ListPainting, LeavesNothingOfAnEarlierSelectionAtTheEdge) {
    for (int i = 0; i < 3; ++i) model_->append(rowOf({u"one", u"two", u"three"}, u"green"));
    model_->select(1, true);
    model_->focusRow(1);
    const Shown selected = cell(1, 1);
    EXPECT_EQ(selected.at(0, selected.height / 2), systemColour(COLOR_HIGHLIGHT));
    key(VK_DOWN);
    UpdateWindow(window_->list());
    const Shown left = cellAsItIs(1, 1);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(left.at(x, left.height / 2), systemColour(COLOR_WINDOW)) << x;
    const Shown chosen = cellAsItIs(2, 1);
    for (int x = 0; x < 4; ++x)
        EXPECT_EQ(chosen.at(x, chosen.height / 2), systemColour(COLOR_HIGHLIGHT)) << x;
}

TEST_F(Win32ListPainting, FramesTheFocusedRowWhereTheFocusIsVisible) {
    model_->append(rowOf({u"", u"", u""}, u""));
    model_->append(rowOf({u"", u"", u""}, u""));
    SendMessageW(parent_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    SendMessageW(window_->list(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    model_->focusRow(1);
    EXPECT_FALSE(inked(1, 2).empty());
    EXPECT_TRUE(inked(2, 2).empty());
    SendMessageW(window_->list(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0);
    const bool hidden = (send(WM_QUERYUISTATE) & UISF_HIDEFOCUS) != 0; // not every system keeps it
    EXPECT_EQ(inked(1, 2).empty(), hidden);
    SendMessageW(window_->list(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    EXPECT_FALSE(inked(1, 2).empty());
    SetFocus(parent_);
    EXPECT_TRUE(inked(1, 2).empty());
}

TEST_F(Win32ListPainting, GreysADisabledList) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    model_->setColours({0x00FFFFFFU, 0x000000FFU});
    EXPECT_TRUE(cell(1, 3).has(0xFF0000U));
    model_->setEnabled(false);
    const Shown shown = cell(1, 2);
    EXPECT_EQ(shown.at(1, 1), systemColour(COLOR_BTNFACE));
    EXPECT_TRUE(shown.has(systemColour(COLOR_GRAYTEXT)));
    EXPECT_FALSE(shown.has(0xFF0000U));
    EXPECT_FALSE(shown.has(kGreen & 0xFFFFFFU)) << "the icon is faded";
    EXPECT_NE(shown.at(pixels(60) + 2, shown.height / 2), systemColour(COLOR_BTNFACE)) << "and still there";
    model_->select(2, true);
    EXPECT_NE(cell(2, 3).at(1, 1), cell(1, 3).at(1, 1));
    model_->setEnabled(true);
    EXPECT_TRUE(cell(1, 3).has(0xFF0000U));
}

TEST_F(Win32ListPainting, DrawsInPlainColours) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u""));
    model_->setColours({0x00112233U, 0x00FFEEDDU});
    const Shown shown = cell(1, 3);
    EXPECT_EQ(shown.at(1, 1), 0x332211U);
    EXPECT_TRUE(shown.has(0xDDEEFFU));
}

TEST_F(Win32ListPainting, FollowsTheAlignmentOfAColumn) {
    model_->append(rowOf({u"", u"HHH", u"HHH"}, u""));
    const int width = cell(1, 3).width;
    model_->setColumnAlignment(3, widgets::Alignment::Right);
    const std::vector<int> right = inked(1, 3);
    ASSERT_FALSE(right.empty());
    EXPECT_LE(width - 1 - right.back(), pixels(90) + 4);
    EXPECT_GE(width - 1 - right.back(), pixels(60));
    model_->setColumnAlignment(3, widgets::Alignment::Center);
    const std::vector<int> middle = inked(1, 3);
    ASSERT_FALSE(middle.empty());
    EXPECT_NEAR(middle.front(), width - 1 - middle.back(), 5);
}

TEST_F(Win32ListPainting, FollowsTheDisplayOrderOfColumns) {
    model_->append(rowOf({u"", u"", u"HHH"}, u"green"));
    model_->setColumnPosition(3, 1);
    EXPECT_EQ(areaOf(1, 3).left, 0);
    EXPECT_FALSE(cell(1, 3).has(kGreen & 0xFFFFFFU));
    EXPECT_FALSE(inked(1, 3).empty());
    EXPECT_TRUE(cell(1, 1).has(kGreen & 0xFFFFFFU));
}

TEST_F(Win32ListPainting, KeepsIconAndTextInsideNarrowCells) {
    model_->append(rowOf({u"HHH", u"HHH", u""}, u"green"));
    model_->setColumnWidth(2, 120);
    EXPECT_TRUE(cell(1, 2).has(kGreen & 0xFFFFFFU));
    EXPECT_TRUE(inked(1, 3).empty());
}

TEST_F(Win32ListPainting, ShowsControlCharactersAsBlanks) {
    model_->append(rowOf({u"", u"a\tb\r\nc" + std::u16string(1, u'\0') + u"d\x7F", u""}, u""));
    model_->append(rowOf({u"", u"a b  c d ", u""}, u""));
    EXPECT_EQ(cell(1, 2), cell(2, 2));
    EXPECT_FALSE(inked(1, 2).empty());
}

TEST_F(Win32ListPainting, ShowsTheStartOfEndlessTexts) {
    model_->append(rowOf({u"", u"", std::u16string(2'000'000, u'H')}, u""));
    model_->append(rowOf({u"", u"", std::u16string(1'000, u'H')}, u""));
    EXPECT_EQ(cell(1, 3), cell(2, 3));
}

TEST_F(Win32ListPainting, LeavesRowsBlankThatAreGoneInTheMidstOfABatch) {
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    model_->append(rowOf({u"HHH", u"HHH", u"HHH"}, u"green"));
    const widgets::ListView::Batch batch(*model_);
    model_->remove(2);
    EXPECT_FALSE(inked(1, 2).empty());
    EXPECT_TRUE(inked(2, 2).empty());
}

} // namespace
} // namespace cvlog::platform::win32
