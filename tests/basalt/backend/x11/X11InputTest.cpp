#include "basalt/backend/x11/X11Input.h"

#include <gtest/gtest.h>

namespace basalt::x11 {
namespace {

TEST(X11InputTest, ClicksCountWhileTheyComeSoonAndNearWithTheSameButton) {
    ClickCounter counter(400, 4);
    EXPECT_EQ(counter.Press(1, 1000, 10, 10), 1u);
    EXPECT_EQ(counter.Press(1, 1300, 12, 9), 2u);
    EXPECT_EQ(counter.Press(1, 1600, 12, 9), 3u);
    // Too late.
    EXPECT_EQ(counter.Press(1, 2100, 12, 9), 1u);
    // Too far.
    EXPECT_EQ(counter.Press(1, 2200, 30, 9), 1u);
    // Another button.
    EXPECT_EQ(counter.Press(3, 2300, 30, 9), 1u);
    // The server's millisecond clock wraps; the interval still counts across it.
    EXPECT_EQ(counter.Press(1, 0xFFFFFF00u, 0, 0), 1u);
    EXPECT_EQ(counter.Press(1, 0x50, 0, 0), 2u);
}

} // namespace
} // namespace basalt::x11
