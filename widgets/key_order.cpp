// Sorts keys by a few of their bytes at a time, held in a number: first by those behind what all have in common, then
// each run of keys that are equal so far by the following ones.

#include "widgets/key_order.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace cvlog::widgets {

namespace {

constexpr std::size_t kBytesAtOnce = 7;
constexpr std::size_t kMore = kBytesAtOnce + 1; // in the last byte of a number: the key goes on
constexpr std::size_t kFew = 8;

struct Item {
    std::uint64_t bytes;
    const SortKey* key;
};

/// Keys that are equal in their first bytes.
struct Run {
    std::size_t begin;
    std::size_t end;
    std::size_t depth;
};

/// The bytes from a place on, most significant first, then how many these are, so that the shorter key comes first.
std::uint64_t bytesFrom(std::string_view key, std::size_t depth) noexcept {
    const std::string_view rest = key.substr(depth);
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < kBytesAtOnce; ++i)
        bytes = bytes << 8U | (i < rest.size() ? static_cast<unsigned char>(rest[i]) : 0U);
    return bytes << 8U | std::min(rest.size(), kMore);
}

std::size_t commonDepth(std::span<const Item> items, std::size_t depth) noexcept {
    std::string_view common = items.front().key->bytes().substr(depth);
    for (const Item& item : items) {
        const std::string_view other = item.key->bytes().substr(depth);
        const auto end = std::mismatch(common.begin(), common.end(), other.begin(), other.end()).first;
        common = common.substr(0, static_cast<std::size_t>(end - common.begin()));
        if (common.empty()) break;
    }
    return depth + common.size();
}

void pushRuns(std::span<const Item> items, const Run& done, std::vector<Run>& open) {
    for (std::size_t begin = done.begin; begin < done.end;) {
        std::size_t end = begin + 1;
        while (end < done.end && items[end].bytes == items[begin].bytes) ++end;
        const bool goesOn = (items[begin].bytes & 0xFFU) == kMore;
        if (goesOn && end - begin > 1) open.push_back({begin, end, done.depth + kBytesAtOnce});
        begin = end;
    }
}

void sortRun(std::span<Item> items, Run run, std::vector<Run>& open) {
    const std::span<Item> own = items.subspan(run.begin, run.end - run.begin);
    if (own.size() <= kFew) {
        std::sort(own.begin(), own.end(), [depth = run.depth](const Item& left, const Item& right) {
            return left.key->bytes().substr(depth) < right.key->bytes().substr(depth);
        });
        return;
    }
    run.depth = commonDepth(own, run.depth);
    for (Item& item : own) item.bytes = bytesFrom(item.key->bytes(), run.depth);
    std::sort(own.begin(), own.end(),
              [](const Item& left, const Item& right) { return left.bytes < right.bytes; });
    pushRuns(items, run, open);
}

} // namespace

void putInOrder(std::vector<const SortKey*>& keys) {
    std::vector<Item> items;
    items.reserve(keys.size());
    for (const SortKey* key : keys) items.push_back({0, key});
    std::vector<Run> open;
    if (items.size() > 1) open.push_back({0, items.size(), 0});
    while (!open.empty()) {
        const Run run = open.back();
        open.pop_back();
        sortRun(items, run, open);
    }
    for (std::size_t i = 0; i < items.size(); ++i) keys[i] = items[i].key;
}

} // namespace cvlog::widgets
