#include "details/expansion.h"

#include "base/failure.h"
#include "core/column_fit.h"
#include "core/log_row_kind.h"
#include "details/expand_entry.h"

namespace cvlog::details {

namespace {

using core::LogViews;
using Lists = std::vector<LogViews::ListRef>;

void setPointer(const hostapi::Workspace& workspace, std::int32_t pointer) noexcept {
    base::ignoring([&] { workspace.setMainWindowCursor(pointer); });
}

// By its number: a list without the row keeps all it has. Where the row is still open it stays, so that no child is
// left behind.
void removeFromAll(const Lists& lists, widgets::RowId row, int guess) {
    for (const auto& list : lists) {
        const int position = list->positionOf(row, guess);
        if (position != 0 && !core::IsExpanded(*list, position)) list->remove(position);
    }
}

// The last of the child rows that follow an entry; the entry itself when there is none.
int lastChildOf(const widgets::ListView& list, int entry) {
    int position = entry;
    while (position < list.rowCount() && core::IsChildRow(list.row(position + 1))) ++position;
    return position;
}

bool removeChildren(const Lists& lists, const widgets::ListView& view, int entry) {
    const int last = lastChildOf(view, entry);
    for (int row = last; row > entry; --row) removeFromAll(lists, view.idAt(row), row);
    return last > entry;
}

bool removeAllChildren(const Lists& lists, const widgets::ListView& view) {
    bool changed = false;
    for (int row = view.rowCount(); row >= 1; --row) {
        if (!core::IsChildRow(view.row(row))) continue;
        removeFromAll(lists, view.idAt(row), row);
        changed = true;
    }
    return changed;
}

/// What a collapse is about, named so that it is found again after foreign code ran.
class Target {
public:
    Target(const widgets::ListView& view, int position)
        : position_(position), entry_(hasEntry(view) ? view.idAt(position) : 0) {}

    bool removeChildren(const Lists& lists, const widgets::ListView& view) const {
        if (position_ < 0) return removeAllChildren(lists, view);
        if (position_ == 0) return details::removeChildren(lists, view, 0); // above the first entry
        const int now = entry_ == 0 ? 0 : view.positionOf(entry_, position_);
        return now != 0 && details::removeChildren(lists, view, now);
    }

private:
    bool hasEntry(const widgets::ListView& view) const noexcept {
        return position_ >= 1 && position_ <= view.rowCount();
    }
    int position_;
    widgets::RowId entry_;
};

} // namespace

void ExpandSelectedEntry(core::Globals& globals, LogViews::ListRef view) {
    const int row = view->selectedRow();
    if (row == 0 || core::IsChildRow(view->row(row)) || core::IsExpanded(*view, row)) return;
    ExpandEntry(globals, view, row);
}

void CollapseSelectedEntry(core::Globals& globals, LogViews::ListRef view, int position) {
    if (!core::IsChildRow(view->row(position))) return CollapseEntry(globals, view, position);
    const int entry = core::OwningEntry(*view, position);
    if (entry == 0) return;
    const widgets::RowId id = view->idAt(entry);
    CollapseEntry(globals, view, entry);
    if (const int now = view->positionOf(id, entry)) view->select(now, true);
}

void CollapseEntry(core::Globals& globals, LogViews::ListRef view, int position) {
    if (globals.ExpansionBusy) return;
    globals.ExpansionBusy = true;
    const base::ScopeExit done([&] { globals.ExpansionBusy = false; });
    const Target target(*view, position);
    const hostapi::Workspace workspace = globals.store.Workspace; // the one that got the hourglass
    setPointer(workspace, hostapi::kHourglass);
    const base::ScopeExit usual([&] { setPointer(workspace, hostapi::kUsualPointer); });
    {
        const core::BatchOfAll batch(globals.LogViews);
        if (target.removeChildren(batch.lists(), *view))
            for (const auto& list : batch.lists()) core::AutoSizeColumns(*list, 0);
    }
    view->repaint();
}

void RemoveLogRow(core::Globals& globals, LogViews::ListRef view, int position) {
    const widgets::RowId id = view->idAt(position);
    if (core::IsExpanded(*view, position)) CollapseEntry(globals, view, position);
    removeFromAll(globals.LogViews.all(), id, position);
}

} // namespace cvlog::details
