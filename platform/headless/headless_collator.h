#pragma once

#include "ports/collator.h"

namespace cvlog::platform::headless {

/// A linguistic, case-blind order from a small table of weights: controls, blanks, punctuation, digits, Latin letters,
/// then all other scripts by code unit. Accents decide only between texts that are equal without them.
class HeadlessCollator : public ports::Collator {
public:
    void appendSortKey(std::u16string_view text, std::string& keys) override;

    /// Negative, 0 or positive: the order of the keys without making them.
    static int compare(std::u16string_view left, std::u16string_view right) noexcept;
};

} // namespace cvlog::platform::headless
