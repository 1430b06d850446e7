#include "platform/headless/headless_text_measurer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace cvlog::platform::headless {

namespace {

constexpr float kTwipsPerPoint = 20;
constexpr int kBoldWeight = 700;

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
    const float height = font.points * kTwipsPerPoint * (font.weight >= kBoldWeight ? 1.1F : 1.0F);
    const auto twips = [height](char16_t unit) {
        return std::int64_t{std::lround(height * partOfHeight(unit))};
    };
    for (std::size_t i = 0; i < ascii.size(); ++i) ascii[i] = twips(static_cast<char16_t>(i));
    other = twips(kFirstFull - 1);
    full = twips(kFirstFull);
}

std::int64_t HeadlessTextMeasurer::Metrics::advance(char16_t unit) const noexcept {
    if (unit < ascii.size()) return ascii[unit];
    return unit >= kFirstFull ? full : other;
}

// Whether four characters are ASCII is asked at once.
std::optional<std::int64_t> HeadlessTextMeasurer::Metrics::asciiSum(std::u16string_view text) const noexcept {
    constexpr std::uint64_t kBeyond = 0xFF80FF80FF80FF80;
    std::int64_t sum = 0;
    std::size_t i = 0;
    for (; i + 4 <= text.size(); i += 4) {
        std::uint64_t four = 0;
        std::memcpy(&four, text.data() + i, sizeof four);
        if ((four & kBeyond) != 0) return std::nullopt;
        for (std::size_t next = i; next < i + 4; ++next) sum += ascii[text[next]];
    }
    for (; i < text.size(); ++i) {
        if (text[i] >= ascii.size()) return std::nullopt;
        sum += ascii[text[i]];
    }
    return sum;
}

std::uint32_t HeadlessTextMeasurer::fontNumber(const base::Font& font) {
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&](const Metrics& metrics) { return metrics.font == font; });
    const auto index = static_cast<std::uint32_t>(found - fonts_.begin());
    if (found == fonts_.end()) fonts_.emplace_back(font);
    return index + 1;
}

base::Twips HeadlessTextMeasurer::width(std::uint32_t fontNumber, std::u16string_view text) {
    ++measured_;
    const Metrics& metrics = fonts_.at(fontNumber - 1);
    std::int64_t sum = 0;
    if (const auto known = metrics.asciiSum(text)) {
        sum = *known;
    } else {
        for (const char16_t unit : text) sum += metrics.advance(unit);
    }
    return static_cast<base::Twips>(sum);
}

} // namespace cvlog::platform::headless
