#include "view/row_commands.h"

#include "base/failure.h"
#include "details/expansion.h"

#include <deque>

namespace cvlog::view {

namespace {

constexpr std::int32_t kHourglass = 11;

/// The host's busy pointer, as long as it lives; then the one before.
class BusyPointer {
public:
    explicit BusyPointer(const hostapi::Workspace& workspace)
        : workspace_(workspace), before_(workspace.setMainWindowCursor(kHourglass)) {}
    ~BusyPointer() {
        base::ignoring([&] { workspace_.setMainWindowCursor(before_); });
    }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    hostapi::Workspace workspace_;
    std::int32_t before_;
};

void appendLine(std::u16string& text, const widgets::RowContent& row, int columns) {
    text += row.text();
    for (int column = 2; column <= columns; ++column) {
        text += u'\t';
        text += row.columnText(column);
    }
    text += u"\r\n";
}

std::vector<widgets::RowId> selectedRows(const widgets::ListView& list) {
    std::vector<widgets::RowId> rows;
    for (int position = 1; position <= list.rowCount(); ++position)
        if (list.isSelected(position)) rows.push_back(list.idAt(position));
    return rows;
}

} // namespace

void CopyRows(core::Globals& globals, const core::LogViews::ListRef& list) {
    const BusyPointer busy(globals.store.Workspace);
    std::u16string text;
    for (int position = 1; position <= list->rowCount(); ++position)
        if (list->isSelected(position)) appendLine(text, list->row(position), list->columnCount());
    globals.platform.clipboard.setText(text);
}

void DeleteRows(core::Globals& globals, const core::LogViews::ListRef& list) {
    const BusyPointer busy(globals.store.Workspace);
    const std::vector<widgets::RowId> rows = selectedRows(*list);
    const std::vector<core::LogViews::ListRef> lists = globals.LogViews.all();
    std::deque<widgets::ListView::Batch> batches;
    for (const auto& each : lists) batches.emplace_back(*each);
    int place = list->rowCount();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        place = list->positionOf(*row, place);
        if (place != 0) details::RemoveLogRow(globals, list, place);
    }
}

} // namespace cvlog::view
