#pragma once

#include "platform/headless/call_gate.h"
#include "ports/clipboard.h"

#include <optional>
#include <string>

namespace cvlog::platform::headless {

/// A clipboard of its own: it keeps the last text.
class RecordingClipboard : public ports::Clipboard {
public:
    explicit RecordingClipboard(const CallGate& gate) : gate_(gate) {}

    void setText(std::u16string_view newText) override {
        gate_.pass("Clipboard.setText");
        text = std::u16string(newText);
    }

    std::optional<std::u16string> text; // none until something was put there

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
