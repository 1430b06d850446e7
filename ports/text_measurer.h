#pragma once

#include "base/compact_text_view.h"
#include "base/font.h"
#include "base/twips.h"

#include <cstdint>

namespace cvlog::ports {

class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;
    /// A number for the font: equal fonts have equal numbers, 0 is never given. Widths measured with one number stay
    /// true as long as the program runs.
    virtual std::uint32_t fontNumber(const base::Font& font) = 0;
    /// The width of a single line of text, in twips.
    virtual base::Twips width(std::uint32_t fontNumber, base::CompactTextView text) = 0;
};

} // namespace cvlog::ports
