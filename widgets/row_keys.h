#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace cvlog::widgets {

/// Names a row for as long as it is in its list; never used again in that list.
using RowId = std::uint32_t;

/// Numbers rows, never one number twice. Lists that show the same rows share one.
struct RowIds {
    RowId last = 0;
};

/// The keys that rows of one list have, found from either side. A row without one costs nothing here.
class RowKeyBook {
public:
    /// Empty when the row has none.
    std::u16string of(RowId row) const;
    /// Without regard to case; 0 when no row has the key.
    RowId find(std::u16string_view key) const;
    /// The key must not be another row's. An empty one takes the row's key away.
    void set(RowId row, std::u16string_view key);
    /// Gives the row the key "k" and a number above 0, also when another row has it: the elder is found by it. It costs
    /// four bytes a row as long as rows are numbered in the order of their ids.
    void setNumbered(RowId row, std::int32_t number);
    void clear() noexcept;

private:
    std::int32_t numberOf(RowId row) const noexcept;

    std::unordered_map<RowId, std::u16string> keys_;
    std::unordered_map<std::u16string, RowId> rows_; // by the folded key
    std::vector<std::int32_t> numbers_;              // of the rows from the first numbered one on; 0: none
    RowId firstNumbered_ = 0;
};

} // namespace cvlog::widgets
