#include <basalt/BasaltGraphics.h>
#include <gtest/gtest.h>

namespace {

struct Regions {
    RgnHandle a = NewRgn();
    RgnHandle b = NewRgn();
    ~Regions() {
        DisposeRgn(a);
        DisposeRgn(b);
    }
};

TEST(Region, SetOperationsWorkInPlace) {
    Regions r;
    SetRectRgn(r.a, 0, 0, 10, 10);
    SetRectRgn(r.b, 5, 5, 20, 20);
    UnionRgn(r.a, r.b, r.a);
    Rect bounds;
    GetRegionBounds(r.a, &bounds);
    EXPECT_EQ(bounds.right, 20);
    EXPECT_EQ(bounds.bottom, 20);
    EXPECT_FALSE(PtInRgn(Point{15, 2}, r.a)) << "a union of two squares is not their box";

    DiffRgn(r.a, r.b, r.a);
    EXPECT_TRUE(PtInRgn(Point{2, 2}, r.a));
    EXPECT_FALSE(PtInRgn(Point{7, 7}, r.a));
    SectRgn(r.a, r.b, r.b);
    EXPECT_TRUE(EmptyRgn(r.b));
    EXPECT_EQ(GetRegionBounds(r.b, &bounds), &bounds);
    EXPECT_TRUE(EmptyRect(&bounds));
}

TEST(Region, OffsetAndInsetMoveTheEdges) {
    Regions r;
    const Rect square = {0, 0, 10, 10};
    RectRgn(r.a, &square);
    OffsetRgn(r.a, 5, -5);
    Rect bounds;
    GetRegionBounds(r.a, &bounds);
    EXPECT_EQ(bounds.left, 5);
    EXPECT_EQ(bounds.top, -5);
    InsetRgn(r.a, 2, 2);
    GetRegionBounds(r.a, &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 6);
    CopyRgn(r.a, r.b);
    EXPECT_TRUE(EqualRgn(r.a, r.b));
    const Rect elsewhere = {100, 100, 110, 110};
    EXPECT_FALSE(RectInRgn(&elsewhere, r.a));
    InsetRgn(r.a, 10, 10);
    EXPECT_TRUE(EmptyRgn(r.a));
}

TEST(Region, EmptyRectanglesAndNullHandlesAreHarmless) {
    Regions r;
    SetRectRgn(r.a, 10, 10, 0, 0);
    EXPECT_TRUE(EmptyRgn(r.a));
    EXPECT_TRUE(EmptyRgn(nullptr));
    UnionRgn(nullptr, r.a, r.b);
    DisposeRgn(nullptr);
    EXPECT_EQ(GetLastRegionStatus(), noErr);
}

} // namespace
