// What sorting a list costs, and keeping it sorted, without a screen.

#include "bench/harness.h"
#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_text_measurer.h"
#include "widgets/list_view.h"

#include "base/text.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace cvlog::bench {
namespace {

using platform::headless::HeadlessCollator;
using widgets::ListView;
using widgets::RowPtr;
using widgets::SortOrder;

constexpr int kManyRows = 1'000'000;
constexpr int kFewRows = 1'000;
constexpr int kColumns = 7;
constexpr int kDistinctColumn = 1;
constexpr int kFewValuesColumn = 6;
constexpr int kLists = 4;

widgets::RowPtr makeRow(std::uint32_t number) {
    static const auto keys = std::make_shared<const std::vector<std::u16string>>(
        std::vector<std::u16string>{u"Elapsed", u"Method", u"Type", u"Object", u"Result", u"Message"});
    static constexpr std::u16string_view kResults[] = {u"Good", u"Suspect", u"Failure", u"Cancel", u"Bad"};
    const std::u16string decimal = base::decimal(number);
    widgets::Row row{u"src/module_" + decimal + u".c", u"", u"", {}};
    const std::u16string texts[] = {
        u"0:00:01", u"Verify", u"Source", u"P" + decimal, std::u16string(kResults[number % 5]), u"a message"};
    for (std::size_t i = 0; i < keys->size(); ++i) row.cells.push_back({(*keys)[i], texts[i], u"", u"", u""});
    return widgets::makeRow(row, keys);
}

/// Rows whose texts come in no order, the same ones each time.
std::vector<RowPtr> makeRows(int count) {
    std::mt19937 random(5);
    std::vector<RowPtr> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) rows.push_back(makeRow(static_cast<std::uint32_t>(random())));
    return rows;
}

/// Lists that show the same rows.
class Lists {
public:
    explicit Lists(int count) {
        for (int i = 0; i < count; ++i) {
            all.push_back(std::make_unique<ListView>(collator_, measurer_));
            all.back()->setColumns(std::vector<widgets::Column>(kColumns));
        }
    }
    void append(const std::vector<RowPtr>& rows) {
        for (const auto& list : all)
            for (const RowPtr& row : rows) list->append(row);
    }
    /// What a click on a header does to all lists.
    void sort(int column, SortOrder order) {
        for (const auto& list : all) {
            list->setSort(column - 1, order);
            list->setSorted(true);
        }
    }

private:
    HeadlessCollator collator_;
    platform::headless::HeadlessTextMeasurer measurer_;

public:
    std::vector<std::unique_ptr<ListView>> all;
};

double secondsOfFirstSort(int column, int count) {
    Lists lists(count);
    lists.append(makeRows(kManyRows));
    return seconds([&] { lists.sort(column, SortOrder::Ascending); });
}

double secondsOfComparing(int column) {
    std::vector<std::u16string> texts;
    for (const RowPtr& row : makeRows(kManyRows)) texts.emplace_back(row->columnText(column));
    std::vector<const std::u16string*> order;
    for (const std::u16string& text : texts) order.push_back(&text);
    return seconds([&] {
        std::ranges::stable_sort(order, [](const std::u16string* left, const std::u16string* right) {
            return HeadlessCollator::compare(*left, *right) < 0;
        });
    });
}

double secondsOfReversing(int column) {
    Lists lists(1);
    lists.append(makeRows(kManyRows));
    lists.sort(column, SortOrder::Ascending);
    return seconds([&] { lists.sort(column, SortOrder::Descending); });
}

Figure against(const char* name, const Pair& pair, double goal) {
    return {name, pair.value * 1e3, "ms", pair.peer * 1e3, goal};
}

std::vector<Figure> measureSorting() {
    constexpr int kRounds = 3;
    const Pair distinct = medians(
        kRounds, [] { return secondsOfFirstSort(kDistinctColumn, 1); },
        [] { return secondsOfComparing(kDistinctColumn); });
    const Pair few = medians(
        kRounds, [] { return secondsOfFirstSort(kFewValuesColumn, 1); },
        [] { return secondsOfComparing(kFewValuesColumn); });
    return {against("sort.1M_rows_against_comparing_by_collation", distinct, 0.3),
            against("sort.1M_rows_of_5_texts_against_comparing", few, 0.3)};
}

std::vector<Figure> measureSortingAgain() {
    constexpr int kRounds = 3;
    const Pair reversed = medians(
        kRounds, [] { return secondsOfReversing(kDistinctColumn); },
        [] { return secondsOfFirstSort(kDistinctColumn, 1); });
    const Pair lists = medians(
        kRounds, [] { return secondsOfFirstSort(kDistinctColumn, kLists); },
        [] { return secondsOfFirstSort(kDistinctColumn, 1); });
    return {against("sort.reversing_1M_rows_against_the_first_sort", reversed, 0.3),
            against("sort.1M_rows_in_4_lists_against_one_list", lists, 2)};
}

double secondsPerInsertedRow(int rows) {
    Lists lists(1);
    lists.sort(kDistinctColumn, SortOrder::Ascending);
    std::mt19937 random(5);
    return seconds([&] {
               for (int i = 0; i < rows; ++i)
                   lists.all.front()->append(makeRow(static_cast<std::uint32_t>(random())));
           }) /
           rows;
}

double secondsPerInsertedRowOfFew() {
    constexpr int kRepeats = 100;
    double sum = 0;
    for (int i = 0; i < kRepeats; ++i) sum += secondsPerInsertedRow(kFewRows);
    return sum / kRepeats;
}

std::vector<Figure> measureInserting() {
    const Pair pair = medians(
        3, [] { return secondsPerInsertedRow(kManyRows); }, secondsPerInsertedRowOfFew);
    return {{"sort.insert_row_cost_at_1M_rows_against_1k", pair.value * 1e9, "ns", pair.peer * 1e9, 2.5}};
}

/// Every second row is selected and removed from all lists, the last one first.
double secondsOfRemoving(int rows) {
    Lists lists(kLists);
    lists.append(makeRows(rows));
    for (const auto& list : lists.all)
        for (int position = 1; position <= rows; position += 2) list->select(position, true);
    return seconds([&] {
        for (int position = rows; position >= 1; --position)
            if (lists.all.front()->isSelected(position))
                for (const auto& list : lists.all) list->remove(position);
    });
}

std::vector<Figure> measureRemoving() {
    constexpr int kRounds = 5;
    constexpr int kRows = 100'000;
    constexpr double kGoalSeconds = 1;
    const Pair total = medians(
        kRounds, [] { return secondsOfRemoving(kRows); }, [] { return kGoalSeconds; });
    const Pair growth = medians(
        kRounds, [] { return secondsOfRemoving(kRows) / kRows; },
        [] { return secondsOfRemoving(kRows / 10) / (kRows / 10); });
    return {against("remove.every_second_of_100k_rows_in_4_lists", total, 1),
            {"remove.row_cost_at_100k_rows_against_10k", growth.value * 2e9, "ns", growth.peer * 2e9, 1.5}};
}

const Registration sorting("sort.first", measureSorting);
const Registration again("sort.again", measureSortingAgain);
const Registration inserting("sort.insert", measureInserting);
const Registration removing("remove.selected", measureRemoving);

} // namespace
} // namespace cvlog::bench
