#include "store/sqlite_numbers.h"

#include "base/failure.h"
#include "store/engine_error.h"
#include "store/sqlite_counter.h"
#include "store/sqlite_properties.h"

#include <algorithm>
#include <utility>

namespace cvlog::store {

namespace {

constexpr std::int64_t kLargestBlock = 256;

} // namespace

ReservedNumbers::ReservedNumbers(std::u16string table, std::u16string column)
    : table_(std::move(table)), column_(std::move(column)) {}

std::optional<ReservedNumbers::Next> ReservedNumbers::fromBlock() const noexcept {
    if (last_.number >= last_.end) return std::nullopt;
    Next next = last_;
    ++next.number;
    return next;
}

ReservedNumbers::Next ReservedNumbers::fromNewBlock(SqliteConnection& connection) const {
    Next next = last_;
    const bool undisturbed = last_.blockSize > 0 && connection.fileVersion() == last_.fileVersion;
    if (!undisturbed)
        next.number = std::max(highestInTable(connection, table_, column_),
                               lastNumberIn(connection, table_, column_).value_or(0));
    if (next.number >= kLastCounter) fail(EngineError::CounterExhausted, u"The counter has no more numbers.");
    next.blockSize = undisturbed ? std::min(last_.blockSize * 2, kLargestBlock) : 1;
    next.end = std::min(next.number + next.blockSize, kLastCounter);
    ++next.number;
    setLastNumberIn(connection, table_, column_, next.end);
    return next;
}

void ReservedNumbers::noteGiven(const Next& next, std::int64_t fileVersion) noexcept {
    last_ = next;
    last_.fileVersion = fileVersion;
}

void ReservedNumbers::giveBack(SqliteConnection& connection) noexcept {
    if (last_.number < last_.end)
        base::ignoring(
            [&] { lowerLastNumberIn(connection, table_, column_, last_.number, last_.fileVersion); });
    last_ = {};
}

} // namespace cvlog::store
