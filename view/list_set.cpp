#include "view/list_set.h"

#include "core/column_fit.h"
#include "core/log_resources.h"

namespace cvlog::view {

void ResetLists(core::Globals& globals) {
    for (const auto& list : globals.LogViews.all()) {
        widgets::ListView::Batch batch(*list);
        list->setSorted(false);
        list->setSort(0, widgets::SortOrder::Ascending);
        list->clear();
        for (int column = 1; column <= list->columnCount(); ++column)
            list->setColumnIcon(column, u"SortEmpty");
        list->repaint();
    }
}

void ClearLists(core::Globals& globals) {
    for (const auto& list : globals.LogViews.all()) list->clear();
}

void RefreshSortIcon(widgets::ListView& list) {
    if (list.sorted())
        list.setColumnIcon(list.sortKey() + 1,
                           list.sortOrder() == widgets::SortOrder::Ascending ? u"SortDown" : u"SortUp");
}

void PropagateNewRow(core::Globals& globals, const widgets::ListView& source, int position) {
    for (const auto& list : globals.LogViews.all()) {
        widgets::ListView::Batch batch(*list);
        RefreshSortIcon(*list);
        if (list.get() == &source) continue;
        core::AttachImageLists(globals, *list);
        list->insertCopy(list->rowCount() + 1, source, position);
        core::AutoSizeColumns(*list, list->positionOf(source.idAt(position), list->rowCount()));
        list->scrollTo(list->rowCount());
    }
}

} // namespace cvlog::view
