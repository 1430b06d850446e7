#pragma once

#include "base/failure.h"
#include "hostapi/workspace.h"

namespace cvlog::host {

/// The host's busy pointer, as long as it lives; then the one before. Throws when the host refuses it.
class BusyPointer {
public:
    explicit BusyPointer(const hostapi::Workspace& workspace)
        : workspace_(workspace), before_(workspace_.setMainWindowCursor(hostapi::kHourglass)) {}
    ~BusyPointer() {
        base::ignoring([&] { workspace_.setMainWindowCursor(before_); });
    }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    hostapi::Workspace workspace_; // its own: the host may close the log meanwhile
    std::int32_t before_;
};

} // namespace cvlog::host
