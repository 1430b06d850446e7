#include "platform/win32/screen_units.h"

#include <gtest/gtest.h>

#include <limits>

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

TEST_P(ScreenUnits, KeepAreasOnBothSidesOfTheOrigin) {
    const int dpi = GetParam().dpi;
    const RECT area{-120, -7, 33, 1};
    const RECT back = toPixels(toTwips(area, dpi), dpi);
    EXPECT_TRUE(EqualRect(&back, &area));
}

TEST_P(ScreenUnits, KeepNeighboursTogether) {
    const int dpi = GetParam().dpi;
    for (base::Twips edge = 1; edge < 100; ++edge) {
        const RECT left = toPixels(base::Area{0, 0, edge, 10}, dpi);
        const RECT right = toPixels(base::Area{edge, 0, 50, 10}, dpi);
        EXPECT_EQ(left.right, right.left);
    }
}

TEST(ScreenUnitsOfNonsense, AreSomewhere) {
    const base::Twips none = std::numeric_limits<base::Twips>::quiet_NaN();
    const base::Twips endless = std::numeric_limits<base::Twips>::infinity();
    const RECT area = toPixels(base::Area{none, -endless, -500, endless}, 96);
    EXPECT_LE(area.left, area.right);
    EXPECT_LE(area.top, area.bottom);
    EXPECT_GE(area.top, -1'000'000);
    EXPECT_LE(area.bottom, 1'000'000);
}

INSTANTIATE_TEST_SUITE_P(Scalings, ScreenUnits,
                         testing::Values(Resolution{96, 15}, Resolution{120, 12}, Resolution{144, 10}));

} // namespace
} // namespace cvlog::platform::win32
