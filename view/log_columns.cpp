#include "view/log_columns.h"

#include "automation/value.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/column_fit.h"
#include "core/log_resources.h"
#include "core/log_row.h"
#include "hostapi/font_object.h"

#include <vector>

namespace cvlog::view {

namespace {

constexpr int kFirstCaption = 132;
constexpr std::u16string_view kSection = u"Activity Log";

// The display position of a column, 0 for a hidden one. The host is asked for its name: it may run any code.
int storedPosition(core::Globals& globals, const widgets::Column& column, int natural) {
    return base::valueOr(natural, [&] {
        const std::u16string product = globals.store.Workspace.productName();
        const std::u16string stored =
            globals.platform.settings.get(product, kSection, column.key, base::decimal(natural));
        return static_cast<int>(automation::toInt32(stored));
    });
}

// For the user's next lists; the place that the column has in the oldest one now.
void storePosition(core::Globals& globals, std::u16string_view key, bool shown) {
    const std::u16string product = globals.store.Workspace.productName();
    const core::LogViews::ListRef list = globals.LogViews.first(); // the host may have ended the one before
    const int column = list ? list->columnOf(key) : 0;
    if (column == 0) return;
    const std::u16string place = shown ? base::decimal(list->column(column).position) : u"0";
    globals.platform.settings.save(product, kSection, list->column(column).key, place);
}

// All lists get the same width, whatever their own fonts are. The font may be an object of the host's.
base::Font resourceFont(core::Globals& globals) {
    return base::valueOr(base::Font(),
                         [&] { return hostapi::FontObject(core::LoadLogResources(globals).Font).read(); });
}

void showInList(ports::TextMeasurer& measurer, const base::Font& font, widgets::ListView& list, int column,
                bool shown) {
    widgets::ListView::Batch batch(list);
    const auto width = [&] {
        return measurer.width(measurer.fontNumber(font), list.column(column).caption) + core::kCaptionPadding;
    };
    list.setColumnWidth(column, shown ? width() : 0);
    core::AutoSizeColumns(list, 0);
}

// The menu has one by design; each further one is made like the one before.
widgets::MenuItem& columnItem(widgets::MenuItem& menu, int column) {
    if (static_cast<int>(menu.items.size()) < column) {
        auto item = std::make_shared<widgets::MenuItem>(*menu.items.back());
        item->index = column - 1;
        menu.items.push_back(std::move(item));
    }
    return *menu.items[static_cast<std::size_t>(column - 1)];
}

} // namespace

void LocaliseColumns(const core::Globals& globals, widgets::ListView& list) {
    std::vector<widgets::Column> columns(1 + core::kLogCellKeys.size());
    columns.front().key = u"Date";
    for (std::size_t i = 0; i < core::kLogCellKeys.size(); ++i) columns[i + 1].key = core::kLogCellKeys[i];
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i].caption = resources::text(globals.platform.language, kFirstCaption + static_cast<int>(i));
    list.setColumns(std::move(columns));
}

void SetUpColumns(core::Globals& globals, widgets::ListView& list, widgets::MenuItem& columnsMenu) {
    std::vector<int> positions;
    for (int index = 1; index <= list.columnCount(); ++index)
        positions.push_back(storedPosition(globals, list.column(index), index));
    widgets::ListView::Batch batch(list);
    for (int index = 1; index <= list.columnCount(); ++index) {
        const int position = positions[static_cast<std::size_t>(index - 1)];
        const widgets::Column& column = list.column(index);
        widgets::MenuItem& item = columnItem(columnsMenu, index);
        item.checked = position != 0;
        item.caption = column.caption;
        item.tag = column.key;
        if (position == 0) {
            list.setColumnWidth(index, 0);
            continue;
        }
        list.setColumnWidth(index, list.textWidth(list.column(index).caption) + core::kCaptionPadding);
        base::ignoring([&] { list.setColumnPosition(index, position); });
    }
}

void ShowColumn(core::Globals& globals, std::u16string_view key, bool shown) {
    base::ignoring([&] { storePosition(globals, key, shown); });
    const base::Font font = resourceFont(globals);
    for (const auto& list : globals.LogViews.all())
        if (const int column = list->columnOf(key))
            showInList(globals.platform.measurer, font, *list, column, shown);
}

} // namespace cvlog::view
