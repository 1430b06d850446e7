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

std::int64_t advance(const base::Font& font, char16_t unit) {
    const float height = font.points * kTwipsPerPoint * (font.weight >= base::kBoldWeight ? 1.1F : 1.0F);
    return std::lround(height * partOfHeight(unit));
}

base::NumbersOfBytes advancesOfBytes(const base::Font& font) {
    base::NumbersOfBytes advances;
    for (std::size_t i = 0; i < advances.size(); ++i) advances[i] = advance(font, static_cast<char16_t>(i));
    return advances;
}

} // namespace

HeadlessTextMeasurer::Metrics::Metrics(const base::Font& measured)
    : font(measured), ofBytes(advancesOfBytes(measured)), other(advance(measured, kFirstFull - 1)),
      full(advance(measured, kFirstFull)) {}

std::int64_t HeadlessTextMeasurer::Metrics::sum(base::CompactTextView text) {
    if (text.inBytes()) return ofBytes.of(text.bytes());
    std::int64_t sum = 0;
    for (const char16_t unit : text.wide())
        sum += unit < 0x100 ? ofBytes.ofByte(unit) : unit >= kFirstFull ? full : other;
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
