#pragma once

#include "base/font.h"
#include "hostapi/late_bound.h"

namespace cvlog::hostapi {

/// A font object, the host's or ours.
class FontObject : public LateBound {
public:
    using LateBound::LateBound;

    /// What the font is now. An object without a font's members is a type mismatch, a size that no font can have an
    /// invalid property value.
    base::Font read() const;
};

} // namespace cvlog::hostapi
