#pragma once

#include "ports/text_measurer.h"

#include <array>
#include <cstdint>
#include <optional>
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
    /// A font with the advances of the ASCII characters and of those beyond, narrow or wide.
    struct Metrics {
        explicit Metrics(const base::Font& measured);
        std::int64_t advance(char16_t unit) const noexcept;
        /// Nothing when there is any other character.
        std::optional<std::int64_t> asciiSum(std::u16string_view text) const noexcept;

        base::Font font;
        std::array<std::int64_t, 0x80> ascii{};
        std::int64_t other = 0;
        std::int64_t full = 0;
    };

    std::vector<Metrics> fonts_;
    std::uint64_t measured_ = 0;
};

} // namespace cvlog::platform::headless
