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

bool ReservedNumbers::isOf(std::u16string_view table, std::u16string_view column) const noexcept {
    return table == table_ && column == column_;
}

std::optional<ReservedNumbers::Next> ReservedNumbers::fromBlock(std::int64_t ownChanges) const noexcept {
    if (last_.number >= last_.end || last_.ownChanges != ownChanges) return std::nullopt;
    Next next = last_;
    ++next.number;
    return next;
}

ReservedNumbers::Next ReservedNumbers::fromNewBlock(SqliteConnection& connection,
                                                    std::int64_t ownChanges) const {
    Next next = last_;
    const std::int64_t version = connection.fileVersion();
    const bool undisturbed =
        last_.blockSize > 0 && version == last_.fileVersion && ownChanges == last_.ownChanges;
    if (!undisturbed) next.number = highestGiven(connection);
    if (next.number >= kLastCounter) fail(EngineError::CounterExhausted, u"The counter has no more numbers.");
    next.blockSize = undisturbed ? std::min(last_.blockSize * 2, kLargestBlock) : 1;
    next.end = std::min(next.number + next.blockSize, kLastCounter);
    next.ownChanges = ownChanges;
    ++next.number;
    setLastNumberIn(connection, table_, column_, next.end);
    return next;
}

void ReservedNumbers::noteGiven(const Next& next, std::int64_t fileVersion) noexcept {
    last_ = next;
    last_.fileVersion = fileVersion;
}

void ReservedNumbers::giveBack(SqliteConnection& connection) noexcept {
    if (last_.number >= last_.end) return;
    base::ignoring([&] { lowerLastNumberIn(connection, table_, column_, last_.end, last_.number); });
    last_.end = last_.number;
}

std::int64_t ReservedNumbers::highestGiven(SqliteConnection& connection) const {
    const std::int64_t marked = lastNumberIn(connection, table_, column_).value_or(0);
    const bool blockIsOurs = last_.end > 0 && marked == last_.end;
    return std::max(highestInTable(connection, table_, column_), blockIsOurs ? last_.number : marked);
}

} // namespace cvlog::store
