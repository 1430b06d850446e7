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

} // namespace

void AutoSizeColumns(widgets::ListView& list, int row) {
    const bool all = row == 0 || list.rowCount() == 1;
    widgets::ListView::Batch batch(list);
    for (int column = 1; column <= list.columnCount(); ++column) {
        const base::Twips width = list.column(column).width;
        if (width == 0) continue;
        const base::Twips needed = all ? neededForAll(list, column) : neededForRow(list, column, row);
        if (needed - width > kLeastGain) {
            list.setColumnWidth(column, needed);
            list.setColumnAlignment(column, widgets::Alignment::Left);
        }
    }
}

} // namespace cvlog::core
