#include "platform/win32/list_cells.h"

#include "platform/win32/wide_text.h"

#include <algorithm>
#include <iterator>

namespace cvlog::platform::win32 {

namespace {

bool isHighSurrogate(char16_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }

std::size_t shownLength(base::CompactTextView text, std::size_t most) noexcept {
    std::size_t length = std::min(text.size(), most);
    if (length < text.size() && length > 0 && isHighSurrogate(text[length - 1])) --length;
    return length;
}

wchar_t shownUnit(char16_t unit) noexcept {
    return unit < u' ' || unit == 0x7F ? L' ' : static_cast<wchar_t>(unit);
}

/// Fills a buffer of `size` units, the ending NUL included.
void copyShown(base::CompactTextView text, wchar_t* buffer, int size) noexcept {
    if (!buffer || size <= 0) return;
    const std::size_t length = shownLength(text, static_cast<std::size_t>(size) - 1);
    for (std::size_t i = 0; i < length; ++i) buffer[i] = shownUnit(text[i]);
    buffer[length] = L'\0';
}

bool hasRow(const widgets::ListView& model, int index) noexcept {
    return index >= 0 && index < model.rowCount();
}

} // namespace

base::CompactTextView iconOf(const widgets::RowContent& row, int column) noexcept {
    return column == 1 ? row.smallIcon() : row.cellIcon(column - 1);
}

void appendShown(base::CompactTextView text, std::size_t most, std::wstring& shown) {
    const std::size_t length = shownLength(text, most);
    for (std::size_t i = 0; i < length; ++i) shown.push_back(shownUnit(text[i]));
}

void answerCell(const widgets::ListView& model, ListImages& icons, NMLVDISPINFOW& question) {
    LVITEMW& item = question.item;
    const bool known = hasRow(model, item.iItem);
    const widgets::RowContent* row = known ? &model.row(item.iItem + 1) : nullptr;
    const int column = item.iSubItem + 1;
    if (item.mask & LVIF_TEXT)
        copyShown(row ? row->columnText(column) : base::CompactTextView(), item.pszText, item.cchTextMax);
    if (item.mask & LVIF_IMAGE) {
        const int index = row ? icons.indexOf(iconOf(*row, column)) : -1;
        item.iImage = index >= 0 ? index : I_IMAGENONE;
    }
}

void answerToolTip(const widgets::ListView& model, NMLVGETINFOTIPW& question) {
    if (!hasRow(model, question.iItem)) return;
    LVHITTESTINFO hit{};
    GetCursorPos(&hit.pt);
    ScreenToClient(question.hdr.hwndFrom, &hit.pt);
    SendMessageW(question.hdr.hwndFrom, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (hit.iItem != question.iItem) return;
    const base::CompactTextView tip = model.row(question.iItem + 1).cellToolTip(hit.iSubItem);
    if (!tip.empty()) copyShown(tip, question.pszText, question.cchTextMax);
}

int findTyped(const widgets::ListView& model, const NMLVFINDITEMW& question) {
    if ((question.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || !question.lvfi.psz) return -1;
    const std::u16string typed = fromWide(question.lvfi.psz);
    const int count = model.rowCount();
    const int start = std::max(0, question.iStart);
    const int searched = question.lvfi.flags & LVFI_WRAP ? count : count - start;
    for (int i = 0; i < searched; ++i) {
        const int index = (start + i) % count;
        if (model.row(index + 1).text().first(typed.size()).equalsIgnoringCase(typed)) return index;
    }
    return -1;
}

} // namespace cvlog::platform::win32
