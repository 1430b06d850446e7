#include "view/log_columns.h"

#include "automation/value.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/column_fit.h"
#include "core/log_resources.h"
#include "core/log_row.h"
#include "hostapi/font_object.h"

#include <utility>

namespace cvlog::view {

namespace {

constexpr int kFirstCaption = 132;
constexpr std::u16string_view kSection = u"Activity Log";

// The display position of a column, 0 for a hidden one.
int storedPosition(core::Globals& globals, const widgets::Column& column, int natural) {
    return base::valueOr(natural, [&] {
        const std::u16string product = globals.store.Workspace.productName();
        const std::u16string stored =
            globals.platform.settings.get(product, kSection, column.key, base::decimal(natural));
        return static_cast<int>(automation::toInt32(stored));
    });
}

void storePosition(core::Globals& globals, const widgets::ListView& list, int column, bool shown) {
    base::ignoring([&] {
        globals.platform.settings.save(globals.store.Workspace.productName(), kSection,
                                       list.column(column).key,
                                       shown ? base::decimal(list.column(column).position) : u"0");
    });
}

// All lists get the same width, whatever their own fonts are.
base::Twips captionWidth(core::Globals& globals, std::u16string_view caption) {
    const base::Font font = base::valueOr(
        base::Font(), [&] { return hostapi::FontObject(core::LoadLogResources(globals).Font).read(); });
    ports::TextMeasurer& measurer = globals.platform.measurer;
    return measurer.width(measurer.fontNumber(font), caption) + core::kCaptionPadding;
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

void SetUpColumns(core::Globals& globals, widgets::ListView& list) {
    widgets::ListView::Batch batch(list);
    for (int index = 1; index <= list.columnCount(); ++index) {
        const widgets::Column& column = list.column(index);
        const int position = storedPosition(globals, column, index);
        if (position == 0) {
            list.setColumnWidth(index, 0);
            continue;
        }
        list.setColumnWidth(index, list.textWidth(column.caption) + core::kCaptionPadding);
        base::ignoring([&] { list.setColumnPosition(index, position); });
    }
}

void ShowColumn(core::Globals& globals, std::u16string_view key, bool shown) {
    bool first = true;
    for (const auto& list : globals.LogViews.all()) {
        const int column = list->columnOf(key);
        if (std::exchange(first, false) && column != 0) storePosition(globals, *list, column, shown);
        if (column == 0) continue;
        list->setColumnWidth(column, shown ? captionWidth(globals, list->column(column).caption) : 0);
        core::AutoSizeColumns(*list, 0);
    }
}

} // namespace cvlog::view
