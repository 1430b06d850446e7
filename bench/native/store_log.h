#pragma once

#include "bench/native/store_files.h"
#include "core/cv_log.h"
#include "platform/headless/headless_platform.h"
#include "store/record_writer.h"

#include <memory>
#include <string>

namespace cvlog::bench {

// What each measured record says.
inline constexpr const char* kWrittenMethod = "Compile";
inline constexpr const char* kWrittenObject = "PAYROLL";
inline constexpr const char* kWrittenType = "PROG";
inline constexpr const char* kWrittenMessage =
    "2026-01-02 03:04:05 Compile applied to Payroll program (Program) - Errors found. "
    "conversion to 'int' from 'long int' may change the value";
inline constexpr int kWrittenCode = 8;
inline constexpr const char* kWrittenErrors = "payroll.errors";

/// How a log keeps its file, for who does the same without it.
inline constexpr const char* kJournalOfTheLog = "pragma journal_mode = wal; pragma synchronous = normal; "
                                                "pragma wal_autocheckpoint = 4096";

/// A log over a database on the disk, with a host that answers from memory: its records cost what composing and
/// committing them costs.
class StoredLog {
public:
    /// Opens the file and does to it what opening a log does: missing columns are added.
    explicit StoredLog(const std::string& path);

    void write(int count);
    /// The query that an opening reads the highest record number with; the number.
    int highestNumber();
    core::Globals& globals() noexcept { return globals_; }
    platform::headless::HeadlessPlatform& platform() noexcept { return platform_; }

private:
    platform::headless::HeadlessPlatform platform_;
    NativePaths paths_;
    std::unique_ptr<store::Engine> engine_;
    core::Globals globals_;
    std::shared_ptr<core::CVLog> log_;
    store::Record record_;
};

} // namespace cvlog::bench
