#pragma once

#include "platform/win32/list_colours.h"
#include "platform/win32/list_images.h"
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

private:
    struct Span {
        int column; // from 1
        int left;
        int right;
    };

    void begin(HWND list, int dpi);
    void drawRow(HDC dc, int index);
    void drawCells(HDC dc, const widgets::RowContent& row, const RECT& area);
    void drawCell(HDC dc, const widgets::RowContent& row, int column, const RECT& cell);
    /// Answers where the icon ends.
    int drawIcon(HDC dc, int icon, const RECT& cell) const noexcept;
    bool focusShown(UINT state) const noexcept;

    const widgets::ListView& model_;
    ListImages& icons_;

    // Of the drawing under way.
    HWND list_ = nullptr;
    int dpi_ = 0;
    bool focused_ = false;
    RowColours plain_{};
    RowColours selected_{};
    std::vector<Span> spans_; // the columns that have a width, in display order
    std::wstring text_;
};

} // namespace cvlog::platform::win32
