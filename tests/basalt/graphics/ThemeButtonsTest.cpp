#include "tests/basalt/graphics/PixelProbe.h"

#include <gtest/gtest.h>

namespace {

using keltest::AlphaOf;
using keltest::BlueOf;
using keltest::MakeBitmap;
using keltest::PixelAt;
using keltest::RedOf;

// A flipped (view) context over a fresh bitmap.
BGContextRef MakeView(int width, int height) {
    BGContextRef context = MakeBitmap(width, height);
    BGContextTranslateCTM(context, 0, height);
    BGContextScaleCTM(context, 1, -1);
    return context;
}

BTThemeButtonDrawInfo Info(BTThemeDrawState state, BTThemeButtonValue value = 0,
                           BTThemeButtonAdornment adornment = 0) {
    return {0, state, value, adornment};
}

TEST(ThemeButtons, DefaultButtonsTakeTheAccentOnlyWhileActive) {
    const BGRect bounds = BGRectMake(10, 10, 80, 24);
    BGContextRef context = MakeView(100, 44);
    BTThemeButtonDrawInfo info = Info(kBTThemeStateActive, 0, kBTThemeAdornmentDefault);
    BGRect label;
    ASSERT_EQ(BTThemeDrawButton(&bounds, kBTThemePushButton, &info, context, &label), noErr);
    const uint32_t centre = PixelAt(context, 50, 22);
    EXPECT_GT(BlueOf(centre), RedOf(centre) + 60) << "accent blue";
    EXPECT_TRUE(BGRectContainsRect(bounds, label));

    info.state = kBTThemeStateInactive;
    BGContextClearRect(context, BGRectMake(0, 0, 100, 44));
    BTThemeDrawButton(&bounds, kBTThemePushButton, &info, context, nullptr);
    const uint32_t plain = PixelAt(context, 50, 22);
    EXPECT_NEAR(BlueOf(plain), RedOf(plain), 12) << "a grey face";
    BGContextRelease(context);
}

TEST(ThemeButtons, UnavailableButtonsAreFainterAndUnknownKindsRefused) {
    const BGRect bounds = BGRectMake(0, 0, 60, 24);
    BGContextRef context = MakeView(60, 24);
    BTThemeButtonDrawInfo info = Info(kBTThemeStateUnavailable);
    ASSERT_EQ(BTThemeDrawButton(&bounds, kBTThemePushButton, &info, context, nullptr), noErr);
    EXPECT_LT(AlphaOf(PixelAt(context, 30, 12)), 128);
    EXPECT_EQ(BTThemeDrawButton(&bounds, 99, &info, context, nullptr), paramErr);
    EXPECT_EQ(BTThemeDrawButton(&bounds, kBTThemePushButton, nullptr, context, nullptr), paramErr);
    BGContextRelease(context);
}

TEST(ThemeButtons, CheckBoxesPutTheMarkLeftAndTheTitleAfterIt) {
    const BGRect bounds = BGRectMake(0, 0, 120, 20);
    BGContextRef context = MakeView(120, 20);
    BTThemeButtonDrawInfo info = Info(kBTThemeStateActive, kBTThemeButtonOn);
    BGRect label;
    ASSERT_EQ(BTThemeDrawButton(&bounds, kBTThemeCheckBox, &info, context, &label), noErr);
    EXPECT_GE(BGRectGetMinX(label), 14);
    EXPECT_EQ(BGRectGetMaxX(label), 120);
    EXPECT_EQ(AlphaOf(PixelAt(context, 2, 10)), 255) << "the mark";
    EXPECT_EQ(AlphaOf(PixelAt(context, 60, 10)), 0) << "no title drawn";
    BGContextRelease(context);
}

TEST(ThemeButtons, PartsAreUprightInBothOrientations) {
    const BGRect bounds = BGRectMake(4, 4, 40, 24);
    BGContextRef flipped = MakeView(48, 32);
    BGContextRef yUp = MakeBitmap(48, 32);
    BTThemeButtonDrawInfo info = Info(kBTThemeStatePressed, kBTThemeButtonOn);
    for (BTThemeButtonKind kind : {kBTThemeDisclosureTriangle, kBTThemePopupButton}) {
        BTThemeDrawButton(&bounds, kind, &info, flipped, nullptr);
        BTThemeDrawButton(&bounds, kind, &info, yUp, nullptr);
    }
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 48; ++x)
            ASSERT_EQ(PixelAt(flipped, x, y), PixelAt(yUp, x, y)) << x << "," << y;
    BGContextRelease(flipped);
    BGContextRelease(yUp);
}

} // namespace
