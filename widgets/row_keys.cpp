#include "widgets/row_keys.h"

#include "base/text.h"

namespace cvlog::widgets {

std::u16string_view RowKeyBook::of(RowId row) const noexcept {
    const auto found = keys_.find(row);
    return found == keys_.end() ? std::u16string_view() : found->second;
}

RowId RowKeyBook::find(std::u16string_view key) const {
    if (rows_.empty() || key.empty()) return 0;
    const auto found = rows_.find(base::folded(key));
    return found == rows_.end() ? 0 : found->second;
}

void RowKeyBook::set(RowId row, std::u16string_view key) {
    if (const auto old = keys_.find(row); old != keys_.end()) {
        rows_.erase(base::folded(old->second));
        keys_.erase(old);
    }
    if (key.empty()) return;
    rows_.emplace(base::folded(key), row);
    keys_.emplace(row, key);
}

void RowKeyBook::clear() noexcept {
    keys_.clear();
    rows_.clear();
}

} // namespace cvlog::widgets
