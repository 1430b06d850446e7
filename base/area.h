#pragma once

#include "base/twips.h"

namespace cvlog::base {

/// A rectangle in twips: its left upper corner and its size.
struct Area {
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;
    friend bool operator==(const Area&, const Area&) = default;
};

} // namespace cvlog::base
