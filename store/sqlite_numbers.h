#pragma once

#include "store/sqlite_mark.h"

#include <optional>
#include <utility>

namespace cvlog::store {

/// Gives the numbers of a counter column. The file keeps a mark that no number ever given is above. It is moved ahead
/// by blocks that grow while nobody else changes the file, so that most records do not write it: for an automatic key
/// too, whose mark the library would otherwise write, as a page of its own, with each record.
///
/// A block is good only as long as nothing but its own numbers was written to the file. After a change by another
/// program the rest of it is never used: the next number comes from the file, so that numbers grow in the order of
/// the records. Before other writing of this connection the block is given back.
class ReservedNumbers {
public:
    explicit ReservedNumbers(NumberMark mark) : mark_(std::move(mark)) {}

    /// A number to be given if the file is at `fileVersion` then.
    struct Next {
        std::int64_t number = 0;
        std::int64_t end = 0; // of its block
        std::int64_t blockSize = 0;
        std::int64_t fileVersion = 0;
    };
    /// Nothing when the block is used up.
    std::optional<Next> fromBlock() const noexcept;
    /// Of a new block, which is marked in the file. To be called within a transaction, which holds the file. Throws
    /// when there are no more numbers.
    Next fromNewBlock(SqliteConnection& connection) const;
    /// The number is in the file, which is now at `fileVersion`.
    void noteGiven(const Next& next, std::int64_t fileVersion) noexcept;
    /// Unless the file was changed meanwhile. Ignores failures: the numbers are then never used.
    void giveBack(SqliteConnection& connection) noexcept;

private:
    NumberMark mark_;
    Next last_; // given last
};

} // namespace cvlog::store
