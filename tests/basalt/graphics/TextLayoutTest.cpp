#include "basalt/graphics/TextLayout.h"

#include "tests/basalt/graphics/PixelProbe.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using basalt::graphics::DrawText;
using basalt::graphics::MeasureText;
using basalt::graphics::TextBoxStyle;
using keltest::AlphaOf;
using keltest::MakeBitmap;
using keltest::PixelAt;

constexpr const char* kLong = "Quarterly report for the northern region, final draft.txt";

TEST(TextLayout, WidthGrowsWithTheTextAndBoldIsWider) {
    TextBoxStyle style;
    const auto shortText = MeasureText("Open", style, 0);
    const auto longText = MeasureText("Open Recent Documents", style, 0);
    ASSERT_TRUE(shortText && longText);
    EXPECT_GT(longText->size.width, shortText->size.width * 2);
    EXPECT_EQ(longText->size.height, shortText->size.height);
    EXPECT_GT(shortText->baseline, 0);
    EXPECT_LT(shortText->baseline, shortText->size.height);
    style.font = kBTThemeFontEmphasized;
    EXPECT_GT(MeasureText("Open Recent Documents", style, 0)->size.width, longText->size.width);
    style.font = kBTControlFontViews;
    const auto views = MeasureText("Open", style, 0);
    style.font = kBTThemeFontViews;
    EXPECT_EQ(MeasureText("Open", style, 0)->size.width, views->size.width);
    style.font = kBTThemeFontLabel;
    EXPECT_LT(MeasureText("Open Recent Documents", style, 0)->size.height, longText->size.height);
}

TEST(TextLayout, UnknownFontsAreRefused) {
    TextBoxStyle style;
    style.font = 77;
    EXPECT_FALSE(MeasureText("text", style, 0));
    BGContextRef context = MakeBitmap(10, 10);
    EXPECT_FALSE(
        DrawText(basalt::graphics::CairoOf(context), "text", style, BGRectMake(0, 0, 10, 10)));
    BGContextRelease(context);
}

TEST(TextLayout, WrappingStaysInTheWidthAndLineLimitsCutWithAnEllipsis) {
    TextBoxStyle style;
    const auto oneLine = MeasureText(kLong, style, 0);
    const auto wrapped = MeasureText(kLong, style, 120);
    EXPECT_LE(wrapped->size.width, 120);
    EXPECT_GE(wrapped->size.height, oneLine->size.height * 3);
    EXPECT_FALSE(wrapped->truncated);

    style.truncation = kBTThemeTextTruncationEnd;
    style.maxLines = 2;
    const auto twoLines = MeasureText(kLong, style, 120);
    EXPECT_TRUE(twoLines->truncated);
    EXPECT_NEAR(twoLines->size.height, 2 * oneLine->size.height, 1);
    style.maxLines = 1;
    style.truncation = kBTThemeTextTruncationMiddle;
    const auto middle = MeasureText("first line\nsecond line that is long", style, 80);
    EXPECT_TRUE(middle->truncated);
    EXPECT_EQ(middle->size.height, oneLine->size.height);
    EXPECT_TRUE(MeasureText("Short", style, 80) && !MeasureText("Short", style, 80)->truncated);
}

bool ColumnHasInk(BGContextRef context, int x, int height) {
    for (int y = 0; y < height; ++y)
        if (AlphaOf(PixelAt(context, x, y)) > 0)
            return true;
    return false;
}

TEST(TextLayout, TruncatedTextEndsInsideItsBox) {
    BGContextRef context = MakeBitmap(200, 20);
    cairo_t* cr = basalt::graphics::CairoOf(context);
    cairo_set_source_rgb(cr, 0, 0, 0);
    TextBoxStyle style;
    style.truncation = kBTThemeTextTruncationEnd;
    style.maxLines = 1;
    EXPECT_EQ(DrawText(cr, kLong, style, BGRectMake(150, 0, 0, 20)), true) << "no room at all";
    EXPECT_EQ(DrawText(cr, kLong, style, BGRectMake(0, 0, 100, 20)), true);
    EXPECT_TRUE(ColumnHasInk(context, 3, 20));
    for (int x = 101; x < 200; ++x)
        ASSERT_FALSE(ColumnHasInk(context, x, 20)) << x;
    BGContextRelease(context);
}

TEST(TextLayout, FlushRightAndCentrePlaceTheInk) {
    TextBoxStyle style;
    style.horizontalFlush = kBTThemeTextFlushRight;
    style.verticalFlush = kBTThemeTextFlushCenter;
    BGContextRef context = MakeBitmap(200, 40);
    cairo_t* cr = basalt::graphics::CairoOf(context);
    cairo_set_source_rgb(cr, 0, 0, 0);
    DrawText(cr, "Go", style, BGRectMake(0, 0, 200, 40));
    EXPECT_FALSE(ColumnHasInk(context, 150, 40));
    EXPECT_TRUE(ColumnHasInk(context, 195, 40) || ColumnHasInk(context, 197, 40));
    bool topRowsEmpty = true;
    for (int x = 150; x < 200; ++x)
        topRowsEmpty = topRowsEmpty && AlphaOf(PixelAt(context, x, 5)) == 0;
    EXPECT_TRUE(topRowsEmpty) << "centred vertically, not at the top";
    BGContextRelease(context);
}

// The widest run of blank columns between the first and the last inked one.
int WidestInnerGap(BGContextRef context, int width, int height) {
    int first = -1, last = -1;
    for (int x = 0; x < width; ++x)
        if (ColumnHasInk(context, x, height)) {
            first = first < 0 ? x : first;
            last = x;
        }
    int widest = 0, run = 0;
    for (int x = first; x <= last && first >= 0; ++x) {
        run = ColumnHasInk(context, x, height) ? 0 : run + 1;
        widest = std::max(widest, run);
    }
    return widest;
}

TEST(TextLayout, AMiddleCutKeepsBothHalvesAgainstTheEllipsis) {
    TextBoxStyle style;
    style.truncation = kBTThemeTextTruncationMiddle;
    style.maxLines = 1;
    const char* names[] = {"gcloud_alpha_audit_reports_generate.1.gz",
                           "gcloud_alpha_compute_ment-reports_describe.1.gz",
                           "gcloud_alpha_container_g_bug-report.1.gz",
                           "gcloud_alpha_compute_op_reports_list.1.gz"};
    for (const char* name : names) {
        for (int width = 110; width <= 170; width += 7) {
            BGContextRef context = MakeBitmap(200, 20);
            cairo_t* cr = basalt::graphics::CairoOf(context);
            cairo_set_source_rgb(cr, 0, 0, 0);
            EXPECT_EQ(DrawText(cr, name, style, BGRectMake(0, 0, width, 20)), true);
            EXPECT_LE(WidestInnerGap(context, 200, 20), 3) << name << " in " << width;
            for (int x = width + 1; x < 200; ++x)
                ASSERT_FALSE(ColumnHasInk(context, x, 20)) << name << " in " << width;
            BGContextRelease(context);
        }
        EXPECT_TRUE(MeasureText(name, style, 110)->truncated);
        EXPECT_LE(MeasureText(name, style, 110)->size.width, 110);
    }
}

} // namespace
