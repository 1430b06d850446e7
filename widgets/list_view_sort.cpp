// Sorting a list: stable, by precomputed collation keys, and the same in every list. A descending sort reverses the
// comparison, not the result, so that equal rows keep their order either way.

#include "widgets/list_view.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace cvlog::widgets {

namespace {

struct SortItem {
    std::uint64_t prefix; // the first eight bytes of the key decide most comparisons without touching it
    std::string key;
};

std::uint64_t prefixOf(const std::string& key) noexcept {
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < sizeof prefix; ++i)
        prefix = prefix << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return prefix;
}

bool before(const SortItem& left, const SortItem& right) noexcept {
    return left.prefix != right.prefix ? left.prefix < right.prefix : left.key < right.key;
}

} // namespace

void ListView::setSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted_) sortRows();
}

void ListView::setSort(int key, SortOrder order) {
    sortKey_ = key;
    sortOrder_ = order;
    if (sorted_) sortRows();
}

void ListView::sortRows() {
    const auto count = static_cast<std::size_t>(rowCount());
    std::vector<SortItem> items;
    items.reserve(count);
    for (int position = 1; position <= rowCount(); ++position) {
        std::string key = collator_.sortKey(row(position).columnText(sortKey_ + 1));
        items.push_back({prefixOf(key), std::move(key)});
    }
    std::vector<std::uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
        return sortOrder_ == SortOrder::Ascending ? before(items[left], items[right])
                                                  : before(items[right], items[left]);
    });

    std::vector<Entry> sortedEntries;
    sortedEntries.reserve(count);
    int focused = 0;
    for (const std::uint32_t index : order) {
        sortedEntries.push_back(std::move(rows_[index]));
        if (static_cast<int>(index) + 1 == focused_) focused = static_cast<int>(sortedEntries.size());
    }
    for (std::size_t i = 0; i < count; ++i) rows_[i] = std::move(sortedEntries[i]);
    focused_ = focused;
    tellPeer([](ListViewPeer& peer) { peer.rowsReordered(); });
}

int ListView::sortedPlace(const RowContent& content) const {
    const std::string key = collator_.sortKey(content.columnText(sortKey_ + 1));
    int low = 1;
    int high = rowCount() + 1;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        const std::string other = collator_.sortKey(row(middle).columnText(sortKey_ + 1));
        const bool comesBefore = sortOrder_ == SortOrder::Ascending ? key < other : other < key;
        (comesBefore ? high : low) = comesBefore ? middle : middle + 1;
    }
    return low;
}

} // namespace cvlog::widgets
