#include "details/expansion.h"

#include "base/failure.h"
#include "core/column_fit.h"
#include "core/log_row_kind.h"
#include "details/expand_entry.h"

#include <deque>

namespace cvlog::details {

namespace {

constexpr std::int32_t kHourglass = 11;
constexpr std::int32_t kDefaultPointer = 0;

void setPointer(core::Globals& globals, std::int32_t pointer) noexcept {
    base::ignoring([&] { globals.store.Workspace.setMainWindowCursor(pointer); });
}

// The last of the child rows that follow an entry; the entry itself when there is none.
int lastChildOf(const widgets::ListView& list, int position) {
    while (position < list.rowCount() && core::IsChildRow(list.row(position + 1))) ++position;
    return position;
}

bool removeChildren(core::Globals& globals, const core::LogViews::ListRef& view, int position) {
    const int last = lastChildOf(*view, position);
    for (int row = last; row > position; --row) RemoveLogRow(globals, view, row);
    return last > position;
}

bool removeAllChildren(core::Globals& globals, const core::LogViews::ListRef& view) {
    bool changed = false;
    for (int row = view->rowCount(); row >= 1; --row) {
        if (!core::IsChildRow(view->row(row))) continue;
        RemoveLogRow(globals, view, row);
        changed = true;
    }
    return changed;
}

} // namespace

void ExpandSelectedEntry(core::Globals& globals, const core::LogViews::ListRef& view) {
    const int row = view->selectedRow();
    if (row == 0 || core::IsChildRow(view->row(row)) || core::IsExpanded(*view, row)) return;
    ExpandEntry(globals, view, row);
}

void CollapseSelectedEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position) {
    if (!core::IsChildRow(view->row(position))) return CollapseEntry(globals, view, position);
    const int entry = core::OwningEntry(*view, position);
    if (entry == 0) return;
    const widgets::RowId id = view->idAt(entry);
    CollapseEntry(globals, view, entry);
    if (const int now = view->positionOf(id, entry)) view->select(now, true);
}

void CollapseEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position) {
    if (globals.ExpansionBusy) return;
    globals.ExpansionBusy = true;
    const base::ScopeExit done([&] { globals.ExpansionBusy = false; });
    const widgets::RowId id = position >= 1 ? view->idAt(position) : 0;
    setPointer(globals, kHourglass);
    {
        // The host's pointer may have run anything: the entry is looked for again.
        const std::vector<core::LogViews::ListRef> lists = globals.LogViews.all();
        std::deque<widgets::ListView::Batch> batches;
        for (const auto& list : lists) batches.emplace_back(*list);
        const int entry = position < 0 ? position : view->positionOf(id, position);
        const bool changed = entry < 0    ? removeAllChildren(globals, view)
                             : entry == 0 ? false
                                          : removeChildren(globals, view, entry);
        if (changed)
            for (const auto& list : lists) core::AutoSizeColumns(*list, 0);
    }
    view->repaint();
    setPointer(globals, kDefaultPointer);
}

void RemoveLogRow(core::Globals& globals, const core::LogViews::ListRef& view, int position) {
    const widgets::RowId id = view->idAt(position);
    if (core::IsExpanded(*view, position)) CollapseEntry(globals, view, position);
    for (const auto& list : globals.LogViews.all())
        if (const int row = list->positionOf(id, position)) list->remove(row);
}

} // namespace cvlog::details
