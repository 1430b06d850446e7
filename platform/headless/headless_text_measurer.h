#pragma once

#include "base/byte_sum.h"
#include "ports/text_measurer.h"

#include <cstdint>
#include <vector>

namespace cvlog::platform::headless {

/// Measures with a made-up proportional font: every character has a whole number of twips that depends on its kind
/// and on the font's size and weight, so that widths are exact and the same everywhere.
class HeadlessTextMeasurer : public ports::TextMeasurer {
public:
    std::uint32_t fontNumber(const base::Font& font) override;
    base::Twips width(std::uint32_t fontNumber, base::CompactTextView text) override;

    /// How many texts were measured so far.
    std::uint64_t measured() const noexcept { return measured_; }

private:
    /// A font with the advances of the first characters and of those beyond, narrow or wide.
    struct Metrics {
        explicit Metrics(const base::Font& measured);
        std::int64_t sum(base::CompactTextView text);

        base::Font font;
        base::ByteSum ofBytes; // of the characters that a byte can tell
        std::int64_t other;
        std::int64_t full;
    };

    std::vector<Metrics> fonts_;
    std::uint64_t measured_ = 0;
};

} // namespace cvlog::platform::headless
