#pragma once

#include <string>

namespace cvlog::base {

// Weights of fonts.
inline constexpr int kNormalWeight = 400;
inline constexpr int kBoldWeight = 700;
inline constexpr int kBoldFrom = 551; // where systems begin to call a weight bold

/// A font by its properties. A platform makes the real one.
struct Font {
    std::u16string face = u"MS Shell Dlg 2";
    float points = 8.25F;
    int weight = kNormalWeight;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    int charset = 1; // as systems number them; 1 leaves the choice to the system
    friend bool operator==(const Font&, const Font&) = default;
};

} // namespace cvlog::base
