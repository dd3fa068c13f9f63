#include "basalt/backend/x11/X11Screens.h"

#include <gtest/gtest.h>

namespace basalt::x11 {
namespace {

const std::vector<PixelRect> kTwoMonitors = {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};

TEST(X11ScreensTest, AWindowOffEveryMonitorComesOntoTheNearest) {
    // Right of the second monitor: pulled back onto it, whole.
    PixelRect placed = PlaceOnNearestMonitor({4000, 100, 400, 300}, kTwoMonitors);
    EXPECT_EQ(placed, (PixelRect{1920 + 1280 - 400, 100, 400, 300}));
    // Above the first monitor.
    placed = PlaceOnNearestMonitor({300, -900, 400, 300}, kTwoMonitors);
    EXPECT_EQ(placed, (PixelRect{300, 0, 400, 300}));
    // Below the second monitor, where the first is shorter: the second is nearer.
    placed = PlaceOnNearestMonitor({2000, 1100, 200, 100}, kTwoMonitors);
    EXPECT_EQ(placed, (PixelRect{2000, 1024 - 100, 200, 100}));
}

TEST(X11ScreensTest, AWindowOnAMonitorOrLargerThanItStaysPut) {
    PixelRect partly{1800, 500, 400, 300};
    EXPECT_EQ(PlaceOnNearestMonitor(partly, kTwoMonitors), partly);
    // Too wide for any monitor: its left edge goes to the monitor's.
    PixelRect wide = PlaceOnNearestMonitor({-5000, 10, 3000, 200}, kTwoMonitors);
    EXPECT_EQ(wide.x, 0);
    EXPECT_EQ(PlaceOnNearestMonitor(partly, {}), partly);
}

TEST(X11ScreensTest, AWindowThatGrewPastItsMonitorComesBackWhole) {
    // A dialog disclosed at the foot of the second monitor rises to show its bottom.
    EXPECT_EQ(KeepWholeOnMonitor({2000, 700, 720, 468}, kTwoMonitors),
              (PixelRect{2000, 1024 - 468, 720, 468}));
    // Mostly on the first monitor, past its right edge: back inside the first, not the second.
    EXPECT_EQ(KeepWholeOnMonitor({1500, 100, 600, 200}, kTwoMonitors),
              (PixelRect{1920 - 600, 100, 600, 200}));
    PixelRect whole{100, 100, 600, 400};
    EXPECT_EQ(KeepWholeOnMonitor(whole, kTwoMonitors), whole);
    // Taller than the monitor: its top edge shows, where the title bar is.
    EXPECT_EQ(KeepWholeOnMonitor({100, 500, 600, 1500}, kTwoMonitors).y, 0);
}

TEST(X11ScreensTest, TheGreatestAreaMonitorHoldsMostOfTheWindow) {
    EXPECT_EQ(GreatestAreaMonitor({1800, 0, 400, 300}, kTwoMonitors), kTwoMonitors[1]);
    EXPECT_EQ(GreatestAreaMonitor({1700, 0, 400, 300}, kTwoMonitors), kTwoMonitors[0]);
    EXPECT_EQ(GreatestAreaMonitor({9000, 9000, 10, 10}, kTwoMonitors), kTwoMonitors[0]);
}

TEST(X11ScreensTest, PanelsTakeTheirStripsOfTheMonitorTheyAreOn) {
    // The work area spans both monitors, less a 30-pixel panel across the top.
    const PixelRect workArea{0, 30, 3200, 1050};
    EXPECT_EQ(UsablePart(kTwoMonitors[0], workArea), (PixelRect{0, 30, 1920, 1050}));
    EXPECT_EQ(UsablePart(kTwoMonitors[1], workArea), (PixelRect{1920, 30, 1280, 994}));
    // No window manager says, or one whose work area misses the monitor: all of it.
    EXPECT_EQ(UsablePart(kTwoMonitors[0], std::nullopt), kTwoMonitors[0]);
    EXPECT_EQ(UsablePart(kTwoMonitors[1], PixelRect{0, 0, 1920, 1080}), kTwoMonitors[1]);
}

TEST(X11ScreensTest, ScaleComesFromGdkScaleElseFromXftDpi) {
    EXPECT_EQ(ChooseScale(nullptr, ""), 1.0);
    EXPECT_EQ(ChooseScale(nullptr, "Xft.antialias:\t1\nXft.dpi:\t192\n"), 2.0);
    EXPECT_EQ(ChooseScale(nullptr, "Xft.dpi:\t120\n"), 1.0);
    EXPECT_EQ(ChooseScale("2", "Xft.dpi:\t96\n"), 2.0);
    EXPECT_EQ(ChooseScale("1", "Xft.dpi:\t192\n"), 1.0);
    // A resource of another name that merely ends the same way does not count.
    EXPECT_EQ(ChooseScale(nullptr, "Other.Xft.dpi:\t192\n"), 1.0);
}

} // namespace
} // namespace basalt::x11
