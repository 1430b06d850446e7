#include "view/sorting.h"

#include "core/log_resources.h"
#include "core/log_row_kind.h"
#include "details/expansion.h"
#include "view/list_set.h"

namespace cvlog::view {

namespace {

widgets::SortOrder opposite(widgets::SortOrder order) noexcept {
    return order == widgets::SortOrder::Ascending ? widgets::SortOrder::Descending
                                                  : widgets::SortOrder::Ascending;
}

bool hasChildRow(const widgets::ListView& list) noexcept {
    for (int position = 1; position <= list.rowCount(); ++position)
        if (core::IsChildRow(list.row(position))) return true;
    return false;
}

void sortList(core::Globals& globals, widgets::ListView& list, int oldColumn, int column) {
    widgets::ListView::Batch batch(list);
    core::AttachImageLists(globals, list);
    list.setColumnIcon(oldColumn, {});
    // The key alone tells whether the order turns: an expansion has switched sorting off without the user's doing.
    const bool sameColumn = list.sortKey() == column - 1;
    list.setSort(column - 1, sameColumn ? opposite(list.sortOrder()) : list.sortOrder());
    if (!list.sorted()) list.setSorted(true);
    RefreshSortIcon(list);
}

} // namespace

void SortByColumn(core::Globals& globals, core::LogViews::ListRef clicked, int column) {
    if (globals.ExpansionBusy) return; // children would be torn from their entries
    details::CollapseEntry(globals, clicked, details::kAllEntries);
    if (hasChildRow(*clicked)) return; // the host opened an entry, or took the list away, meanwhile
    const int oldColumn = clicked->sortKey() + 1; // of the moment before the first list changes
    for (const auto& list : globals.LogViews.all()) sortList(globals, *list, oldColumn, column);
    if (const int selected = clicked->selectedRow()) clicked->scrollTo(selected);
}

} // namespace cvlog::view
