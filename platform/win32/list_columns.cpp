#include "platform/win32/list_columns.h"

#include "base/failure.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/wide_text.h"

namespace cvlog::platform::win32 {

namespace {

int alignmentFormat(widgets::Alignment alignment) noexcept {
    switch (alignment) {
    case widgets::Alignment::Left:
        return LVCFMT_LEFT;
    case widgets::Alignment::Right:
        return LVCFMT_RIGHT;
    case widgets::Alignment::Center:
        return LVCFMT_CENTER;
    }
    return LVCFMT_LEFT;
}

std::vector<int> shownOrder(HWND list, std::size_t count) {
    std::vector<int> order(count);
    SendMessageW(list, LVM_GETCOLUMNORDERARRAY, count, reinterpret_cast<LPARAM>(order.data()));
    return order;
}

} // namespace

ListColumns::Shown ListColumns::wanted(int index, int dpi) const {
    const widgets::Column& column = model_.column(index + 1);
    const auto& icons = model_.headerIcons();
    return {column.caption, toPixels(column.width, dpi), alignmentFormat(column.alignment),
            icons ? icons->indexOf(column.icon) : -1};
}

void ListColumns::push(HWND list, int dpi) {
    pushing_ = true;
    const base::ScopeExit done([this] { pushing_ = false; });
    const auto count = static_cast<std::size_t>(model_.columnCount());
    while (shown_.size() > count) {
        SendMessageW(list, LVM_DELETECOLUMN, shown_.size() - 1, 0);
        shown_.pop_back();
    }
    while (shown_.size() < count) insert(list, static_cast<int>(shown_.size()));
    for (std::size_t i = 0; i < count; ++i) show(list, static_cast<int>(i), wanted(static_cast<int>(i), dpi));
    if (count > 0) pushOrder(list);
}

void ListColumns::forget() noexcept {
    for (Shown& column : shown_) column.width = -1;
}

void ListColumns::insert(HWND list, int index) {
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
    shown_.emplace_back();
}

void ListColumns::show(HWND list, int index, const Shown& wanted) {
    Shown& shown = shown_[static_cast<std::size_t>(index)];
    std::wstring caption = shownText(wanted.caption);
    LVCOLUMNW column{};
    column.mask = (wanted.caption != shown.caption ? LVCF_TEXT : 0U) |
                  (wanted.width != shown.width ? LVCF_WIDTH : 0U) |
                  (wanted.format != shown.format ? LVCF_FMT : 0U);
    column.pszText = caption.data();
    column.cx = wanted.width;
    column.fmt = wanted.format;
    if (column.mask != 0)
        SendMessageW(list, LVM_SETCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
    if (wanted.format != shown.format || wanted.icon != shown.icon) {
        HDITEMW item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        item.fmt = HDF_STRING | wanted.format | (wanted.icon >= 0 ? HDF_IMAGE | HDF_BITMAP_ON_RIGHT : 0);
        item.iImage = wanted.icon;
        SendMessageW(headerOf(list), HDM_SETITEMW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&item));
    }
    shown = wanted;
}

void ListColumns::pushOrder(HWND list) {
    std::vector<int> order(shown_.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[static_cast<std::size_t>(model_.column(static_cast<int>(i) + 1).position - 1)] =
            static_cast<int>(i);
    if (order != shownOrder(list, order.size()))
        SendMessageW(list, LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
}

bool ListColumns::refuses(const NMHEADERW& request) const noexcept {
    const UINT code = request.hdr.code;
    const bool wouldResize = code == HDN_BEGINTRACKW || code == HDN_BEGINTRACKA ||
                             code == HDN_DIVIDERDBLCLICKW || code == HDN_DIVIDERDBLCLICKA;
    const auto index = static_cast<std::size_t>(request.iItem);
    return wouldResize && index < shown_.size() && shown_[index].width == 0;
}

bool ListColumns::userChanged(const NMHEADERW& change, bool refused, int dpi) noexcept {
    if (pushing_ || !change.pitem || static_cast<std::size_t>(change.iItem) >= shown_.size()) return false;
    const UINT code = change.hdr.code;
    if ((code == HDN_ITEMCHANGEDW || code == HDN_ITEMCHANGEDA) && (change.pitem->mask & HDI_WIDTH)) {
        int& width = shown_[static_cast<std::size_t>(change.iItem)].width;
        if (width != change.pitem->cxy)
            model_.userResizedColumn(change.iItem + 1, toTwips(change.pitem->cxy, dpi));
        width = change.pitem->cxy;
        return false;
    }
    if (code != HDN_ENDDRAG || refused) return false;
    const int order = change.pitem->iOrder;
    if (order >= 0 && order < static_cast<int>(shown_.size()))
        model_.userMovedColumn(change.iItem + 1, order + 1);
    return true;
}

void ListColumns::pullOrder(HWND list) {
    if (static_cast<int>(shown_.size()) != model_.columnCount()) return;
    const std::vector<int> order = shownOrder(list, shown_.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const int position = static_cast<int>(i) + 1;
        if (model_.column(order[i] + 1).position != position) model_.userMovedColumn(order[i] + 1, position);
    }
}

} // namespace cvlog::platform::win32
