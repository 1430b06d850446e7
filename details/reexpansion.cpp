#include "details/reexpansion.h"

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "details/expand_entry.h"
#include "details/expansion.h"

#include <vector>

namespace cvlog::details {

namespace {

std::vector<widgets::RowId> openEntries(const widgets::ListView& list) {
    std::vector<widgets::RowId> open;
    for (int row = 1; row <= list.rowCount(); ++row)
        if (core::IsExpanded(list, row)) open.push_back(list.idAt(row));
    return open;
}

void reexpand(core::Globals& globals, const core::LogViews::ListRef& view, widgets::RowId entry, int& guess) {
    guess = view->positionOf(entry, guess);
    if (guess == 0) return;
    CollapseEntry(globals, view, guess);
    guess = view->positionOf(entry, guess); // the host may have done anything
    if (guess != 0) ExpandEntry(globals, view, guess, widgets::Activation::Leave);
}

} // namespace

void ReexpandEntries(core::Globals& globals) noexcept {
    const auto keep = globals.hold();
    base::ignoring([&] {
        const core::LogViews::ListRef view = globals.LogViews.first();
        if (!view) return;
        int guess = 1;
        for (const widgets::RowId entry : openEntries(*view))
            base::ignoring([&] { reexpand(globals, view, entry, guess); });
    });
}

} // namespace cvlog::details
