#include "view/log_describer.h"

#include "resources/spoken_words.h"
#include "widgets/list_view.h"

#include <algorithm>
#include <vector>

namespace cvlog::view {

namespace {

using resources::Spoken;

constexpr int kLogName = 513;
constexpr std::u16string_view kErrorTag = u"expansion";
constexpr std::u16string_view kMessage = u"Message";
constexpr std::u16string_view kSeparator = u"; ";

bool isError(const widgets::RowContent& row) { return row.tag().equalsIgnoringCase(kErrorTag); }

/// The columns that have a width, in display order.
std::vector<int> shownColumns(const widgets::ListView& list) {
    std::vector<int> columns;
    for (int column = 1; column <= list.columnCount(); ++column)
        if (list.column(column).width > 0) columns.push_back(column);
    std::sort(columns.begin(), columns.end(), [&list](int left, int right) {
        return list.column(left).position < list.column(right).position;
    });
    return columns;
}

/// The column that names a row: the first, or what stands for it where that is empty.
int namingColumn(const widgets::RowContent& row) {
    const int message = row.cellOf(kMessage) + 1;
    if (isError(row) && message > 1) return message;
    if (!row.text().empty()) return 1;
    for (int column = 2; column <= row.cellCount() + 1; ++column)
        if (!row.columnText(column).empty()) return column;
    return 1;
}

void append(std::u16string& text, std::u16string_view separator, std::u16string_view part) {
    if (part.empty()) return;
    if (!text.empty()) text += separator;
    text += part;
}

} // namespace

std::u16string_view LogDescriber::iconWord(base::CompactTextView key) const {
    return resources::spokenIcon(language_, std::u16string(key));
}

std::u16string LogDescriber::listName() const { return std::u16string(resources::text(language_, kLogName)); }

std::u16string LogDescriber::listDescription(const widgets::ListView& list) const {
    if (!list.sorted() || list.sortKey() < 0 || list.sortKey() >= list.columnCount()) return {};
    const bool ascending = list.sortOrder() == widgets::SortOrder::Ascending;
    std::u16string text(
        resources::spoken(language_, ascending ? Spoken::SortedAscending : Spoken::SortedDescending));
    constexpr std::u16string_view kPlace = u"%1";
    text.replace(text.find(kPlace), kPlace.size(), list.column(list.sortKey() + 1).caption);
    return text;
}

std::u16string LogDescriber::rowName(const widgets::ListView& list, int row) const {
    const widgets::RowContent& content = list.row(row);
    return std::u16string(content.columnText(namingColumn(content)));
}

std::u16string LogDescriber::rowDescription(const widgets::ListView& list, int row) const {
    const widgets::RowContent& content = list.row(row);
    const std::vector<int> columns = shownColumns(list);
    const base::CompactTextView own = content.smallIcon();
    std::u16string text;
    if (isError(content)) text = resources::spoken(language_, Spoken::ErrorMessage);
    // The result's column mostly repeats the icon of the row: one of the two is enough.
    const bool repeated = std::any_of(columns.begin(), columns.end(), [&](int column) {
        return column > 1 && content.cellIcon(column - 1).equalsIgnoringCase(own);
    });
    if (!repeated) append(text, kSeparator, iconWord(own));
    for (const int column : columns) {
        std::u16string shown(column > 1 ? iconWord(content.cellIcon(column - 1)) : std::u16string_view());
        if (column != namingColumn(content)) append(shown, u", ", std::u16string(content.columnText(column)));
        if (!shown.empty()) append(text, kSeparator, list.column(column).caption + u": " + shown);
    }
    return text;
}

std::u16string LogDescriber::rowAction() const {
    return std::u16string(resources::spoken(language_, Spoken::DoubleClick));
}

} // namespace cvlog::view
