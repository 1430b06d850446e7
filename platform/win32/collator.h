#pragma once

#include "ports/collator.h"

#include <cstddef>

namespace cvlog::platform::win32 {

/// The order of the user's locale as the system has it. Texts that differ only behind their first
/// kLongestCompared code units count as equal, so that one huge text cannot make sorting slow.
class Collator : public ports::Collator {
public:
    static constexpr std::size_t kLongestCompared = 4096;
    void appendSortKey(std::u16string_view text, std::string& keys) override;
};

} // namespace cvlog::platform::win32
