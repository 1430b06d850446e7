#include "widgets/row_ranks.h"

#include "widgets/key_order.h"

#include <bit>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace cvlog::widgets {

namespace {

/// Finds out which rows have the same text.
class TextTable {
public:
    TextTable(std::span<const RowContent* const> rows, int column)
        : rows_(rows), column_(column), slots_(std::bit_ceil(2 * rows.size())) {}

    /// The first row that came with this row's text; the row itself when it is the first.
    const RowContent& firstLike(std::uint32_t row) {
        const std::u16string_view text = rows_[row]->columnText(column_);
        const std::size_t hash = std::hash<std::u16string_view>()(text);
        for (std::size_t at = hash;; ++at) {
            Slot& slot = slots_[at & (slots_.size() - 1)];
            if (slot.row == 0) slot = {static_cast<std::uint32_t>(hash), row + 1};
            if (slot.row == row + 1) return *rows_[row];
            const RowContent& other = *rows_[slot.row - 1];
            if (slot.hash == static_cast<std::uint32_t>(hash) && other.columnText(column_) == text)
                return other;
        }
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t row = 0; // from 1; 0 when free
    };
    std::span<const RowContent* const> rows_;
    int column_;
    std::vector<Slot> slots_;
};

std::vector<const RowContent*> withoutKey(std::span<const RowContent* const> rows, int column) {
    std::vector<const RowContent*> without;
    for (const RowContent* row : rows)
        if (!row->sortKey(column)) without.push_back(row);
    return without;
}

void makeKeys(std::span<const RowContent* const> rows, int column, ports::Collator& collator) {
    TextTable texts(rows, column);
    std::string bytes;
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        const RowContent& first = texts.firstLike(i);
        if (!first.sortKey(column)) {
            bytes.clear();
            collator.appendSortKey(first.columnText(column), bytes);
            first.rememberSortKey(SortKey::make(column, bytes));
        }
        if (&first != rows[i]) rows[i]->rememberSortKey(SortKeyPtr(first.sortKey(column)));
    }
}

/// The ranks the rows have from being ranked together; a count of 0 when they were not.
RowRanks knownRanks(std::span<const RowContent* const> rows, int column) {
    RowRanks known;
    const Ranking* const ranking = rows.front()->sortKey(column)->ranking();
    if (!ranking || ranking->ranks == 0) return known;
    known.ranks.reserve(rows.size());
    for (const RowContent* row : rows) {
        const SortKey& key = *row->sortKey(column);
        if (key.ranking() != ranking) return {};
        known.ranks.push_back(key.rank());
    }
    known.count = ranking->ranks;
    return known;
}

void rankKeys(std::span<const RowContent* const> rows, int column) {
    const auto ranking = std::make_shared<Ranking>();
    std::vector<const SortKey*> keys;
    for (const RowContent* row : rows) {
        const SortKey& key = *row->sortKey(column);
        if (key.ranking() == ranking.get()) continue;
        keys.push_back(&key);
        key.rankIn(ranking, 0);
    }
    putInOrder(keys);
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i > 0 && keys[i - 1]->bytes() != keys[i]->bytes()) ++rank;
        keys[i]->setRank(rank);
    }
    ranking->ranks = rank + 1;
}

} // namespace

const SortKey& sortKeyOf(const RowContent& row, int column, ports::Collator& collator) {
    if (const SortKey* key = row.sortKey(column)) return *key;
    row.rememberSortKey(SortKey::make(column, collator.sortKey(row.columnText(column))));
    return *row.sortKey(column);
}

RowRanks rankRows(std::span<const RowContent* const> rows, int column, ports::Collator& collator) {
    if (rows.empty()) return {};
    if (const auto without = withoutKey(rows, column); !without.empty()) makeKeys(without, column, collator);
    RowRanks ranks = knownRanks(rows, column);
    if (ranks.count > 0) return ranks;
    rankKeys(rows, column);
    return knownRanks(rows, column);
}

std::vector<std::uint32_t> placesOf(RowRanks ranked, bool descending) {
    std::vector<std::uint32_t> next(ranked.count, 0);
    for (const std::uint32_t rank : ranked.ranks) ++next[rank];
    std::uint32_t place = 0;
    for (std::uint32_t i = 0; i < ranked.count; ++i) {
        std::uint32_t& begin = next[descending ? ranked.count - 1 - i : i];
        place += std::exchange(begin, place);
    }
    for (std::uint32_t& rank : ranked.ranks) rank = next[rank]++;
    return std::move(ranked.ranks);
}

} // namespace cvlog::widgets
