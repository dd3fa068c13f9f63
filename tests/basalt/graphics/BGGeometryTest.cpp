#include <basalt/BasaltGraphics.h>
#include <gtest/gtest.h>

extern "C" int BasaltGraphicsHeaderCompilesAsC(void);

namespace {

TEST(BGGeometry, HeaderIsUsableFromC) {
    EXPECT_EQ(BasaltGraphicsHeaderCompilesAsC(), 1);
}

TEST(BGGeometry, NegativeSizesAreStandardisedAndEdgesFollow) {
    const BGRect r = BGRectMake(10, 20, -4, -6);
    EXPECT_EQ(BGRectGetMinX(r), 6);
    EXPECT_EQ(BGRectGetMaxY(r), 20);
    EXPECT_TRUE(BGRectEqualToRect(r, BGRectMake(6, 14, 4, 6)));
}

TEST(BGGeometry, DisjointRectanglesIntersectToNullWhichUnionIgnores) {
    const BGRect a = BGRectMake(0, 0, 10, 10);
    const BGRect b = BGRectMake(20, 20, 5, 5);
    EXPECT_TRUE(BGRectIsNull(BGRectIntersection(a, b)));
    EXPECT_FALSE(BGRectIntersectsRect(a, b));
    EXPECT_TRUE(BGRectEqualToRect(BGRectUnion(BGRectNull, b), b));
    EXPECT_TRUE(BGRectEqualToRect(BGRectUnion(a, b), BGRectMake(0, 0, 25, 25)));
}

TEST(BGGeometry, ContainmentExcludesMaxEdges) {
    const BGRect r = BGRectMake(0, 0, 10, 10);
    EXPECT_TRUE(BGRectContainsPoint(r, BGPointMake(0, 0)));
    EXPECT_FALSE(BGRectContainsPoint(r, BGPointMake(10, 5)));
    EXPECT_FALSE(BGRectContainsPoint(BGRectMake(0, 0, 0, 10), BGPointMake(0, 0)));
}

TEST(BGGeometry, InsetPastTheMiddleGivesNull) {
    EXPECT_TRUE(
        BGRectEqualToRect(BGRectInset(BGRectMake(0, 0, 10, 10), 2, 3), BGRectMake(2, 3, 6, 4)));
    EXPECT_TRUE(BGRectIsNull(BGRectInset(BGRectMake(0, 0, 10, 10), 6, 0)));
}

TEST(BGGeometry, IntegralRoundsOutwards) {
    EXPECT_TRUE(
        BGRectEqualToRect(BGRectIntegral(BGRectMake(0.5, 1.2, 2.0, 2.9)), BGRectMake(0, 1, 3, 4)));
}

TEST(BGGeometry, TransformsConcatenateInOrderAndInvert) {
    const BGAffineTransform flip = BGAffineTransformConcat(
        BGAffineTransformMakeScale(1, -1), BGAffineTransformMakeTranslation(0, 100));
    const BGPoint p = BGPointApplyAffineTransform(BGPointMake(5, 10), flip);
    EXPECT_EQ(p.x, 5);
    EXPECT_EQ(p.y, 90);
    const BGPoint back = BGPointApplyAffineTransform(p, BGAffineTransformInvert(flip));
    EXPECT_EQ(back.y, 10);
    const BGRect box = BGRectApplyAffineTransform(BGRectMake(0, 0, 10, 20), flip);
    EXPECT_TRUE(BGRectEqualToRect(box, BGRectMake(0, 80, 10, 20)));
}

TEST(BGGeometry, FloatingRectsRoundOutwardsIntoClampedShortRects) {
    Rect out;
    BGRectToRect(BGRectMake(-0.5, 1.5, 10, 40000), &out);
    EXPECT_EQ(out.left, -1);
    EXPECT_EQ(out.top, 1);
    EXPECT_EQ(out.right, 10);
    EXPECT_EQ(out.bottom, 32767);
    const Rect q = {1, 2, 11, 22};
    EXPECT_TRUE(BGRectEqualToRect(BGRectFromRect(&q), BGRectMake(2, 1, 20, 10)));
}

TEST(Rect, IntersectionOfDisjointRectsIsEmptyAndFalse) {
    Rect a, b, c;
    SetRect(&a, 0, 0, 10, 10);
    SetRect(&b, 10, 0, 20, 10);
    EXPECT_FALSE(SectRect(&a, &b, &c));
    EXPECT_TRUE(EmptyRect(&c));
    OffsetRect(&b, -5, 2);
    EXPECT_TRUE(SectRect(&a, &b, &c));
    EXPECT_EQ(c.left, 5);
    EXPECT_EQ(c.top, 2);
    EXPECT_FALSE(PtInRect(Point{5, 10}, &a));
    EXPECT_TRUE(PtInRect(Point{9, 9}, &a));
}

} // namespace
