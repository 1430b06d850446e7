#include "platform/headless/headless_text_measurer.h"

#include <algorithm>
#include <cmath>

namespace cvlog::platform::headless {

namespace {

constexpr float kTwipsPerPoint = 20;
constexpr int kBoldWeight = 700;

constexpr std::u16string_view kNarrow = u" !'(),-./:;I[]`fijlrt|";
constexpr std::u16string_view kWide = u"%@MWmw";

// The advance of a character as a part of the font's height.
float partOfHeight(char16_t unit) noexcept {
    if (unit < 0x20) return 0;
    if (unit >= 0x1100) return 1;
    if (kNarrow.find(unit) != std::u16string_view::npos) return 0.3F;
    return kWide.find(unit) != std::u16string_view::npos ? 0.9F : 0.55F;
}

} // namespace

std::uint32_t HeadlessTextMeasurer::fontNumber(const base::Font& font) {
    const auto found = std::find(fonts_.begin(), fonts_.end(), font);
    const auto index = static_cast<std::uint32_t>(found - fonts_.begin());
    if (found == fonts_.end()) fonts_.push_back(font);
    return index + 1;
}

base::Twips HeadlessTextMeasurer::width(std::uint32_t fontNumber, std::u16string_view text) {
    ++measured_;
    const base::Font& font = fonts_.at(fontNumber - 1);
    const float height = font.points * kTwipsPerPoint * (font.weight >= kBoldWeight ? 1.1F : 1.0F);
    std::int64_t sum = 0;
    for (const char16_t unit : text) sum += std::lround(height * partOfHeight(unit));
    return static_cast<base::Twips>(sum);
}

} // namespace cvlog::platform::headless
