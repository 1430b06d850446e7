#include "widgets/row_ranks.h"

#include "widgets/key_order.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace cvlog::widgets {

namespace {

/// The keys of rows, by row; the rows keep them alive.
using Keys = std::vector<const SortKey*>;

/// Finds out which rows have the same text.
class TextTable {
public:
    TextTable(std::span<const RowContent* const> rows, int column) : rows_(rows), column_(column) {}

    /// The first row that came with this row's text; the row itself when it is the first.
    const RowContent& firstLike(std::uint32_t row) {
        if (2 * used_ >= slots_.size()) grow();
        const base::CompactTextView text = rows_[row]->columnText(column_);
        const auto hash = static_cast<std::uint32_t>(std::hash<std::u16string_view>()(text.in(wide_)));
        for (std::size_t at = hash;; ++at) {
            Slot& slot = slots_[at & (slots_.size() - 1)];
            if (slot.row == 0) {
                slot = {hash, row + 1};
                ++used_;
                return *rows_[row];
            }
            const RowContent& other = *rows_[slot.row - 1];
            if (slot.hash == hash && other.columnText(column_) == text) return other;
        }
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t row = 0; // from 1; 0 when free
    };
    void grow() {
        std::vector<Slot> larger(std::max<std::size_t>(64, 4 * slots_.size()));
        for (const Slot& slot : slots_) {
            if (slot.row == 0) continue;
            std::size_t at = slot.hash;
            while (larger[at & (larger.size() - 1)].row != 0) ++at;
            larger[at & (larger.size() - 1)] = slot;
        }
        slots_ = std::move(larger);
    }

    std::span<const RowContent* const> rows_;
    int column_;
    std::u16string wide_; // room for a text that lies in bytes
    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

/// Gives every row a key, one for all that have the same text and none yet.
Keys keysOf(std::span<const RowContent* const> rows, int column, ports::Collator& collator) {
    Keys keys;
    keys.reserve(rows.size());
    TextTable texts(rows, column);
    std::string bytes;
    std::u16string wide;
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        const SortKey* key = rows[i]->sortKey(column);
        if (!key) {
            const RowContent& first = texts.firstLike(i);
            if (!first.sortKey(column)) {
                bytes.clear();
                collator.appendSortKey(first.columnText(column).in(wide), bytes);
                first.rememberSortKey(SortKey::make(column, bytes));
            }
            key = first.sortKey(column);
            if (&first != rows[i]) rows[i]->rememberSortKey(SortKeyPtr(key));
        }
        keys.push_back(key);
    }
    return keys;
}

/// The ranks that the keys have from being ranked together; a count of 0 when they were not.
RowRanks knownRanks(const Keys& keys) {
    RowRanks known;
    const Ranking* const ranking = keys.front()->ranking();
    if (!ranking || ranking->ranks == 0) return known;
    known.ranks.reserve(keys.size());
    for (const SortKey* key : keys) {
        if (key->ranking() != ranking) return {};
        known.ranks.push_back(key->rank());
    }
    known.count = ranking->ranks;
    return known;
}

void rankTogether(const Keys& keys) {
    const auto ranking = std::make_shared<Ranking>();
    Keys distinct;
    for (const SortKey* key : keys) {
        if (key->ranking() == ranking.get()) continue;
        distinct.push_back(key);
        key->rankIn(ranking, 0);
    }
    putInOrder(distinct);
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < distinct.size(); ++i) {
        if (i > 0 && distinct[i - 1]->bytes() != distinct[i]->bytes()) ++rank;
        distinct[i]->setRank(rank);
    }
    ranking->ranks = rank + 1;
}

} // namespace

const SortKey& sortKeyOf(const RowContent& row, int column, ports::Collator& collator) {
    if (const SortKey* key = row.sortKey(column)) return *key;
    std::u16string wide;
    row.rememberSortKey(SortKey::make(column, collator.sortKey(row.columnText(column).in(wide))));
    return *row.sortKey(column);
}

RowRanks rankRows(std::span<const RowContent* const> rows, int column, ports::Collator& collator) {
    if (rows.empty()) return {};
    const Keys keys = keysOf(rows, column, collator);
    RowRanks ranks = knownRanks(keys);
    if (ranks.count > 0) return ranks;
    rankTogether(keys);
    return knownRanks(keys);
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
