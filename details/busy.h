#pragma once

#include "core/globals.h"

namespace cvlog::details {

/// Refuses collapses, sorting and events while it lives. What was so before is so again afterwards, so that the end of
/// an inner one does not end an outer one.
class Busy {
public:
    explicit Busy(core::Globals& globals) noexcept
        : globals_(globals), before_(std::exchange(globals.ExpansionBusy, true)) {}
    ~Busy() { globals_.ExpansionBusy = before_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    core::Globals& globals_;
    bool before_;
};

} // namespace cvlog::details
