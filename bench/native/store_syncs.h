#pragma once

#include <cstdint>

struct sqlite3_vfs;

namespace cvlog::bench {

/// Counts the flushes that the database library asks the system for, as long as it lives and for files opened
/// meanwhile. One at a time; the files must be closed before it ends.
class CountedSyncs {
public:
    CountedSyncs();
    CountedSyncs(const CountedSyncs&) = delete;
    CountedSyncs& operator=(const CountedSyncs&) = delete;
    ~CountedSyncs();

    std::int64_t count() const noexcept;

private:
    sqlite3_vfs* system_;
};

} // namespace cvlog::bench
