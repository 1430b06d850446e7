#include "store/history_menu.h"

#include "base/failure.h"
#include "host/help_contexts.h"
#include "store/history_loading.h"

namespace cvlog::store {

namespace {

constexpr int kMenuCaption = 120;

struct Row {
    const char16_t* name;
    int caption; // string id; 0 for a separator
};

constexpr Row kRows[] = {
    {u"mnuHistoryShowErrors", 121}, {u"mnuHistorySep1", 0},   {u"mnuHistoryDelete", 122},
    {u"mnuHistoryClear", 123},      {u"mnuHistoryCopy", 124}, {u"mnuHistorySep2", 0},
    {u"mnuHistorySave", 125},
};

// Each look at the host runs its code, which may change the list; so the row's tag is copied before.
bool errorsCanBeShown(core::Globals& globals, const widgets::ListView& list) {
    const int selected = list.selectedRow();
    if (selected == 0) return false;
    const HistoryTag tag = HistoryTag::parse(std::u16string(list.row(selected).tag()));
    const hostapi::Workspace workspace = globals.store.Workspace;
    const auto holds = [](auto&& look) { return base::valueOr(false, look); };
    return holds([&] {
               return static_cast<bool>(workspace.repository().findObject(tag.objectType, tag.objectName));
           }) &&
           holds([&] {
               return globals.platform.files.fileExists(workspace.name(hostapi::HostName::ProjectDirectory) +
                                                        u"\\" + tag.errorsFile);
           }) &&
           holds([&] { return static_cast<bool>(workspace.activeToolList()); }) &&
           holds([&] { return workspace.mainWindow().isMdiForm(); });
}

void setCaptions(const widgets::MenuItemRef& menu, resources::Language language) {
    menu->caption = resources::text(language, kMenuCaption);
    for (std::size_t i = 0; i < std::size(kRows); ++i)
        if (kRows[i].caption != 0) menu->items[i]->caption = resources::text(language, kRows[i].caption);
}

} // namespace

widgets::MenuItemRef MakeHistoryMenu() {
    auto menu = std::make_shared<widgets::MenuItem>();
    menu->name = u"mnuPopUpHistory";
    for (const Row& row : kRows) {
        auto item = std::make_shared<widgets::MenuItem>();
        item->name = row.name;
        item->separator = row.caption == 0;
        menu->items.push_back(std::move(item));
    }
    findMenuItem(menu, u"mnuHistoryClear")->helpContext = host::kHistoryMenuHelp;
    return menu;
}

void PrepareHistoryMenu(core::Globals& globals, const widgets::MenuItemRef& menu,
                        const widgets::ListView& list) {
    setCaptions(menu, globals.platform.language);
    const bool showErrors = errorsCanBeShown(globals, list);
    findMenuItem(menu, u"mnuHistoryShowErrors")->visible = showErrors;
    findMenuItem(menu, u"mnuHistorySep1")->visible = showErrors;
    const bool hasRows = list.rowCount() > 0;
    for (const char16_t* name :
         {u"mnuHistoryShowErrors", u"mnuHistoryDelete", u"mnuHistoryClear", u"mnuHistorySave"})
        findMenuItem(menu, name)->enabled = hasRows;
    findMenuItem(menu, u"mnuHistoryCopy")->enabled = hasRows && list.selectedRow() != 0;
}

} // namespace cvlog::store
