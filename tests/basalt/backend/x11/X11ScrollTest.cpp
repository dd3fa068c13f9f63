#include "basalt/backend/x11/X11Scroll.h"

#include <gtest/gtest.h>

namespace basalt::x11 {
namespace {

constexpr uint16_t kPointer = 2;
// A touchpad: vertical on valuator 2, horizontal on 3, 8 units a line.
const std::vector<ScrollAxis> kTouchpad = {{2, 8, false}, {3, 8, true}};

TEST(X11ScrollTest, FractionsAddUpToWholeLinesInTheToolboxDirection) {
    ScrollValuators scroll;
    scroll.SetAxes(kPointer, kTouchpad);
    // The first values only say where the totals stand.
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 300}, {3, 40}}), ScrollLines{});
    // Down by half a line: no whole line yet; another line makes one down, a half left over.
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 304}}), (ScrollLines{0, 0, -0.5, 0}));
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 312}}), (ScrollLines{-1, 0, -1, 0}));
    // Up by four and a half lines, less the half left over: four up.
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 276}}), (ScrollLines{4, 0, 4.5, 0}));
    // Right by two lines, on its own axis; then both axes in one event.
    EXPECT_EQ(scroll.Motion(kPointer, {{3, 56}}), (ScrollLines{0, -2, 0, -2}));
    EXPECT_EQ(scroll.Motion(kPointer, {{3, 48}, {2, 252}}), (ScrollLines{3, 1, 3, 1}));
}

TEST(X11ScrollTest, TheTotalsStartAgainAfterThePointerWasAway) {
    ScrollValuators scroll;
    scroll.SetAxes(kPointer, kTouchpad);
    scroll.Motion(kPointer, {{2, 0}});
    scroll.Motion(kPointer, {{2, 4}});
    // Away, the total ran on to 900: coming back is no scroll, and the half line is gone.
    scroll.Reset(kPointer);
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 900}}), ScrollLines{});
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 904}}), (ScrollLines{0, 0, -0.5, 0}));
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 908}}), (ScrollLines{-1, 0, -0.5, 0}));
    // Axes reported anew (another device took over the pointer) start afresh too.
    scroll.SetAxes(kPointer, {{2, 120, false}});
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 0}}), ScrollLines{});
    EXPECT_EQ(scroll.Motion(kPointer, {{2, -240}}), (ScrollLines{2, 0, 2, 0}));
}

TEST(X11ScrollTest, ADeviceWithoutScrollAxesLeavesTheWheelToButtons) {
    ScrollValuators scroll;
    EXPECT_FALSE(scroll.Scrolls(kPointer));
    EXPECT_EQ(scroll.Motion(kPointer, {{2, 30}}), ScrollLines{});
    // An axis without an increment cannot say what a line is.
    scroll.SetAxes(kPointer, {{2, 0, false}});
    EXPECT_FALSE(scroll.Scrolls(kPointer));
    scroll.SetAxes(kPointer, kTouchpad);
    EXPECT_TRUE(scroll.Scrolls(kPointer));
    EXPECT_FALSE(scroll.Scrolls(kPointer + 1));
}

} // namespace
} // namespace basalt::x11
