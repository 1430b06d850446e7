#pragma once

#include "platform/headless/headless_collator.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace cvlog::widgets {

/// Fails one call, if it is told to, and counts them all.
class FragileCollator : public ports::Collator {
public:
    void appendSortKey(std::u16string_view text, std::string& keys) override {
        ++calls;
        if (callsUntilFailure > 0 && --callsUntilFailure == 0) throw std::runtime_error("no order");
        working_.appendSortKey(text, keys);
    }
    int callsUntilFailure = 0; // 0: never
    int calls = 0;

private:
    platform::headless::HeadlessCollator working_;
};

} // namespace cvlog::widgets
