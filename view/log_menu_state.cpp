#include "view/log_menu_state.h"

#include "base/failure.h"
#include "base/text.h"
#include "core/log_row_kind.h"
#include "host/log_visibility.h"

namespace cvlog::view {

namespace {

/// The selected row and what is around it, read in one stretch.
struct Selection {
    bool exists = false;
    RowFacts row;
    bool canCollapse = false;
};

bool isChild(const hostapi::RowFace& row) { return base::equalsIgnoringCase(row.tag(), core::kChildRowTag); }

Selection readSelection(const hostapi::ListFace& list) {
    const hostapi::RowFace row = list.selectedRow();
    if (!row) return {};
    Selection selection{true, ReadRow(row), false};
    const std::int32_t index = row.index();
    selection.canCollapse =
        selection.row.isChild || (index < list.rowCount() && isChild(list.row(index + 1)));
    return selection;
}

bool hasActiveTools(const core::Globals& globals) noexcept {
    return base::valueOr(false, [&] { return static_cast<bool>(globals.store.Workspace.activeToolList()); });
}

void prepareEntryItems(const hostapi::LogFace& log, bool hasErrors, bool canCollapse) {
    const bool showErrors = hasErrors && log.isMdiForm();
    const bool canExpand = hasErrors && !canCollapse; // whether or not the errors can be asked for here
    log.menuItem(u"mnuLogShowErrors").setVisible(showErrors);
    log.menuItem(u"mnuLogCollaps").setVisible(canCollapse);
    log.menuItem(u"mnuLogExpand").setVisible(canExpand);
    log.menuItem(u"mnuLogSep1").setVisible(showErrors || canCollapse || canExpand);
}

void prepareDocked(const core::Globals& globals, const hostapi::LogFace& log) noexcept {
    base::ignoring([&] { log.menuItem(u"mnuLogDocked").setChecked(host::GetDocked(globals)); });
    base::ignoring([&] { log.menuItem(u"mnuLogDocked").setVisible(globals.placement.Parent != nullptr); });
}

void prepareRowItems(const hostapi::LogFace& log) {
    const hostapi::ListFace list = log.lvLog();
    const bool hasRows = list.rowCount() > 0;
    const bool hasSelection = hasRows && list.selectedRow();
    for (const char16_t* name : {u"mnuLogClear", u"mnuLogSave", u"mnuLogShowErrors"})
        log.menuItem(name).setEnabled(hasRows);
    for (const char16_t* name : {u"mnuLogCopy", u"mnuLogDelete"}) log.menuItem(name).setEnabled(hasSelection);
}

void prepareColumns(const hostapi::LogFace& log) {
    const hostapi::ListFace list = log.lvLog();
    const hostapi::MenuArrayFace columns = log.menuArray(u"mnuColumn");
    const std::int32_t last = columns.last();
    for (std::int32_t i = columns.first(); i <= last; ++i) {
        const hostapi::MenuItemFace item = columns.item(i);
        item.setChecked(list.columnWidth(item.tag()) > 0);
    }
}

std::u16string cellTag(const hostapi::RowFace& row, std::u16string_view key) {
    return base::valueOr(std::u16string(), [&] { return row.cellTag(key); });
}

} // namespace

RowFacts ReadRow(const hostapi::RowFace& row) {
    RowFacts facts;
    facts.isChild = isChild(row);
    facts.objectId = facts.isChild ? cellTag(row, u"ObjID") : row.tag();
    facts.hasErrorsFile = !cellTag(row, u"Message").empty();
    return facts;
}

bool IsObjectKnown(const core::Globals& globals, std::u16string_view id) noexcept {
    return !id.empty() && base::valueOr(false, [&] {
        return static_cast<bool>(globals.store.Workspace.repository().object(id));
    });
}

void PrepareLogMenu(core::Globals& globals, const hostapi::LogFace& log) {
    const bool tools = hasActiveTools(globals); // the host may do anything: rows are read afterwards
    const Selection selection = readSelection(log.lvLog());
    const bool hasErrors = selection.exists && tools && selection.row.hasErrorsFile &&
                           IsObjectKnown(globals, selection.row.objectId);
    prepareEntryItems(log, hasErrors, selection.canCollapse);
    prepareDocked(globals, log);
    prepareRowItems(log);
    prepareColumns(log);
    globals.commands.PendingCommand.clear();
}

} // namespace cvlog::view
