#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

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
    std::u16string_view of(RowId row) const noexcept;
    /// Without regard to case; 0 when no row has the key.
    RowId find(std::u16string_view key) const;
    /// The key must not be another row's. An empty one takes the row's key away.
    void set(RowId row, std::u16string_view key);
    void clear() noexcept;

private:
    std::unordered_map<RowId, std::u16string> keys_;
    std::unordered_map<std::u16string, RowId> rows_; // by the folded key
};

} // namespace cvlog::widgets
