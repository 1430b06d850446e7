#pragma once

#include "ports/collator.h"
#include "widgets/row_content.h"

#include <cstdint>
#include <span>
#include <vector>

namespace cvlog::widgets {

/// How rows compare by the text of one column.
struct RowRanks {
    std::vector<std::uint32_t> ranks; // by row; from 0, without gaps for keys that were ranked together
    std::uint32_t count = 0;          // all ranks are less
};

/// The key of a row's text in a column (1-based): the remembered one, else one that is remembered from now on.
const SortKey& sortKeyOf(const RowContent& row, int column, ports::Collator& collator);

/// Ranks rows. The collator is asked once for each distinct text that has no key yet; rows that were ranked together
/// for the same column before, in whatever list, need neither keys nor comparisons.
RowRanks rankRows(std::span<const RowContent* const> rows, int column, ports::Collator& collator);

/// Where each row goes, from 0: rows of equal rank stay in order either way.
std::vector<std::uint32_t> placesOf(RowRanks ranked, bool descending);

} // namespace cvlog::widgets
