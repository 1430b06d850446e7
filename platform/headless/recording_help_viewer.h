#pragma once

#include "platform/headless/call_gate.h"
#include "ports/help_viewer.h"

#include <string>
#include <vector>

namespace cvlog::platform::headless {

/// Help that nobody reads: each call is recorded.
class RecordingHelpViewer : public ports::HelpViewer {
public:
    struct Showing {
        std::int32_t owner;
        std::u16string file;
        std::int32_t context;
        friend bool operator==(const Showing&, const Showing&) = default;
    };

    explicit RecordingHelpViewer(const CallGate& gate) : gate_(gate) {}

    void showContext(std::int32_t ownerWindow, std::u16string_view file, std::int32_t context) override {
        gate_.pass("HelpViewer.showContext");
        shown.push_back({ownerWindow, std::u16string(file), context});
    }

    std::vector<Showing> shown;

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
