#pragma once

#include "resources/string_ids.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace cvlog::resources {

/// One text of the string table.
struct StringEntry {
    int id;
    std::u16string_view text;
};

/// One language's texts, in the order of their ids.
using StringList = std::array<StringEntry, kStringCount>;

/// True when the ids of `list` form the two runs, each id once and in order, and no text is empty.
/// A StringList that is too short ends in entries with id 0, which this finds too.
constexpr bool isComplete(const StringList& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (!isStringId(list[i].id) || stringIndex(list[i].id) != i || list[i].text.empty()) return false;
    }
    return true;
}

/// True when `count` texts from id `copy` on equal those from id `original` on.
constexpr bool repeats(const StringList& list, int copy, int original, int count) {
    for (int i = 0; i < count; ++i) {
        if (list[stringIndex(copy + i)].text != list[stringIndex(original + i)].text) return false;
    }
    return true;
}

/// The control and the resources form carry the same captions under ids of their own, and
/// the history window has its caption twice. True when all these pairs agree.
constexpr bool copiesAgree(const StringList& list) {
    return repeats(list, 132, 100, 7) && repeats(list, 139, 107, 13) && repeats(list, 501, 152, 1);
}

} // namespace cvlog::resources
