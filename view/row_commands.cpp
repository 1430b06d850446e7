#include "view/row_commands.h"

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "details/expansion.h"
#include "host/busy_pointer.h"

namespace cvlog::view {

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

void appendLine(std::u16string& text, const widgets::RowContent& row, int columns) {
    row.text().appendTo(text);
    for (int column = 2; column <= columns; ++column) {
        text += u'\t';
        row.columnText(column).appendTo(text);
    }
    text += kLineEnd;
}

std::size_t lineSize(const widgets::RowContent& row, int columns) {
    std::size_t size = static_cast<std::size_t>(columns - 1) + kLineEnd.size();
    for (int column = 1; column <= columns; ++column) size += row.columnText(column).size();
    return size;
}

template <class Action>
void forSelected(const widgets::ListView& list, Action action) {
    int left = list.selectedCount();
    for (int position = 1; left > 0; ++position) {
        if (!list.isSelected(position)) continue;
        action(list.row(position));
        --left;
    }
}

// Measured first: a text that grows is copied several times over.
std::u16string selectedText(const widgets::ListView& list) {
    const int columns = list.columnCount();
    std::size_t size = 0;
    forSelected(list, [&](const widgets::RowContent& row) { size += lineSize(row, columns); });
    std::u16string text;
    text.reserve(size);
    forSelected(list, [&](const widgets::RowContent& row) { appendLine(text, row, columns); });
    return text;
}

/// The rows that were selected at one moment, from the last one up.
class SelectedRows {
public:
    explicit SelectedRows(const widgets::ListView& list) : guess_(list.rowCount()) {
        rows_.reserve(static_cast<std::size_t>(list.selectedCount()));
        for (int position = 1; position <= list.rowCount(); ++position)
            if (list.isSelected(position)) rows_.push_back(list.idAt(position));
    }

    bool done() const noexcept { return rows_.empty(); }
    void next() noexcept { rows_.pop_back(); }
    /// Where the row is now; 0 when it has gone.
    int position(const widgets::ListView& list) noexcept {
        const int found = list.positionOf(rows_.back(), guess_);
        if (found != 0) guess_ = found;
        return found;
    }

private:
    std::vector<widgets::RowId> rows_;
    int guess_;
};

// Up to an open entry, which takes the host to close. Answers its place; 0 when all rows are done.
int removeUpToOpenEntry(core::Globals& globals, const core::LogViews::ListRef& list, SelectedRows& rows) {
    const core::BatchOfAll batch(globals.LogViews);
    for (; !rows.done(); rows.next()) {
        const int position = rows.position(*list);
        if (position == 0) continue;
        if (core::IsExpanded(*list, position)) return position;
        details::RemoveLogRow(globals, list, position);
    }
    return 0;
}

} // namespace

// Both keep the list: the host's pointer is the host's code, which may take it away.

void CopyRows(core::Globals& globals, const core::LogViews::ListRef& view) {
    const core::LogViews::ListRef list = view;
    const host::BusyPointer busy(globals.store.Workspace);
    globals.platform.clipboard.setText(selectedText(*list));
}

void DeleteRows(core::Globals& globals, const core::LogViews::ListRef& view) {
    const core::LogViews::ListRef list = view;
    if (globals.ExpansionBusy) return;
    const host::BusyPointer busy(globals.store.Workspace);
    SelectedRows rows(*list);
    while (const int openEntry = removeUpToOpenEntry(globals, list, rows)) {
        details::RemoveLogRow(globals, list, openEntry);
        rows.next();
    }
}

} // namespace cvlog::view
