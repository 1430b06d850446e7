#include "widgets/row_keys.h"

#include "base/text.h"

#include <algorithm>
#include <limits>

namespace cvlog::widgets {

namespace {

// The number of a key "k5", 0 of any other.
std::int32_t numberIn(std::u16string_view key) {
    constexpr std::size_t kLongest = 11; // "k" and the ten digits of the largest number
    if (key.size() < 2 || key.size() > kLongest || base::foldCase(key.front()) != u'K' || key[1] == u'0')
        return 0;
    std::int64_t number = 0;
    for (const char16_t digit : key.substr(1)) {
        if (digit < u'0' || digit > u'9') return 0;
        number = number * 10 + (digit - u'0');
    }
    return number <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(number) : 0;
}

} // namespace

std::u16string RowKeyBook::of(RowId row) const {
    if (const std::int32_t number = numberOf(row)) return u"k" + base::decimal(number);
    const auto found = keys_.find(row);
    return found == keys_.end() ? std::u16string() : found->second;
}

RowId RowKeyBook::find(std::u16string_view key) const {
    if (key.empty()) return 0;
    if (!rows_.empty())
        if (const auto found = rows_.find(base::folded(key)); found != rows_.end()) return found->second;
    const std::int32_t number = numbers_.empty() ? 0 : numberIn(key);
    const auto found = number == 0 ? numbers_.end() : std::find(numbers_.begin(), numbers_.end(), number);
    return found == numbers_.end() ? 0 : firstNumbered_ + static_cast<RowId>(found - numbers_.begin());
}

void RowKeyBook::set(RowId row, std::u16string_view key) {
    if (numberOf(row) != 0) numbers_[row - firstNumbered_] = 0;
    if (const auto old = keys_.empty() ? keys_.end() : keys_.find(row); old != keys_.end()) {
        rows_.erase(base::folded(old->second));
        keys_.erase(old);
    }
    if (key.empty()) return;
    rows_.emplace(base::folded(key), row);
    keys_.emplace(row, key);
}

void RowKeyBook::setNumbered(RowId row, std::int32_t number) {
    set(row, {});
    if (numbers_.empty()) firstNumbered_ = row;
    if (row < firstNumbered_) {
        numbers_.insert(numbers_.begin(), firstNumbered_ - row, 0);
        firstNumbered_ = row;
    }
    const std::size_t place = row - firstNumbered_;
    if (place >= numbers_.size()) numbers_.resize(place + 1);
    numbers_[place] = number;
}

std::int32_t RowKeyBook::numberOf(RowId row) const noexcept {
    const std::size_t place = static_cast<std::size_t>(row) - firstNumbered_; // wraps for earlier rows
    return place < numbers_.size() ? numbers_[place] : 0;
}

void RowKeyBook::clear() noexcept {
    keys_.clear();
    rows_.clear();
    numbers_ = {};
}

} // namespace cvlog::widgets
