#include "platform/win32/screens.h"

#include "platform/win32/screen_units.h"

#include <gtest/gtest.h>

namespace cvlog::platform::win32 {
namespace {

base::Area primaryWorkArea() {
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    return toTwips(work, screenDpi());
}

TEST(Win32Screens, GiveTheWorkAreaOfTheMonitorThatShowsAnArea) {
    const base::Area work = Screens().workArea({1500, 1500, 3000, 3000});
    EXPECT_EQ(work, primaryWorkArea());
    EXPECT_GT(work.width, 1500);
    EXPECT_GT(work.height, 1500);
}

TEST(Win32Screens, GiveTheNearestMonitorForAnAreaThatIsNowhere) {
    for (const base::Area nowhere :
         {base::Area{-900'000, -900'000, 10, 10}, {900'000, 900'000, 3000, 3000}}) {
        const RECT area = toPixels(nowhere, screenDpi());
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        ASSERT_EQ(MonitorFromRect(&area, MONITOR_DEFAULTTONULL), nullptr);
        GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor);
        EXPECT_EQ(Screens().workArea(nowhere), toTwips(monitor.rcWork, screenDpi()));
    }
}

} // namespace
} // namespace cvlog::platform::win32
