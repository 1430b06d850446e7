#pragma once

#include "platform/win32/list_colours.h"
#include "platform/win32/list_images.h"
#include "platform/win32/plain_glyphs.h"
#include "widgets/list_view.h"

#include <string>
#include <vector>

namespace cvlog::platform::win32 {

/// Draws the rows of a list window, asked by the window's custom draw, into the buffer that the window shows at
/// once. The system's own drawing keeps the room of an icon in every cell, also where there is none, and so
/// cuts texts in columns that were fitted to them. Here a cell has room for an icon only where it has one.
class ListPainter {
public:
    /// Both outlive the painter.
    ListPainter(const widgets::ListView& model, ListImages& icons) noexcept : model_(model), icons_(icons) {}

    /// The answer to the list's NM_CUSTOMDRAW.
    LRESULT answer(const NMLVCUSTOMDRAW& question, int dpi);
    /// The window has another font now: the model's.
    void useFont(HFONT font) noexcept {
        ownFont_ = font;
        learntFont_ = nullptr; // a new font may have the handle of one that is gone
    }

private:
    struct Span {
        int column; // from 1
        int left;
        int right;
    };

    /// A text's place in its cell.
    struct Room {
        RECT area;
        int baseTop; // of the text's box
        widgets::Alignment alignment;
    };

    void begin(const NMCUSTOMDRAW& draw, int dpi);
    void findSpans();
    void findRows();
    void learnFont(HDC dc);
    void drawRow(HDC dc, int index);
    void drawCells(HDC dc, int index, const RECT& area);
    void drawCell(HDC dc, int index, int column, const RECT& cell);
    /// Answers where the icon ends.
    int drawIcon(HDC dc, int icon, const RECT& cell) const noexcept;
    bool drawPlain(HDC dc, int index, int column, const Room& room);
    void takeText(base::CompactTextView text, const Room& room);
    bool drawSqueezed(HDC dc, int index, int column, const Room& room);
    void drawCut(HDC dc, const Room& room);

    const widgets::ListView& model_;
    ListImages& icons_;

    // Of the drawing under way.
    HWND list_ = nullptr;
    int dpi_ = 0;
    bool focused_ = false;
    bool focusShown_ = false;
    bool measured_ = false;     // the model's widths are of the font that is drawn
    bool measuredHere_ = false; // and in pixels of this window
    HFONT font_ = nullptr;
    int firstRow_ = 0; // the one at the top, from 0
    int firstTop_ = 0;
    int rowHeight_ = 0;
    RowColours plain_{};
    RowColours selected_{};
    std::vector<Span> spans_; // the columns that have a width, in display order
    std::wstring text_;
    std::vector<WORD> glyphs_;

    // Of the font.
    HFONT ownFont_ = nullptr;
    HFONT learntFont_ = nullptr;
    int textHeight_ = 0;
    PlainGlyphs plainGlyphs_;
};

} // namespace cvlog::platform::win32
