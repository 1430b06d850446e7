#include "platform/win32/screen_units.h"

#include <gtest/gtest.h>

namespace cvlog::platform::win32 {
namespace {

struct Resolution {
    int dpi;
    float twipsPerPixel;
};

class ScreenUnits : public testing::TestWithParam<Resolution> {};

TEST_P(ScreenUnits, HaveTheTwipsPerPixelOfTheResolution) {
    const auto [dpi, twipsPerPixel] = GetParam();
    for (const int pixels : {1, 7, 100, 12'345}) {
        EXPECT_EQ(toTwips(pixels, dpi), twipsPerPixel * static_cast<float>(pixels));
        EXPECT_EQ(toPixels(toTwips(pixels, dpi), dpi), pixels);
    }
    EXPECT_EQ(toPixels(0, dpi), 0);
    EXPECT_EQ(toPixels(1, dpi), 1) << "something visible never becomes nothing";
}

INSTANTIATE_TEST_SUITE_P(Scalings, ScreenUnits,
                         testing::Values(Resolution{96, 15}, Resolution{120, 12}, Resolution{144, 10}));

} // namespace
} // namespace cvlog::platform::win32
