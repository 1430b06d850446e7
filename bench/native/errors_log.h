#pragma once

#include "core/cv_log.h"
#include "platform/headless/disk_file_system.h"
#include "platform/headless/headless_platform.h"
#include "view/log_control.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::bench {

/// A queue without messages that notes the longest time in which nobody asked it.
class WatchedPump final : public ports::MessagePump {
public:
    bool inputWaiting() override;
    bool yield() override { return true; }
    void watch();
    double longestSilence() const noexcept { return longest_; } // in seconds

private:
    using Time = std::chrono::steady_clock::time_point;

    bool watched_ = false;
    Time last_;
    double longest_ = 0;
};

/// A log on a platform without a screen, with a host that answers from memory. The entry in the middle of its rows
/// refers to an errors file on the disk.
class ErrorsLog {
public:
    ErrorsLog(int lists, int entries, const std::string& errorsPath);
    ErrorsLog(const ErrorsLog&) = delete;
    ErrorsLog& operator=(const ErrorsLog&) = delete;
    ~ErrorsLog();

    /// Ends the program unless there are so many rows afterwards.
    void expand(int rows);
    void collapse();
    WatchedPump& pump() noexcept { return platform_.pump; }

private:
    struct Platform : platform::headless::HeadlessPlatform {
        platform::headless::DiskFileSystem files;
        WatchedPump pump;
    };

    core::LogViews::ListRef view() { return globals_.LogViews.first(); }

    Platform platform_;
    platform::headless::HeadlessObjects objects_{platform_.gate};
    std::unique_ptr<store::Engine> engine_;
    core::Globals globals_;
    std::shared_ptr<core::CVLog> log_;
    std::vector<std::shared_ptr<view::LogControl>> controls_;
    int entries_;
};

} // namespace cvlog::bench
