#include "tests/basalt/graphics/PixelProbe.h"

#include <gtest/gtest.h>

namespace {

using keltest::AlphaOf;
using keltest::BlueOf;
using keltest::MakeBitmap;
using keltest::PixelAt;

TEST(ThemeFrames, FramesLieInsideAndFocusRingsWithinTheOutsetMetric) {
    int32_t outset = 0;
    ASSERT_EQ(GetThemeMetric(kBTThemeMetricFocusRectOutset, &outset), noErr);
    BGContextRef context = MakeBitmap(60, 60);
    const BGRect rect = BGRectMake(10, 10, 40, 40);
    BTThemeFrameDrawInfo info = {0, kBTThemeFrameListBox, kBTThemeStateActive, false};
    ASSERT_EQ(BTThemeDrawFrame(&rect, &info, context), noErr);
    EXPECT_EQ(AlphaOf(PixelAt(context, 10, 30)), 255);
    EXPECT_EQ(AlphaOf(PixelAt(context, 9, 30)), 0);
    EXPECT_EQ(AlphaOf(PixelAt(context, 30, 30)), 0) << "a frame does not fill";

    info.isFocused = true;
    BTThemeDrawFrame(&rect, &info, context);
    EXPECT_GT(AlphaOf(PixelAt(context, 8, 30)), 0);
    EXPECT_GT(BlueOf(PixelAt(context, 10, 30)), 120);
    EXPECT_EQ(AlphaOf(PixelAt(context, 10 - outset - 1, 30)), 0);
    BGContextRelease(context);
}

// A field is drawn clipped to its bounds, so its ring lies inside, following the rounded
// outline: outside the rectangle and in its cut-off corners nothing is drawn.
TEST(ThemeFrames, AFocusedFieldRingsItsInsideAndLeavesItsCornersClear) {
    BGContextRef context = MakeBitmap(60, 60);
    const BGRect rect = BGRectMake(10, 10, 40, 40); // square: rows read the same either way up
    BTThemeFrameDrawInfo info = {0, kBTThemeFrameTextField, kBTThemeStateActive, true};
    ASSERT_EQ(BTThemeDrawFrame(&rect, &info, context), noErr);
    EXPECT_EQ(AlphaOf(PixelAt(context, 9, 30)), 0) << "left of the field";
    EXPECT_EQ(AlphaOf(PixelAt(context, 10, 10)), 0) << "a corner the rounding cuts off";
    EXPECT_EQ(AlphaOf(PixelAt(context, 49, 49)), 0) << "the opposite corner";
    EXPECT_GT(BlueOf(PixelAt(context, 10, 30)), 120) << "the outline";
    EXPECT_GT(AlphaOf(PixelAt(context, 12, 30)), 0) << "the ring, inside the outline";
    EXPECT_EQ(AlphaOf(PixelAt(context, 20, 30)), 0) << "the text's room";
    BGContextRelease(context);
}

TEST(ThemeFrames, WellsFillGroupBoxesShadeAndSeparatorsAreThin) {
    BGContextRef context = MakeBitmap(60, 60);
    const BGRect well = BGRectMake(0, 0, 30, 30);
    BTThemeWellDrawInfo wellInfo = {0, kBTThemeStateActive};
    ASSERT_EQ(BTThemeDrawGenericWell(&well, &wellInfo, context), noErr);
    EXPECT_EQ(AlphaOf(PixelAt(context, 15, 45)), 255);

    const BGRect separator = BGRectMake(0, 40, 60, 1);
    ASSERT_EQ(BTThemeDrawSeparator(&separator, kBTThemeStateActive, context), noErr);
    EXPECT_EQ(AlphaOf(PixelAt(context, 45, 19)), 255);
    EXPECT_EQ(AlphaOf(PixelAt(context, 45, 17)), 0);
    EXPECT_EQ(BTThemeDrawSeparator(nullptr, kBTThemeStateActive, context), paramErr);
    BGContextRelease(context);
}

TEST(ThemeFrames, ScrollBarThumbsSitWhereAskedAlongTheLongerSide) {
    BGContextRef context = MakeBitmap(14, 100);
    BGContextTranslateCTM(context, 0, 100);
    BGContextScaleCTM(context, 1, -1);
    const BGRect track = BGRectMake(0, 0, 14, 100);
    ASSERT_EQ(BTThemeDrawScrollBar(&track, 40, 30, kBTThemeStateActive, context), noErr);
    const int trackAlpha = AlphaOf(PixelAt(context, 7, 10));
    EXPECT_GT(AlphaOf(PixelAt(context, 7, 55)), trackAlpha + 40);
    EXPECT_EQ(AlphaOf(PixelAt(context, 7, 80)), trackAlpha);
    EXPECT_EQ(BTThemeDrawScrollBar(&track, -1, 30, kBTThemeStateActive, context), paramErr);
    BGContextRelease(context);
}

TEST(ThemeFrames, MetricsAndColoursKnowTheirKindsOnly) {
    int32_t value = 0;
    EXPECT_EQ(GetThemeMetric(kBTThemeMetricScrollBarWidth, &value), noErr);
    EXPECT_GT(value, 8);
    EXPECT_EQ(GetThemeMetric(9999, &value), paramErr);
    EXPECT_EQ(GetThemeMetric(kBTThemeMetricScrollBarWidth, nullptr), paramErr);
    BGContextRef context = MakeBitmap(4, 4);
    const BGRect all = BGRectMake(0, 0, 4, 4);
    EXPECT_EQ(BTThemeApplyBackground(&all, kBTThemeBackgroundDialogArea, 1, context), noErr);
    BGContextFillRect(context, all);
    EXPECT_EQ(AlphaOf(PixelAt(context, 1, 1)), 255);
    EXPECT_EQ(BTThemeApplyBackground(&all, 77, 1, context), paramErr);
    BTThemeApplyBackground(&all, kBTThemeBackgroundSelection, kBTThemeStateActive, context);
    BGContextFillRect(context, all);
    const uint32_t active = PixelAt(context, 1, 1);
    BTThemeApplyBackground(&all, kBTThemeBackgroundSelection, kBTThemeStateInactive, context);
    BGContextFillRect(context, all);
    EXPECT_GT(BlueOf(active) - keltest::RedOf(active),
              BlueOf(PixelAt(context, 1, 1)) - keltest::RedOf(PixelAt(context, 1, 1)) + 40)
        << "the accent while active, a grey when not";
    EXPECT_EQ(BTThemeSetTextColor(5, 1, context), paramErr);
    BGContextRelease(context);
}

} // namespace
