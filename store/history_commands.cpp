#include "store/history_commands.h"

#include "automation/error.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/column_fit.h"
#include "core/cv_log.h"
#include "host/busy_pointer.h"
#include "store/frm_log_history.h"
#include "store/report.h"

#include <memory>
#include <vector>

namespace cvlog::store {

namespace {

constexpr int kDeletingCaption = 500;
constexpr int kCaptionAfterwards = 501;

void setCaption(core::Globals& globals, FrmLogHistory& window, int id) {
    base::ignoring([&] { window.form().setCaption(resources::text(globals.platform.language, id)); });
}

/// The busy pointer over the window and the host's. Who refuses it does without.
class Busy {
public:
    Busy(core::Globals& globals, FrmLogHistory& window) : window_(window) {
        base::ignoring([&] { window_.form().setPointer(widgets::Pointer::Hourglass); });
        base::ignoring([&] { host_ = std::make_unique<host::BusyPointer>(globals.store.Workspace); });
    }
    ~Busy() {
        host_.reset();
        base::ignoring([&] { window_.form().setPointer(widgets::Pointer::Default); });
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    FrmLogHistory& window_;
    std::unique_ptr<host::BusyPointer> host_;
};

// The host may close the database at any call, or open another one: its records have the same numbers.
void execute(core::Globals& globals, const FrmLogHistory& window, const std::u16string& sql) {
    const std::shared_ptr<Database> database = globals.store.LogDatabase;
    if (!database || database != window.database())
        throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
    database->execute(sql);
}

struct SelectedRow {
    widgets::RowId id;
    int position;
};

std::vector<SelectedRow> selectedRows(const widgets::ListView& list) {
    std::vector<SelectedRow> rows;
    rows.reserve(static_cast<std::size_t>(list.selectedCount()));
    for (int position = 1; position <= list.rowCount(); ++position)
        if (list.isSelected(position)) rows.push_back({list.idAt(position), position});
    return rows;
}

void deleteSelected(core::Globals& globals, FrmLogHistory& window) {
    widgets::ListView& list = *window.lvHistory();
    const std::vector<SelectedRow> rows = selectedRows(list);
    widgets::ListView::Batch batch(list);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const int position = list.positionOf(row->id, row->position);
        if (position == 0) continue; // went while the engine ran other code
        const std::u16string key = list.rowKey(position);
        list.remove(position);
        if (!key.empty()) execute(globals, window, u"delete from LogInfo where RecordNum = " + key.substr(1));
    }
}

void removeAboveSeparator(core::Globals& globals, FrmLogHistory& window) {
    widgets::ListView& list = *window.lvHistory();
    const int focused = list.focusedRow();
    const widgets::RowId separator = list.idAt(focused);
    execute(globals, window,
            u"delete from LogInfo where RecordNum <= " + base::decimal(window.progress().DeleteLimit));
    widgets::ListView::Batch batch(list);
    for (int position = list.positionOf(separator, focused) - 1; position >= 1; --position)
        list.remove(position);
}

bool focusIsOnSeparator(const widgets::ListView& list) {
    const int focused = list.focusedRow();
    return focused > 0 && list.row(focused).smallIcon().equalsIgnoringCase(kSessionIcon);
}

} // namespace

void DeleteHistoryRecords(core::Globals& globals, FrmLogHistory& window) {
    const std::shared_ptr<FrmLogHistory> keep = window.shared_from_this();
    const base::ScopeExit caption([&] { setCaption(globals, window, kCaptionAfterwards); });
    setCaption(globals, window, kDeletingCaption);
    widgets::ListView& list = *window.lvHistory();
    if (focusIsOnSeparator(list))
        removeAboveSeparator(globals, window);
    else
        deleteSelected(globals, window);
    core::AutoSizeColumns(list, 0);
}

void ClearLogHistory(core::Globals& globals, FrmLogHistory& window) {
    const std::shared_ptr<FrmLogHistory> keep = window.shared_from_this();
    const Busy busy(globals, window);
    execute(globals, window, u"delete from LogInfo");
    window.lvHistory()->clear();
    window.progress().SeparatorPending = true;
    window.LoadHistory(globals.store.LastRecordNum);
}

void CopyHistoryRecords(core::Globals& globals, FrmLogHistory& window) {
    const std::shared_ptr<FrmLogHistory> keep = window.shared_from_this();
    const Busy busy(globals, window);
    const widgets::ListView& list = *window.lvHistory();
    std::u16string text;
    for (int position = 1; position <= list.rowCount(); ++position) {
        if (!list.isSelected(position)) continue;
        list.row(position).text().appendTo(text);
        text += u"\r\n";
    }
    globals.platform.clipboard.setText(text);
}

void ReportHistory(core::Globals& globals, FrmLogHistory& window) {
    const std::shared_ptr<FrmLogHistory> keep = window.shared_from_this();
    MakeReport(globals, window.lvHistory(), u"LogHistory",
               [&](widgets::Pointer pointer) { window.form().setPointer(pointer); });
}

void ShowHistoryErrors(core::Globals& globals, FrmLogHistory& window) {
    const std::shared_ptr<FrmLogHistory> keep = window.shared_from_this();
    const int selected = window.lvHistory()->selectedRow();
    if (selected == 0) return;
    const HistoryTag tag = HistoryTag::parse(std::u16string(window.lvHistory()->row(selected).tag()));
    const hostapi::Repository repository = globals.store.Workspace.repository();
    const std::u16string id = repository.findObject(tag.objectType, tag.objectName).id();
    window.unload();
    base::ignoring([&] { globals.platform.pump.yield(); });
    automation::Value arguments[] = {id, std::int32_t{0}};
    if (const std::shared_ptr<core::CVLog> log = globals.store.CurrentLog)
        log->FireEvent(u"ShowErrors", arguments);
}

} // namespace cvlog::store
