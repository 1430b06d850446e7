#pragma once

#include "ports/text_measurer.h"

#include <cstdint>
#include <vector>

namespace cvlog::platform::headless {

/// Measures with a made-up proportional font: every character has a whole number of twips that depends on its kind
/// and on the font's size and weight, so that widths are exact and the same everywhere.
class HeadlessTextMeasurer : public ports::TextMeasurer {
public:
    std::uint32_t fontNumber(const base::Font& font) override;
    base::Twips width(std::uint32_t fontNumber, std::u16string_view text) override;

    /// How many texts were measured so far.
    std::uint64_t measured() const noexcept { return measured_; }

private:
    std::vector<base::Font> fonts_;
    std::uint64_t measured_ = 0;
};

} // namespace cvlog::platform::headless
