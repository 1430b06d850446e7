#include "platform/win32/list_painter.h"

#include "base/twips.h"
#include "platform/win32/list_cells.h"
#include "platform/win32/screen_units.h"

#include <algorithm>
#include <string_view>

namespace cvlog::platform::win32 {

namespace {

// The room in a cell. Text and all of this have to fit in a column that was widened to text and padding: 180
// twips for a plain cell, 420 for the first column with its icon of 240, 650 for others with icons.
constexpr base::Twips kTextMargin = 90; // before the text of a cell without icon
constexpr base::Twips kIconMargin = 60; // before an icon
constexpr base::Twips kIconGap = 60;    // between icon and text
constexpr base::Twips kEndMargin = 30;

constexpr BYTE kOpaque = 255;
constexpr BYTE kFaded = 110;
constexpr std::size_t kLongestDrawn = 1024; // but never less than a unit a pixel

UINT drawingFormat(widgets::Alignment alignment) noexcept {
    constexpr UINT kFormat = DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER;
    switch (alignment) {
    case widgets::Alignment::Left:
        return kFormat | DT_LEFT;
    case widgets::Alignment::Right:
        return kFormat | DT_RIGHT;
    case widgets::Alignment::Center:
        return kFormat | DT_CENTER;
    }
    return kFormat;
}

void fill(HDC dc, const RECT& area, COLORREF colour) noexcept {
    SetBkColor(dc, colour);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

int fittingUnits(HDC dc, const std::wstring& text, int width) noexcept {
    int fitting = 0;
    SIZE size{};
    GetTextExtentExPointW(dc, text.data(), static_cast<int>(text.size()), std::max(0, width), &fitting,
                          nullptr, &size);
    return size.cx <= width ? static_cast<int>(text.size()) : fitting;
}

/// Cuts a text that is wider, so that it fits with an ellipsis behind it. Not all systems' DT_END_ELLIPSIS does.
void cutToWidth(HDC dc, int width, std::wstring& text) {
    if (fittingUnits(dc, text, width) == static_cast<int>(text.size())) return;
    constexpr std::wstring_view kEllipsis = L"...";
    SIZE ellipsis{};
    GetTextExtentPoint32W(dc, kEllipsis.data(), static_cast<int>(kEllipsis.size()), &ellipsis);
    auto kept = static_cast<std::size_t>(fittingUnits(dc, text, width - static_cast<int>(ellipsis.cx)));
    if (kept > 0 && IS_HIGH_SURROGATE(text[kept - 1])) --kept; // never half a character
    text.replace(kept, std::wstring::npos, kEllipsis);
}

/// The inverting frame takes its pattern from the colours of the text.
void drawFocus(HDC dc, const RECT& area) noexcept {
    SetBkColor(dc, RGB(255, 255, 255));
    SetTextColor(dc, RGB(0, 0, 0));
    DrawFocusRect(dc, &area);
}

} // namespace

LRESULT ListPainter::answer(const NMLVCUSTOMDRAW& question, int dpi) {
    const NMCUSTOMDRAW& draw = question.nmcd;
    switch (draw.dwDrawStage) {
    case CDDS_PREPAINT:
        begin(draw.hdr.hwndFrom, dpi);
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: {
        const int saved = SaveDC(draw.hdc);
        drawRow(draw.hdc, static_cast<int>(draw.dwItemSpec));
        RestoreDC(draw.hdc, saved);
        return CDRF_SKIPDEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

void ListPainter::begin(HWND list, int dpi) {
    list_ = list;
    dpi_ = dpi;
    focused_ = GetFocus() == list;
    plain_ = plainColours(model_);
    selected_ = selectedColours(model_, focused_);
    spans_.clear();
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const int count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int index = 0; index < std::min(count, model_.columnCount()); ++index) {
        RECT item{};
        SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        MapWindowPoints(header, list, reinterpret_cast<POINT*>(&item), 2);
        if (item.left < item.right) spans_.push_back({index + 1, item.left, item.right});
    }
    std::sort(spans_.begin(), spans_.end(), [](const Span& a, const Span& b) { return a.left < b.left; });
}

void ListPainter::drawRow(HDC dc, int index) {
    if (spans_.empty()) return;
    RECT area{};
    area.left = LVIR_BOUNDS;
    if (!SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&area)))
        return;
    area.left = spans_.front().left;
    area.right = spans_.back().right;
    const auto state = static_cast<UINT>(
        SendMessageW(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(index), LVIS_SELECTED | LVIS_FOCUSED));
    const RowColours& colours = state & LVIS_SELECTED ? selected_ : plain_;
    SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(list_, WM_GETFONT, 0, 0)));
    fill(dc, area, colours.back);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colours.text);
    // The window hears of changes only when a batch ends: a row may be gone.
    if (index >= 0 && index < model_.rowCount()) drawCells(dc, model_.row(index + 1), area);
    if (focusShown(state)) drawFocus(dc, area);
}

void ListPainter::drawCells(HDC dc, const widgets::RowContent& row, const RECT& area) {
    for (const Span& span : spans_) {
        const RECT cell{span.left, area.top, span.right, area.bottom};
        if (RectVisible(dc, &cell)) drawCell(dc, row, span.column, cell);
    }
}

void ListPainter::drawCell(HDC dc, const widgets::RowContent& row, int column, const RECT& cell) {
    const widgets::Alignment alignment = model_.column(column).alignment;
    const bool atLeft = alignment == widgets::Alignment::Left;
    const bool atRight = alignment == widgets::Alignment::Right;
    RECT room = cell;
    room.right -= toPixels(atRight ? kTextMargin : kEndMargin, dpi_);
    const int icon = icons_.indexOf(iconOf(row, column));
    if (icon >= 0)
        room.left = drawIcon(dc, icon, cell) + toPixels(kIconGap, dpi_);
    else
        room.left += toPixels(atLeft ? kTextMargin : kEndMargin, dpi_);
    if (room.left >= room.right) return;
    const int width = static_cast<int>(room.right - room.left);
    text_.clear();
    appendShown(row.columnText(column), std::max(kLongestDrawn, static_cast<std::size_t>(width)), text_);
    cutToWidth(dc, width, text_);
    DrawTextW(dc, text_.data(), static_cast<int>(text_.size()), &room, drawingFormat(alignment));
}

int ListPainter::drawIcon(HDC dc, int icon, const RECT& cell) const noexcept {
    const int side = icons_.side();
    const int left = cell.left + toPixels(kIconMargin, dpi_);
    const int top = cell.top + (cell.bottom - cell.top - side) / 2;
    const int shown = std::min(side, static_cast<int>(cell.right) - left);
    icons_.draw(dc, icon, {left, top}, shown, model_.enabled() ? kOpaque : kFaded);
    return left + side;
}

bool ListPainter::focusShown(UINT state) const noexcept {
    return focused_ && (state & LVIS_FOCUSED) &&
           !(SendMessageW(list_, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS);
}

} // namespace cvlog::platform::win32
