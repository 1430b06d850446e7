#pragma once

#include "store/sqlite_connection.h"

#include <optional>

namespace cvlog::store {

/// Gives the numbers of a column whose table cannot remember the highest one. The file keeps a mark that no number
/// ever given is above. It is moved ahead by blocks that grow while nobody else changes the file, so that most
/// records do not write it; what is left of a block is given back at the end. A program that is killed leaves a gap.
class ReservedNumbers {
public:
    ReservedNumbers(std::u16string table, std::u16string column);

    bool isOf(std::u16string_view table, std::u16string_view column) const noexcept;

    /// A number to be given if the file is at `fileVersion` then; with it one block's end where it begins one.
    struct Next {
        std::int64_t number = 0;
        std::int64_t end = 0;
        std::int64_t fileVersion = 0;
        std::int64_t ownChanges = 0;
        std::int64_t blockSize = 0;
    };
    /// Out of the block; nothing when it is used up, or when the host's statements may have changed the file.
    std::optional<Next> fromBlock(std::int64_t ownChanges) const noexcept;
    /// Of a new block, which is marked in the file. To be called within a transaction, which holds the file. Throws
    /// when there are no more numbers.
    Next fromNewBlock(SqliteConnection& connection, std::int64_t ownChanges) const;
    /// The number is in the file, which is now at `fileVersion`.
    void noteGiven(const Next& next, std::int64_t fileVersion) noexcept;
    /// Ignores failures: the numbers are then never used.
    void giveBack(SqliteConnection& connection) noexcept;

private:
    std::int64_t highestGiven(SqliteConnection& connection) const;

    std::u16string table_;
    std::u16string column_;
    Next last_; // given last
};

} // namespace cvlog::store
