#include "view/log_keys.h"

#include "core/log_row_kind.h"
#include "view/log_dbl_click.h"
#include "view/row_commands.h"

#include <algorithm>

namespace cvlog::view {

namespace {

constexpr std::int16_t kShift = 1;
constexpr std::int16_t kCtrl = 2;
constexpr std::int16_t kF10 = 121;

void click(const CommandTarget& target, std::u16string_view item) {
    ClickMenuItem(target, *findMenuItem(target.menu, item));
}

void openRow(const CommandTarget& target) { LogDblClick(target.globals, target.control); }

// From one of an entry's messages to the entry.
void goUp(const CommandTarget& target) {
    widgets::ListView& list = *target.list;
    const int row = list.selectedRow();
    if (row == 0 || !core::IsChildRow(list.row(row))) return;
    const int entry = std::max(core::OwningEntry(list, row), 1);
    widgets::ListView::Batch batch(list);
    list.select(row, false);
    list.select(entry, true);
    list.focusRow(entry);
}

bool always(std::int16_t) { return true; }
bool plain(std::int16_t modifiers) { return modifiers == 0; }
bool withCtrl(std::int16_t modifiers) { return (modifiers & kCtrl) != 0; }

struct Key {
    std::int16_t code;
    bool (*fits)(std::int16_t modifiers);
    void (*run)(const CommandTarget&);
};

constexpr Key kKeys[] = {
    {107, always, [](const CommandTarget& target) { click(target, u"mnuLogExpand"); }},         // grey plus
    {109, always, [](const CommandTarget& target) { click(target, u"mnuLogCollaps"); }},        // grey minus
    {13, always, openRow},                                                                      // Enter
    {32, plain, openRow},                                                                       // Space
    {46, always, [](const CommandTarget& target) { DeleteRows(target.globals, target.list); }}, // Delete
    {67, withCtrl, [](const CommandTarget& target) { CopyRows(target.globals, target.list); }}, // C
    {69, withCtrl, [](const CommandTarget& target) { click(target, u"mnuLogShowErrors"); }},    // E
    {37, always, goUp},                                                                         // Left
};

} // namespace

void LogKeyPressed(const CommandTarget& target, widgets::KeyEvent& key) {
    if (key.code != kF10 || (key.shift & kShift) == 0) return;
    key.code = 0;
    ShowMenuAndDispatch(target);
}

void LogKeyReleased(const CommandTarget& target, widgets::KeyEvent& key) {
    const auto known = std::ranges::find_if(
        kKeys, [&](const Key& one) { return one.code == key.code && one.fits(key.shift); });
    if (known == std::end(kKeys)) return;
    key.code = 0;
    known->run(target);
}

} // namespace cvlog::view
