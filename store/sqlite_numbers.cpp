#include "store/sqlite_numbers.h"

#include "base/failure.h"
#include "store/engine_error.h"
#include "store/sqlite_counter.h"

#include <algorithm>

namespace cvlog::store {

namespace {

constexpr std::int64_t kLargestBlock = 256;

} // namespace

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
        next.number = std::max(highestInTable(connection, mark_.table, mark_.column), mark_.read(connection));
    if (next.number >= kLastCounter) fail(EngineError::CounterExhausted, u"The counter has no more numbers.");
    next.blockSize = undisturbed ? std::min(last_.blockSize * 2, kLargestBlock) : 1;
    next.end = std::min(next.number + next.blockSize, kLastCounter);
    ++next.number;
    mark_.set(connection, next.end);
    return next;
}

void ReservedNumbers::noteGiven(const Next& next, std::int64_t fileVersion) noexcept {
    last_ = next;
    last_.fileVersion = fileVersion;
}

void ReservedNumbers::giveBack(SqliteConnection& connection) noexcept {
    if (last_.number < last_.end)
        base::ignoring([&] { mark_.lower(connection, last_.number, last_.fileVersion); });
    last_ = {};
}

} // namespace cvlog::store
