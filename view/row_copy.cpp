#include "view/row_copy.h"

#include "core/column_fit.h"
#include "view/list_set.h"

namespace cvlog::view {

namespace {

bool looksTheSame(const widgets::RowContent& left, const widgets::RowContent& right) {
    return left.text().equalsIgnoringCase(right.text()) && left.tag().equalsIgnoringCase(right.tag());
}

// A row that another place of the source has too is that one, however much it looks like this one.
bool sameRow(const widgets::ListView& source, const widgets::ListView& target, int position) {
    if (source.idAt(position) == target.idAt(position)) return true;
    return looksTheSame(source.row(position), target.row(position)) &&
           source.positionOf(target.idAt(position), position) == 0;
}

void insertMissingRows(const widgets::ListView& source, widgets::ListView& target) {
    for (int i = 1; i <= source.rowCount(); ++i)
        if (target.rowCount() < i || !sameRow(source, target, i)) target.insertCopy(i, source, i);
}

void takeOverSorting(const widgets::ListView& source, widgets::ListView& target) {
    target.setSort(source.sortKey(), source.sortOrder());
    target.setSorted(source.sorted());
    if (source.sorted()) return RefreshSortIcon(target);
    // The header of a list that is not sorted any more still says by what it was.
    const int column = source.sortKey() + 1;
    target.setColumnIcon(column, source.column(column).icon);
}

void showSameRows(const widgets::ListView& source, widgets::ListView& target) {
    if (target.rowCount() == 0) return;
    target.scrollTo(target.rowCount());
    const int top = source.peer() ? source.peer()->topRow() : 0;
    if (top >= 1 && top <= target.rowCount()) target.scrollTo(top);
}

} // namespace

void CopyAllRows(const widgets::ListView& source, widgets::ListView& target) {
    widgets::ListView::Batch batch(target);
    insertMissingRows(source, target);
    takeOverSorting(source, target);
    core::AutoSizeColumns(target, 0);
    showSameRows(source, target);
}

} // namespace cvlog::view
