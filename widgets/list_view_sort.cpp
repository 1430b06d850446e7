// Sorting a list: stable, by collation keys that rows remember, and the same in every list. A descending sort reverses
// the comparison, not the result, so that equal rows keep their order either way.

#include "widgets/list_view.h"

#include "widgets/row_ranks.h"

#include <algorithm>

namespace cvlog::widgets {

void ListView::setSorted(bool sorted) {
    if (sorted) return sortBy(sortKey_, sortOrder_);
    sorted_ = false;
}

void ListView::setSort(int key, SortOrder order) {
    if (sorted_) return sortBy(key, order);
    sortKey_ = key;
    sortOrder_ = order;
    inOrder_ = rowCount() == 0;
}

void ListView::sortBy(int key, SortOrder order) {
    const bool moves = !(inOrder_ && key == sortKey_ && order == sortOrder_);
    if (moves) placeRows(key, order); // the only part that can fail
    sorted_ = true;
    sortKey_ = key;
    sortOrder_ = order;
    inOrder_ = true;
    if (moves) tellPeer([](ListViewPeer& peer) { peer.rowsReordered(); });
}

void ListView::placeRows(int key, SortOrder order) {
    const auto count = static_cast<std::size_t>(rowCount());
    std::vector<const RowContent*> contents;
    contents.reserve(count);
    for (std::size_t i = 0; i < count; ++i) contents.push_back(rows_[i].content.get());
    const std::vector<std::uint32_t> places =
        placesOf(rankRows(contents, key + 1, collator_), order == SortOrder::Descending);

    std::vector<Entry> placed(count);
    if (focused_ > 0) focused_ = static_cast<int>(places[static_cast<std::size_t>(focused_ - 1)]) + 1;
    for (std::size_t i = 0; i < count; ++i) placed[places[i]] = std::move(rows_[i]);
    for (std::size_t i = 0; i < count; ++i) rows_[i] = std::move(placed[i]);
}

int ListView::sortedPlace(const RowContent& content) const {
    const int column = sortKey_ + 1;
    const SortKey& key = sortKeyOf(content, column, collator_);
    const auto staysBefore = [&](const Entry& other) {
        const SortKey& otherKey = sortKeyOf(*other.content, column, collator_);
        return sortOrder_ == SortOrder::Ascending ? !(key < otherKey) : !(otherKey < key);
    };
    // Most of the time goes into waiting for the memory of rows that were not looked at for long.
    const auto comingUp = [](const Entry& other) { __builtin_prefetch(other.content.get()); };
    std::size_t place = inOrder_ ? rows_.partitionPoint(staysBefore, comingUp) : 0;
    if (!inOrder_) { // the same search in every list, so that all find the same place in the same disorder
        std::size_t end = rows_.size();
        while (place < end) {
            const std::size_t middle = place + (end - place) / 2;
            (staysBefore(rows_[middle]) ? place : end) = staysBefore(rows_[middle]) ? middle + 1 : middle;
        }
    }
    if (place > 0) shareKey(content, *rows_[place - 1].content);
    return static_cast<int>(place) + 1;
}

void ListView::shareKey(const RowContent& content, const RowContent& other) const noexcept {
    const SortKey* const key = other.sortKey(sortKey_ + 1);
    if (key && key->bytes() == content.sortKey(sortKey_ + 1)->bytes())
        content.rememberSortKey(SortKeyPtr(key));
}

} // namespace cvlog::widgets
