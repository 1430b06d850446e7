#pragma once

#include "base/text.h"
#include "platform/headless/call_gate.h"
#include "ports/code_page.h"

namespace cvlog::platform::headless {

/// UTF-8, as plain text is written here.
class HeadlessCodePage : public ports::CodePage {
public:
    explicit HeadlessCodePage(const CallGate& gate) : gate_(gate) {}
    void decode(std::string_view bytes, std::u16string& text) override {
        gate_.pass("CodePage.decode");
        text = base::fromUtf8(bytes);
    }

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
