#include "kel/foundation/TRect.h"

#include <gtest/gtest.h>

namespace {

void ExpectRect(const Rect& rect, int top, int left, int bottom, int right) {
    EXPECT_EQ(rect.top, top);
    EXPECT_EQ(rect.left, left);
    EXPECT_EQ(rect.bottom, bottom);
    EXPECT_EQ(rect.right, right);
}

} // namespace

TEST(TRect, SettersTakeLeftTopRightBottom) {
    TRect rect(1, 2, 3, 4);
    ExpectRect(rect, 2, 1, 4, 3);
    rect.Set(10, 20, 30, 40);
    ExpectRect(rect, 20, 10, 40, 30);

    Rect plain{5, 6, 7, 8};
    rect = plain;
    ExpectRect(rect, 5, 6, 7, 8);
}

TEST(TRect, OffsetsKeepTheSize) {
    TRect rect(10, 20, 110, 70);
    rect.OffsetBy(-5, 5);
    ExpectRect(rect, 25, 5, 75, 105);
    rect.OffsetTo(0, 0);
    ExpectRect(rect, 0, 0, 50, 100);
}
