#include "platform/win32/list_painter.h"

#include "base/twips.h"
#include "platform/win32/list_cells.h"
#include "platform/win32/screen_units.h"

#include <algorithm>
#include <numeric>
#include <string_view>

namespace cvlog::platform::win32 {

namespace {

// The room in a cell. Text and all of this have to fit in a column that was widened to text and padding: 180
// twips for a plain cell, 420 for the first column with its icon of 240, 650 for others with icons.
constexpr base::Twips kTextMargin = 90; // before the text of a cell without icon
constexpr base::Twips kIconMargin = 60; // before an icon
constexpr base::Twips kIconGap = 60;    // between icon and text
constexpr base::Twips kEndMargin = 30;

constexpr BYTE kUnfaded = 255;
constexpr BYTE kFaded = 110;
constexpr std::size_t kLongestDrawn = 1024; // but never less than a unit a pixel

/// What the drawing of a row changes in the list's device context; saving all of it would cost as much as a text.
class TextState {
public:
    TextState(HDC dc, HFONT font) noexcept
        : dc_(dc), text_(GetTextColor(dc)), back_(GetBkColor(dc)), mode_(GetBkMode(dc)),
          font_(GetCurrentObject(dc, OBJ_FONT)), changed_(font_ != font) {
        if (changed_) SelectObject(dc_, font);
    }
    ~TextState() {
        if (changed_) SelectObject(dc_, font_);
        SetBkMode(dc_, mode_);
        SetBkColor(dc_, back_);
        SetTextColor(dc_, text_);
    }
    TextState(const TextState&) = delete;
    TextState& operator=(const TextState&) = delete;

private:
    HDC dc_;
    COLORREF text_;
    COLORREF back_;
    int mode_;
    HGDIOBJ font_;
    bool changed_;
};

/// Where a text of that width starts.
int startOf(widgets::Alignment alignment, const RECT& area, int width) noexcept {
    switch (alignment) {
    case widgets::Alignment::Left:
        return area.left;
    case widgets::Alignment::Right:
        return area.right - width;
    case widgets::Alignment::Center:
        return area.left + (area.right - area.left - width) / 2;
    }
    return area.left;
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
        begin(draw, dpi);
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: {
        const TextState before(draw.hdc, font_);
        drawRow(draw.hdc, static_cast<int>(draw.dwItemSpec));
        return CDRF_SKIPDEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

void ListPainter::begin(const NMCUSTOMDRAW& draw, int dpi) {
    list_ = draw.hdr.hwndFrom;
    dpi_ = dpi;
    focused_ = GetFocus() == list_;
    focusShown_ = focused_ && !(SendMessageW(list_, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS);
    plain_ = plainColours(model_);
    selected_ = selectedColours(model_, focused_);
    font_ = reinterpret_cast<HFONT>(SendMessageW(list_, WM_GETFONT, 0, 0));
    measured_ = font_ == ownFont_;
    measuredHere_ = measured_ && dpi_ == screenDpi();
    learnFont(draw.hdc);
    findSpans();
    findRows();
}

void ListPainter::learnFont(HDC dc) {
    if (font_ == learntFont_) return;
    const TextState before(dc, font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    textHeight_ = static_cast<int>(metrics.tmHeight);
    plainGlyphs_.lookUp(dc);
    learntFont_ = font_;
}

void ListPainter::findSpans() {
    spans_.clear();
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    const int count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int index = 0; index < std::min(count, model_.columnCount()); ++index) {
        RECT item{};
        SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        MapWindowPoints(header, list_, reinterpret_cast<POINT*>(&item), 2);
        if (item.left < item.right) spans_.push_back({index + 1, item.left, item.right});
    }
    std::sort(spans_.begin(), spans_.end(), [](const Span& a, const Span& b) { return a.left < b.left; });
}

/// Rows are equally high: the one at the top says where all are.
void ListPainter::findRows() {
    firstRow_ = static_cast<int>(SendMessageW(list_, LVM_GETTOPINDEX, 0, 0));
    RECT area{};
    area.left = LVIR_BOUNDS;
    SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(firstRow_), reinterpret_cast<LPARAM>(&area));
    firstTop_ = static_cast<int>(area.top);
    rowHeight_ = static_cast<int>(area.bottom - area.top);
}

void ListPainter::drawRow(HDC dc, int index) {
    if (spans_.empty()) return;
    const int top = firstTop_ + (index - firstRow_) * rowHeight_;
    const RECT area{spans_.front().left, top, spans_.back().right, top + rowHeight_};
    const auto state = static_cast<UINT>(
        SendMessageW(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(index), LVIS_SELECTED | LVIS_FOCUSED));
    const RowColours& colours = state & LVIS_SELECTED ? selected_ : plain_;
    fill(dc, area, colours.back);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colours.text);
    // The window hears of changes only when a batch ends: a row may be gone.
    if (index >= 0 && index < model_.rowCount()) drawCells(dc, index, area);
    if (focusShown_ && (state & LVIS_FOCUSED)) drawFocus(dc, area);
}

void ListPainter::drawCells(HDC dc, int index, const RECT& area) {
    for (const Span& span : spans_) {
        const RECT cell{span.left, area.top, span.right, area.bottom};
        if (RectVisible(dc, &cell)) drawCell(dc, index, span.column, cell);
    }
}

void ListPainter::drawCell(HDC dc, int index, int column, const RECT& cell) {
    const widgets::RowContent& row = model_.row(index + 1);
    const widgets::Alignment alignment = model_.column(column).alignment;
    const bool atLeft = alignment == widgets::Alignment::Left;
    const bool atRight = alignment == widgets::Alignment::Right;
    const int middle = static_cast<int>(cell.top) + rowHeight_ / 2;
    Room room{cell, middle - textHeight_ / 2, alignment};
    room.area.right -= toPixels(atRight ? kTextMargin : kEndMargin, dpi_);
    const int icon = icons_.indexOf(iconOf(row, column));
    if (icon >= 0)
        room.area.left = drawIcon(dc, icon, cell) + toPixels(kIconGap, dpi_);
    else
        room.area.left += toPixels(atLeft ? kTextMargin : kEndMargin, dpi_);
    const base::CompactTextView text = row.columnText(column);
    if (text.empty() || room.area.left >= room.area.right) return;
    if (drawPlain(dc, index, column, room)) return;
    takeText(text, room);
    if (!drawSqueezed(dc, index, column, room)) drawCut(dc, room);
}

/// Draws a text by its glyphs, when it is of the plain kind and was measured to fit.
bool ListPainter::drawPlain(HDC dc, int index, int column, const Room& room) {
    const base::CompactTextView text = model_.row(index + 1).columnText(column);
    if (!measuredHere_ || text.size() > kLongestDrawn || !plainGlyphs_.find(text, glyphs_)) return false;
    const int width = toPixels(model_.cellWidth(index + 1, column), dpi_);
    if (width > room.area.right - room.area.left) return false;
    return ExtTextOutW(dc, startOf(room.alignment, room.area, width), room.baseTop,
                       ETO_GLYPH_INDEX | ETO_CLIPPED, &room.area,
                       reinterpret_cast<const wchar_t*>(glyphs_.data()), static_cast<UINT>(glyphs_.size()),
                       nullptr) != FALSE;
}

void ListPainter::takeText(base::CompactTextView text, const Room& room) {
    const int width = static_cast<int>(room.area.right - room.area.left);
    text_.clear();
    appendShown(text, std::max(kLongestDrawn, static_cast<std::size_t>(width)), text_);
}

/// Draws a text that was measured to fit, but at another resolution, where letters are not wider by exactly as much.
/// False when it fits as it is, or is not to fit.
bool ListPainter::drawSqueezed(HDC dc, int index, int column, const Room& room) {
    const int width = static_cast<int>(room.area.right - room.area.left);
    if (!measured_ || measuredHere_ || toPixels(model_.cellWidth(index + 1, column), dpi_) > width)
        return false;
    const auto units = static_cast<int>(text_.size());
    std::vector<int> ends(text_.size());
    SIZE size{};
    if (!GetTextExtentExPointW(dc, text_.data(), units, 0, nullptr, ends.data(), &size) || size.cx <= width)
        return false;
    for (int& end : ends) end = MulDiv(end, width, static_cast<int>(size.cx));
    std::adjacent_difference(ends.begin(), ends.end(), ends.begin());
    return ExtTextOutW(dc, static_cast<int>(room.area.left), room.baseTop, ETO_CLIPPED, &room.area,
                       text_.data(), static_cast<UINT>(units), ends.data()) != FALSE;
}

void ListPainter::drawCut(HDC dc, const Room& room) {
    cutToWidth(dc, static_cast<int>(room.area.right - room.area.left), text_);
    SIZE size{};
    if (room.alignment != widgets::Alignment::Left)
        GetTextExtentPoint32W(dc, text_.data(), static_cast<int>(text_.size()), &size);
    ExtTextOutW(dc, startOf(room.alignment, room.area, static_cast<int>(size.cx)), room.baseTop, ETO_CLIPPED,
                &room.area, text_.data(), static_cast<UINT>(text_.size()), nullptr);
}

int ListPainter::drawIcon(HDC dc, int icon, const RECT& cell) const noexcept {
    const int side = icons_.side();
    const int left = cell.left + toPixels(kIconMargin, dpi_);
    const int top = cell.top + (cell.bottom - cell.top - side) / 2;
    const int shown = std::min(side, static_cast<int>(cell.right) - left);
    icons_.draw(dc, icon, {left, top}, shown, model_.enabled() ? kUnfaded : kFaded);
    return left + side;
}

} // namespace cvlog::platform::win32
