// What users pay for commands on many rows: copying, deleting, closing entries.

#include "base/text.h"
#include "bench/harness.h"
#include "bench/native/headless_log.h"
#include "details/expansion.h"
#include "view/row_commands.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::bench {
namespace {

constexpr int kFewRows = 10'000;
constexpr int kRows = 100'000;
constexpr int kManyRows = 1'000'000;
constexpr int kLists = 2;

/// All that the commands ask of a host.
class PointerHost : public automation::Object {
public:
    automation::Value call(std::u16string_view, std::span<automation::Value>) override { return 0; }
    automation::Value get(std::u16string_view) override { return {}; }
    void put(std::u16string_view, const automation::Value&) override {}
};

void fill(HeadlessLog& log, int rows) {
    log.add(rows);
    log.globals().store.Workspace = hostapi::Workspace(std::make_shared<PointerHost>());
}

core::LogViews::ListRef firstList(HeadlessLog& log) { return log.globals().LogViews.first(); }

// The fields of all rows, each with what follows it, as they are in memory.
std::vector<base::CompactTextView> piecesOf(const widgets::ListView& list) {
    std::vector<base::CompactTextView> pieces;
    for (int row = 1; row <= list.rowCount(); ++row) {
        for (int column = 1; column <= list.columnCount(); ++column) {
            if (column > 1) pieces.push_back(u"\t");
            pieces.push_back(list.row(row).columnText(column));
        }
        pieces.push_back(u"\r\n");
    }
    return pieces;
}

// The peer knows all texts and does nothing but append them to one.
std::vector<Figure> measureCopy() {
    HeadlessLog log(1);
    fill(log, kRows);
    const auto list = firstList(log);
    list->selectAll(true);
    const std::vector<base::CompactTextView> pieces = piecesOf(*list);
    std::size_t size = 0;
    for (const base::CompactTextView piece : pieces) size += piece.size();
    const auto copyBytes = [&pieces, size] {
        const auto text = std::make_unique_for_overwrite<char16_t[]>(size);
        char16_t* end = text.get();
        for (const base::CompactTextView piece : pieces)
            end = piece.inBytes() ? base::widenAscii(piece.bytes(), end)
                                  : std::ranges::copy(piece.wide(), end).out;
        if (end != text.get() + size) throw std::logic_error("bytes are missing");
    };
    const Pair pair = medians(
        9, [&] { return seconds([&] { view::CopyRows(log.globals(), list); }); },
        [&] { return seconds(copyBytes); });
    return {
        {"rows.copy_of_100k_rows_against_copying_their_bytes", pair.value * 1e3, "ms", pair.peer * 1e3, 3}};
}

double secondsToDeleteEverySecond(int rows) {
    HeadlessLog log(kLists);
    fill(log, rows);
    const auto list = firstList(log);
    for (int row = 2; row <= rows; row += 2) list->select(row, true);
    return seconds([&] { view::DeleteRows(log.globals(), list); });
}

std::vector<Figure> measureDelete() {
    const Pair hundred = medians(
        3, [] { return secondsToDeleteEverySecond(kRows); }, [] { return 1.0; });
    const Pair growth = medians(
        3, [] { return secondsToDeleteEverySecond(kManyRows) / kManyRows; },
        [] { return secondsToDeleteEverySecond(kFewRows) / kFewRows; });
    return {{"rows.delete_every_second_of_100k_rows", hundred.value * 1e3, "ms", hundred.peer * 1e3, 1},
            {"rows.delete_row_cost_at_1M_rows_against_10k", growth.value * 1e9, "ns", growth.peer * 1e9, 2}};
}

// One entry with so many child rows.
double secondsToCollapse(int children) {
    HeadlessLog log(kLists);
    fill(log, 2);
    const widgets::RowPtr child = widgets::makeRow({{}, u"expansion", {}, {{u"ObjID", {}, u"P1", {}, {}}}});
    const auto lists = log.globals().LogViews.all();
    for (int row = 2; row < children + 2; ++row) {
        lists.front()->insert(row, child);
        for (std::size_t i = 1; i < lists.size(); ++i) lists[i]->insertCopy(row, *lists.front(), row);
    }
    return seconds([&] { details::CollapseEntry(log.globals(), lists.front(), 1); });
}

std::vector<Figure> measureCollapse() {
    const Pair pair = medians(
        3, [] { return secondsToCollapse(kManyRows) / kManyRows; },
        [] { return secondsToCollapse(kFewRows) / kFewRows; });
    return {
        {"rows.collapse_row_cost_at_1M_child_rows_against_10k", pair.value * 1e9, "ns", pair.peer * 1e9, 2}};
}

const Registration copying("rows.copy", measureCopy);
const Registration deleting("rows.delete", measureDelete);
const Registration collapsing("rows.collapse", measureCollapse);

} // namespace
} // namespace cvlog::bench
