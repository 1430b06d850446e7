#include "view/log_commands.h"

#include "base/failure.h"
#include "base/text.h"
#include "details/expansion.h"
#include "host/log_visibility.h"
#include "host/menu_help_hook.h"
#include "store/frm_log_history.h"
#include "store/report.h"
#include "view/list_set.h"
#include "view/log_columns.h"
#include "view/log_menu.h"
#include "view/log_menu_state.h"
#include "view/row_commands.h"
#include "view/show_errors.h"

#include <algorithm>

namespace cvlog::view {

namespace {

void showHistory(const CommandTarget& target) { store::ShowHistory(target.globals); }

void toggleDocked(const CommandTarget& target) {
    if (!target.globals.store.CurrentLog) return;
    host::PutDocked(target.globals, !host::GetDocked(target.globals));
}

void expand(const CommandTarget& target) { details::ExpandSelectedEntry(target.globals, target.list); }

void toggleColumn(const CommandTarget& target) {
    const auto& items = ColumnItems(target.menu);
    const widgets::MenuItemRef item =
        items.at(static_cast<std::size_t>(target.globals.commands.PendingColumnIndex));
    item->checked = !item->checked;
    ShowColumn(target.globals, item->tag, item->checked);
}

void collapse(const CommandTarget& target) {
    if (const int row = target.list->selectedRow())
        details::CollapseSelectedEntry(target.globals, target.list, row);
}

void hide(const CommandTarget& target) {
    if (target.globals.store.CurrentLog) host::PutVisible(target.globals, false);
}

void report(const CommandTarget& target) { store::MakeLogReport(target.globals, target.list); }

void showErrors(const CommandTarget& target) {
    const hostapi::RowFace row = hostapi::LogFace(target.control).lvLog().selectedRow();
    if (row) ShowErrors(target.globals, row);
}

struct Command {
    std::u16string_view word;
    void (*run)(const CommandTarget&);
};

constexpr Command kCommands[] = {
    {u"ShowHistory", showHistory},
    {u"Docked", toggleDocked},
    {u"Expand", expand},
    {u"ColumnClick", toggleColumn},
    {u"Collaps", collapse},
    {u"Hide", hide},
    {u"Save", report},
    {u"ShowErrors", showErrors},
};

/// What a click does at once, or the word that it leaves.
struct Click {
    std::u16string_view item;
    std::u16string_view word = {};
    bool needsSelection = false;
    void (*run)(const CommandTarget&) = nullptr;
};

constexpr Click kClicks[] = {
    {u"mnuLogShowErrors", u"ShowErrors", true},
    {u"mnuLogCollaps", u"Collaps", true},
    {u"mnuLogExpand", u"Expand"},
    {u"mnuLogDelete",
     {},
     false,
     [](const CommandTarget& target) { DeleteRows(target.globals, target.list); }},
    {u"mnuLogClear", {}, false, [](const CommandTarget& target) { ClearLists(target.globals); }},
    {u"mnuLogCopy", {}, false, [](const CommandTarget& target) { CopyRows(target.globals, target.list); }},
    {u"mnuLogSave", u"Save"},
    {u"mnuLogHistory", u"ShowHistory"},
    {u"mnuColumn", u"ColumnClick"},
    {u"mnuLogDocked", u"Docked"},
    {u"mnuLogHide", u"Hide"},
};

widgets::MenuItemRef defaultItem(const widgets::MenuItemRef& menu) {
    for (const char16_t* name : {u"mnuLogShowErrors", u"mnuLogExpand", u"mnuLogCollaps"})
        if (const widgets::MenuItemRef item = findMenuItem(menu, name); item->visible) return item;
    return nullptr;
}

widgets::MenuItemRef letChoose(const CommandTarget& target) {
    const widgets::MenuItemRef clear = findMenuItem(target.menu, u"mnuLogClear");
    const host::MenuHelp help(target.globals, base::decimal(clear->helpContext));
    const widgets::MenuItemRef meant = defaultItem(target.menu);
    const auto peer = target.globals.platform.peers.makePopupMenu(*target.menu, meant.get());
    return peer->popUp(target.list->windowHandle());
}

} // namespace

void ClickMenuItem(const CommandTarget& target, const widgets::MenuItem& item) {
    const auto click = std::ranges::find_if(
        kClicks, [&](const Click& known) { return base::equalsIgnoringCase(known.item, item.name); });
    if (click == std::end(kClicks)) return;
    if (click->run) return click->run(target);
    if (click->needsSelection && target.list->selectedRow() == 0) return;
    target.globals.commands.PendingCommand = click->word;
    if (item.index) target.globals.commands.PendingColumnIndex = static_cast<std::int16_t>(*item.index);
}

void DispatchCommand(const CommandTarget& target) {
    const std::u16string word = target.globals.commands.PendingCommand; // a command may prepare another menu
    const auto command = std::ranges::find_if(
        kCommands, [&](const Command& known) { return base::equalsIgnoringCase(known.word, word); });
    if (command != std::end(kCommands)) command->run(target);
}

void ShowMenuAndDispatch(const CommandTarget& target) {
    PrepareLogMenu(target.globals, hostapi::LogFace(target.control));
    const widgets::MenuItemRef chosen = letChoose(target);
    if (chosen) base::ignoring([&] { ClickMenuItem(target, *chosen); });
    DispatchCommand(target);
}

} // namespace cvlog::view
