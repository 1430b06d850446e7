#include "core/column_fit.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::core {

namespace {

constexpr base::Twips kFirstColumnPadding = 420;
constexpr base::Twips kIconCellPadding = 650; // the largest
constexpr base::Twips kCellPadding = 180;
constexpr base::Twips kLeastGain = 2;

// The cells of "Name" and "Result" show an icon before their text.
base::Twips paddingOf(const widgets::ListView& list, int column) {
    if (column == 1) return kFirstColumnPadding;
    const std::u16string& key = list.column(column).key;
    const bool hasIcon = base::equalsIgnoringCase(key, u"Name") || base::equalsIgnoringCase(key, u"Result");
    return hasIcon ? kIconCellPadding : kCellPadding;
}

// What rows need that come one after another: each one that needs more than the least gain widens the column.
base::Twips neededForRows(const widgets::ListView& list, int column, int first, int last) {
    base::Twips width = list.column(column).width;
    const base::Twips padding = paddingOf(list, column);
    const auto widest = list.rememberedWidestCell(column);
    if (widest && *widest + padding - width <= kLeastGain) return width;
    for (int row = first; row <= last; ++row) {
        const base::Twips needed = list.cellWidth(row, column) + padding;
        if (needed - width > kLeastGain) width = needed;
    }
    return width;
}

base::Twips neededForRow(const widgets::ListView& list, int column, int row) {
    const base::Twips width = list.column(column).width;
    const base::Twips text = list.cellWidth(row, column);
    if (text + kIconCellPadding <= width) return width; // whatever the column shows; mostly so
    return std::max(width, text + paddingOf(list, column));
}

base::Twips neededForAll(const widgets::ListView& list, int column) {
    const base::Twips caption = list.textWidth(list.column(column).caption) + kCaptionPadding;
    if (list.rowCount() == 0) return caption;
    return std::max(caption, list.widestCell(column) + paddingOf(list, column));
}

void widen(widgets::ListView& list, int column, base::Twips width) {
    if (width - list.column(column).width <= kLeastGain) return;
    list.setColumnWidth(column, width);
    list.setColumnAlignment(column, widgets::Alignment::Left);
}

} // namespace

void AutoSizeColumns(widgets::ListView& list, int row) {
    const bool all = row == 0 || list.rowCount() == 1;
    widgets::ListView::Batch batch(list);
    for (int column = 1; column <= list.columnCount(); ++column)
        if (list.column(column).width != 0)
            widen(list, column, all ? neededForAll(list, column) : neededForRow(list, column, row));
}

void AutoSizeColumns(widgets::ListView& list, int first, int last) {
    widgets::ListView::Batch batch(list);
    for (int column = 1; column <= list.columnCount(); ++column)
        if (list.column(column).width != 0) widen(list, column, neededForRows(list, column, first, last));
}

} // namespace cvlog::core
