#pragma once

#include "ports/collator.h"

namespace cvlog::platform::headless {

/// A linguistic, case-blind order from a small table of weights: controls, blanks, punctuation, digits, Latin letters,
/// then all other scripts by code unit. Accents decide only between texts that are equal without them.
class HeadlessCollator : public ports::Collator {
public:
    std::string sortKey(std::u16string_view text) override;
};

} // namespace cvlog::platform::headless
