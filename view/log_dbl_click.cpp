#include "view/log_dbl_click.h"

#include "base/failure.h"
#include "details/expansion.h"
#include "view/log_menu_state.h"
#include "view/show_errors.h"

namespace cvlog::view {

namespace {

core::LogViews::ListRef liveListOf(const core::Globals& globals, const hostapi::ListFace& face) {
    const std::int32_t handle = face.hwnd();
    for (const auto& list : globals.LogViews.all())
        if (list->windowHandle() == handle) return list;
    return nullptr;
}

// The row may be gone by now, as opening runs whatever the host runs.
bool stillHasErrorsFile(const hostapi::RowFace& row) noexcept {
    return base::valueOr(false, [&] { return ReadRow(row).hasErrorsFile; });
}

void showErrorsIfEnabled(core::Globals& globals, const hostapi::LogFace& log, const hostapi::RowFace& row) {
    if (log.menuItem(u"mnuLogShowErrors").enabled()) ShowErrors(globals, row);
}

void collapse(core::Globals& globals, const hostapi::ListFace& list) {
    const core::LogViews::ListRef live = liveListOf(globals, list);
    if (!live) return;
    if (const int row = live->selectedRow()) details::CollapseSelectedEntry(globals, live, row);
}

} // namespace

void LogDblClick(core::Globals& globals, const automation::ObjectRef& f) {
    const hostapi::LogFace log(f);
    const hostapi::ListFace list = log.lvLog();
    const hostapi::RowFace row = list.selectedRow();
    if (!row) return;
    const RowFacts facts = ReadRow(row);
    if (!facts.hasErrorsFile || !IsObjectKnown(globals, facts.objectId)) return;
    PrepareLogMenu(globals, log);
    if (log.menuItem(u"mnuLogExpand").visible()) {
        if (const core::LogViews::ListRef live = liveListOf(globals, list))
            details::ExpandSelectedEntry(globals, live);
        if (stillHasErrorsFile(row)) showErrorsIfEnabled(globals, log, row);
    } else if (log.menuItem(u"mnuLogCollaps").visible()) {
        if (facts.isChild)
            showErrorsIfEnabled(globals, log, row);
        else
            collapse(globals, list);
    }
}

} // namespace cvlog::view
