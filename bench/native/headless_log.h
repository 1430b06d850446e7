#pragma once

#include "core/cv_log.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/headless_platform.h"
#include "view/log_control.h"

#include <memory>
#include <vector>

namespace cvlog::bench {

/// A log with any number of lists and no host, on a platform without a screen.
class HeadlessLog {
public:
    explicit HeadlessLog(int lists);

    /// Adds entries inside one series.
    void add(int count);
    core::Globals& globals() noexcept { return globals_; }

private:
    platform::headless::HeadlessPlatform platform_;
    platform::headless::HeadlessObjects objects_{platform_.gate};
    std::unique_ptr<store::Engine> engine_;
    core::Globals globals_;
    std::shared_ptr<core::CVLog> log_;
    std::vector<std::shared_ptr<view::LogControl>> controls_;
};

} // namespace cvlog::bench
