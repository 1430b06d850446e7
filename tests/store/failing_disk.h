#pragma once

#include <functional>

// A file layer between the database library and the system that counts every change of a file, and lets a
// test step in at one of them: it fails, or the disk ends there, in the middle of a write. Installed as the
// library's default for as long as it lives; one at a time. A disk writes sectors of 512 bytes.

namespace cvlog::store::testbed {

enum class DiskAction { Write, Truncate, Sync, Delete };
/// What lands of the write at which the disk ends.
enum class Torn { Nothing, FirstHalf, AllButTheLastSector };

class FailingDisk {
public:
    /// Called before each change with its number from 1; true lets it fail as a full or broken disk would.
    using Step = std::function<bool(DiskAction action, int number)>;

    FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;
    ~FailingDisk();

    /// Counts from 0 again.
    void watch(Step step);
    /// Counts from 0 again; at this change the disk ends: of a write some sectors land, and everything after it fails.
    void endAt(int number, Torn torn);
    /// To be called once nothing has a file open: of what was written since a file's last flush each write lands
    /// whole, in its first sectors, or not at all. Deleting a file is done at once.
    void losePower(unsigned seed);
    int changes() const noexcept;
    int syncs() const noexcept;
};

} // namespace cvlog::store::testbed
