#include "tests/basalt/graphics/PixelProbe.h"

#include <gtest/gtest.h>

namespace {

using keltest::AlphaOf;
using keltest::MakeBitmap;
using keltest::PixelAt;
using keltest::RedOf;

constexpr uint32_t kOpaqueRed = 0xFFFF0000;

TEST(BGContext, OriginIsBottomLeftUntilFlipped) {
    BGContextRef context = MakeBitmap(40, 40);
    ASSERT_NE(context, nullptr);
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextFillRect(context, BGRectMake(0, 0, 10, 10));
    EXPECT_EQ(PixelAt(context, 5, 35), kOpaqueRed);
    EXPECT_EQ(PixelAt(context, 5, 5), 0u);

    BGContextClearRect(context, BGRectMake(0, 0, 40, 40));
    BGContextTranslateCTM(context, 0, 40);
    BGContextScaleCTM(context, 1, -1);
    BGContextFillRect(context, BGRectMake(0, 0, 10, 10));
    EXPECT_EQ(PixelAt(context, 5, 5), kOpaqueRed);
    EXPECT_EQ(PixelAt(context, 5, 35), 0u);
    BGContextRelease(context);
}

TEST(BGContext, RestoreBringsBackColourMatrixAndClipAndIgnoresExtraRestores) {
    BGContextRef context = MakeBitmap(40, 40);
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextSaveGState(context);
    BGContextSetRGBFillColor(context, 0, 0, 1, 1);
    BGContextTranslateCTM(context, 20, 0);
    BGContextClipToRect(context, BGRectMake(0, 0, 5, 5));
    BGContextFillRect(context, BGRectMake(0, 0, 20, 20));
    EXPECT_EQ(PixelAt(context, 22, 37), 0xFF0000FFu);
    EXPECT_EQ(PixelAt(context, 30, 37), 0u) << "outside the clip";
    BGContextRestoreGState(context);
    BGContextRestoreGState(context);
    BGContextFillRect(context, BGRectMake(0, 0, 5, 5));
    EXPECT_EQ(PixelAt(context, 2, 37), kOpaqueRed);
    EXPECT_EQ(BGContextGetCTM(context).tx, 0);
    BGContextRelease(context);
}

TEST(BGContext, GlobalAlphaScalesWhatIsDrawn) {
    BGContextRef context = MakeBitmap(10, 10);
    BGContextSetAlpha(context, 0.5);
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextFillRect(context, BGRectMake(0, 0, 10, 10));
    EXPECT_NEAR(AlphaOf(PixelAt(context, 5, 5)), 128, 1);
    EXPECT_NEAR(RedOf(PixelAt(context, 5, 5)), 128, 1);
    BGContextRelease(context);
}

TEST(BGContext, PathsFillAndStroke) {
    BGContextRef context = MakeBitmap(40, 40);
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextAddRoundedRect(context, BGRectMake(0, 0, 40, 40), 10);
    BGContextFillPath(context);
    EXPECT_EQ(PixelAt(context, 20, 20), kOpaqueRed);
    EXPECT_EQ(AlphaOf(PixelAt(context, 0, 0)), 0) << "the corner is rounded off";

    BGContextSetRGBStrokeColor(context, 0, 0, 1, 1);
    BGContextSetLineWidth(context, 2);
    const BGPoint line[] = {{0, 20}, {40, 20}};
    BGContextStrokeLineSegments(context, line, 2);
    EXPECT_EQ(PixelAt(context, 20, 19), 0xFF0000FFu);
    BGContextRelease(context);
}

TEST(BGContext, SingularScalesAreRefusedSoTheContextStaysUsable) {
    BGContextRef context = MakeBitmap(10, 10);
    BGContextScaleCTM(context, 0, 1);
    BGContextConcatCTM(context, BGAffineTransformMake(0, 0, 0, 0, 1, 1));
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextFillRect(context, BGRectMake(0, 0, 10, 10));
    EXPECT_EQ(PixelAt(context, 5, 5), kOpaqueRed);
    BGContextRelease(context);
}

TEST(BGContext, WindowContextsDrawInPointsAtTheirScale) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 80, 80);
    BGContextRef context = basalt::graphics::CreateContextForSurface(surface, 40, 2);
    ASSERT_NE(context, nullptr);
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextFillRect(context, BGRectMake(0, 0, 10, 10));
    EXPECT_EQ(PixelAt(surface, 19, 60), kOpaqueRed);
    EXPECT_EQ(PixelAt(surface, 20, 59), 0u);
    EXPECT_EQ(BGContextGetCTM(context).d, 1) << "user space starts as points, y up";
    EXPECT_EQ(basalt::graphics::DeviceScaleOf(context), 2);
    BGContextRelease(context);
    cairo_surface_destroy(surface);
}

TEST(BGContext, NullContextsAreIgnored) {
    BGContextSaveGState(nullptr);
    BGContextFillRect(nullptr, BGRectMake(0, 0, 1, 1));
    BGContextRelease(nullptr);
    EXPECT_TRUE(BGRectIsNull(BGContextGetClipBoundingBox(nullptr)));
}

} // namespace
