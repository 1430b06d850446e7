#include "view/log_menu.h"

#include "host/help_contexts.h"

namespace cvlog::view {

namespace {

struct Row {
    std::u16string_view name;
    int caption = 0; // string id; 0 for a separator
};

constexpr Row kRows[] = {
    {u"mnuLogShowErrors", 140}, {u"mnuLogCollaps", 141}, {u"mnuLogExpand", 142},  {u"mnuLogSep1"},
    {u"mnuLogDelete", 143},     {u"mnuLogClear", 144},   {u"mnuLogCopy", 145},    {u"mnuLogSep2"},
    {u"mnuLogSave", 146},       {u"mnuLogSep3"},         {u"mnuLogHistory", 147}, {u"mnuCol", 148},
    {u"mnuLogDocked", 150},     {u"mnuLogHide", 151},
};

constexpr Row kTop = {u"mnuPopUpLog", 139};
constexpr Row kColumn = {u"mnuColumn", 149};

widgets::MenuItemRef make(resources::Language language, const Row& row) {
    auto item = std::make_shared<widgets::MenuItem>();
    item->name = row.name;
    item->separator = row.caption == 0;
    item->caption = item->separator ? u"-" : resources::text(language, row.caption);
    return item;
}

} // namespace

widgets::MenuItemRef MakeLogMenu(resources::Language language) {
    const widgets::MenuItemRef menu = make(language, kTop);
    for (const Row& row : kRows) menu->items.push_back(make(language, row));
    const widgets::MenuItemRef column = make(language, kColumn);
    column->index = 0;
    findMenuItem(menu, u"mnuCol")->items.push_back(column);
    findMenuItem(menu, u"mnuLogClear")->helpContext = host::kLogMenuHelp;
    return menu;
}

const std::vector<widgets::MenuItemRef>& ColumnItems(const widgets::MenuItemRef& menu) {
    return findMenuItem(menu, u"mnuCol")->items;
}

} // namespace cvlog::view
