#include "tests/basalt/graphics/PixelProbe.h"

#include <gtest/gtest.h>

namespace {

using keltest::AlphaOf;
using keltest::MakeBitmap;
using keltest::PixelAt;

BTThemeTextInfo OneLine(BTThemeFontID font) {
    BTThemeTextInfo info = {};
    info.state = kBTThemeStateActive;
    info.fontID = font;
    info.truncationPosition = kBTThemeTextTruncationEnd;
    info.truncationMaxLines = 1;
    return info;
}

TEST(ThemeText, DimensionsGrowWithTheTextAndBadArgumentsSaySo) {
    const BTThemeTextInfo info = OneLine(kBTThemeFontViews);
    BGFloat shortWidth = 0, longWidth = 0, height = 0;
    EXPECT_EQ(BTThemeGetTextDimensions(BCSTR("Disk"), 0, &info, &shortWidth, &height, nullptr),
              noErr);
    EXPECT_EQ(BTThemeGetTextDimensions(BCSTR("Macintosh Disk Utility"), 0, &info, &longWidth,
                                       nullptr, nullptr),
              noErr);
    EXPECT_GT(longWidth, shortWidth);
    EXPECT_GT(height, 10);

    BTThemeTextInfo unknown = OneLine(999);
    EXPECT_EQ(BTThemeGetTextDimensions(BCSTR("x"), 0, &unknown, &shortWidth, nullptr, nullptr),
              kBTThemeFontErr);
    EXPECT_EQ(BTThemeGetTextDimensions(nullptr, 0, &info, nullptr, nullptr, nullptr), paramErr);
}

TEST(ThemeText, WrappedDimensionsInWholeNumbersThroughTheShortForm) {
    Point bounds = {0, 60};
    int16_t baseline = 0;
    ASSERT_EQ(GetThemeTextDimensions(BCSTR("several words that cannot fit in sixty points"),
                                     kBTThemeFontSystem, kBTThemeStateActive, true, &bounds,
                                     &baseline),
              noErr);
    EXPECT_LE(bounds.h, 60);
    EXPECT_GT(bounds.v, 3 * baseline);
    EXPECT_GT(baseline, 0);
}

TEST(ThemeText, DrawingReportsTruncationAndDimsUnavailableText) {
    BGContextRef context = MakeBitmap(120, 20);
    BGContextTranslateCTM(context, 0, 20);
    BGContextScaleCTM(context, 1, -1);
    BGContextSetGrayFillColor(context, 0, 1);
    BTThemeTextInfo info = OneLine(kBTThemeFontSystem);
    const BGRect narrow = BGRectMake(0, 0, 60, 20);
    ASSERT_EQ(BTThemeDrawTextBox(BCSTR("A name far too long for the box"), &narrow, &info, context),
              noErr);
    EXPECT_TRUE(info.truncationHappened);
    int active = 0;
    for (int x = 0; x < 60; ++x)
        for (int y = 0; y < 20; ++y)
            active = std::max(active, AlphaOf(PixelAt(context, x, y)));

    const BGRect right = BGRectMake(60, 0, 60, 20);
    info.state = kBTThemeStateUnavailable;
    ASSERT_EQ(BTThemeDrawTextBox(BCSTR("Dim"), &right, &info, context), noErr);
    EXPECT_FALSE(info.truncationHappened);
    int dimmed = 0;
    for (int x = 60; x < 120; ++x)
        for (int y = 0; y < 20; ++y)
            dimmed = std::max(dimmed, AlphaOf(PixelAt(context, x, y)));
    EXPECT_GT(active, 200);
    EXPECT_LT(dimmed, active / 2 + 5);
    EXPECT_EQ(BTThemeDrawTextBox(BCSTR("x"), &right, &info, nullptr), paramErr);
    BGContextRelease(context);
}

} // namespace
