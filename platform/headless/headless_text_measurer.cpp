#include "platform/headless/headless_text_measurer.h"

#include <algorithm>
#include <cmath>

namespace cvlog::platform::headless {

namespace {

constexpr float kTwipsPerPoint = 20;

constexpr char16_t kFirstFull = 0x1100; // from here on characters are as wide as high
constexpr std::u16string_view kNarrow = u" !'(),-./:;I[]`fijlrt|";
constexpr std::u16string_view kWide = u"%@MWmw";

// The advance of a character as a part of the font's height.
float partOfHeight(char16_t unit) noexcept {
    if (unit < 0x20) return 0;
    if (unit >= kFirstFull) return 1;
    if (kNarrow.find(unit) != std::u16string_view::npos) return 0.3F;
    return kWide.find(unit) != std::u16string_view::npos ? 0.9F : 0.55F;
}

} // namespace

HeadlessTextMeasurer::Metrics::Metrics(const base::Font& measured) : font(measured) {
    const float height = font.points * kTwipsPerPoint * (font.weight >= base::kBoldWeight ? 1.1F : 1.0F);
    const auto twips = [height](char16_t unit) {
        return std::int64_t{std::lround(height * partOfHeight(unit))};
    };
    for (std::size_t i = 0; i < ofByte.size(); ++i) ofByte[i] = twips(static_cast<char16_t>(i));
    other = twips(kFirstFull - 1);
    full = twips(kFirstFull);
}

std::int64_t HeadlessTextMeasurer::Metrics::advance(char16_t unit) const noexcept {
    if (unit < ofByte.size()) return ofByte[unit];
    return unit >= kFirstFull ? full : other;
}

std::int64_t HeadlessTextMeasurer::Metrics::sum(base::CompactTextView text) const noexcept {
    if (text.inBytes()) return base::sumOf(text.bytes(), ofByte);
    std::int64_t sum = 0;
    for (const char16_t unit : text.wide()) sum += advance(unit);
    return sum;
}

std::uint32_t HeadlessTextMeasurer::fontNumber(const base::Font& font) {
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&](const Metrics& metrics) { return metrics.font == font; });
    const auto index = static_cast<std::uint32_t>(found - fonts_.begin());
    if (found == fonts_.end()) fonts_.emplace_back(font);
    return index + 1;
}

base::Twips HeadlessTextMeasurer::width(std::uint32_t fontNumber, base::CompactTextView text) {
    ++measured_;
    return static_cast<base::Twips>(fonts_.at(fontNumber - 1).sum(text));
}

} // namespace cvlog::platform::headless
