#pragma once

#include <functional>

// A file layer between the database library and the system that counts every change of a file, and lets a
// test step in at one of them. Installed as the library's default for as long as it lives; one at a time.

namespace cvlog::store::testing {

enum class DiskAction { Write, Truncate, Sync, Delete };

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
    int changes() const noexcept;
    int syncs() const noexcept;
};

} // namespace cvlog::store::testing
