// What fitting columns costs in a list that is shown in a window, with the system's measuring of texts.

#include "bench/harness.h"
#include "core/column_fit.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/services.h"
#include "platform/win32/system_font.h"
#include "platform/win32/wide_text.h"

#include "base/text.h"

#include <array>
#include <memory>

namespace cvlog::bench {
namespace {

using namespace platform::win32;

constexpr int kColumns = 7;
constexpr int kFreshRows = 100; // few: a row that was just added is still in the processor's cache
constexpr int kManyRows = 100'000;
constexpr base::Twips kNarrow = 100;

using Texts = std::array<std::u16string, kColumns>;

Texts textsOf(int number) {
    const std::u16string decimal = base::decimal(1'000 + number % 9'000); // of one width
    return {u"2026-03-14 15:09:26",
            u"00:00:01",
            u"Verify",
            u"Source",
            u"src/module_" + decimal + u".c",
            u"Warnings",
            u"0 errors, " + decimal + u" warnings"};
}

widgets::RowKeys keys() {
    static const widgets::RowKeys shared = std::make_shared<const std::vector<std::u16string>>(
        std::vector<std::u16string>{u"Elapsed", u"Method", u"Type", u"Name", u"Result", u"Message"});
    return shared;
}

widgets::RowPtr makeRow(int number) {
    const Texts texts = textsOf(number);
    widgets::Row row{texts[0], u"", u"", {}};
    for (std::size_t i = 1; i < texts.size(); ++i)
        row.cells.push_back({(*keys())[i - 1], texts[i], u"", u"", u""});
    return widgets::makeRow(row, keys());
}

/// A list with its window.
class ShownList {
public:
    ShownList() {
        std::vector<widgets::Column> columns(kColumns);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            columns[i].key = i == 0 ? u"Date" : (*keys())[i - 1];
            columns[i].caption = columns[i].key;
            columns[i].width = kNarrow;
        }
        list.setColumns(std::move(columns));
        list.attach(services.peers.makeListView(list));
    }
    void append(int first, int count) {
        const widgets::ListView::Batch batch(list);
        for (int i = 0; i < count; ++i) list.append(makeRow(first + i));
    }

    Services services;
    widgets::ListView list{services.collator, services.measurer};
};

/// Rows that were never measured, fitted one by one; seconds a row.
double secondsOfFittingFreshRows(ShownList& shown) {
    const int before = shown.list.rowCount();
    shown.append(before, kFreshRows);
    return seconds([&] {
               for (int row = before + 1; row <= before + kFreshRows; ++row)
                   core::AutoSizeColumns(shown.list, row);
           }) /
           kFreshRows;
}

/// The same texts measured by the plain call, with nothing around it; seconds a row.
double secondsOfSystemMeasuring(HDC dc) {
    std::vector<Texts> rows;
    for (int i = 0; i < kFreshRows; ++i) rows.push_back(textsOf(i));
    return seconds([&] {
               SIZE size{};
               for (const Texts& row : rows)
                   for (const std::u16string& text : row)
                       GetTextExtentPoint32W(dc, wideView(text).data(), static_cast<int>(text.size()), &size);
           }) /
           kFreshRows;
}

std::vector<Figure> measureFreshRow() {
    constexpr int kRounds = 201;
    ShownList shown;
    core::AutoSizeColumns(shown.list, 0); // to the captions, as a log that starts empty does
    shown.append(0, kFreshRows);
    // From here on the columns are wide enough, as they mostly are. Not fitted to all rows: a list that knows the
    // widest cell of a column measures a row when it comes, before the time is taken.
    core::AutoSizeColumns(shown.list, 1);
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const FontHandle font = makeFont(shown.list.font(), screenDpi());
    const HGDIOBJ previous = SelectObject(dc.get(), font.get());
    const Pair pair = medians(
        kRounds, [&] { return secondsOfFittingFreshRows(shown); },
        [&] { return secondsOfSystemMeasuring(dc.get()); });
    SelectObject(dc.get(), previous);
    return {{"columns.fit_one_row_against_seven_measurings", pair.value * 1e6, "us", pair.peer * 1e6, 0.1}};
}

std::vector<Figure> measureNothingChanged() {
    constexpr int kRounds = 9;
    constexpr double kGoalMilliseconds = 1;
    ShownList shown;
    shown.append(0, kManyRows);
    core::AutoSizeColumns(shown.list, 0);
    const Pair pair = medians(
        kRounds, [&] { return seconds([&] { core::AutoSizeColumns(shown.list, 0); }) * 1e3; },
        [] { return kGoalMilliseconds; });
    return {{"columns.fit_100k_rows_with_nothing_changed", pair.value, "ms", pair.peer, 1}};
}

const Registration freshRow("columns.fit_one_row", measureFreshRow);
const Registration nothingChanged("columns.fit_nothing_changed", measureNothingChanged);

} // namespace
} // namespace cvlog::bench
