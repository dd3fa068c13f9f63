#include "basalt/graphics/IconRefObject.h"
#include "tests/basalt/graphics/PixelProbe.h"

#include <gtest/gtest.h>

namespace {

using keltest::AlphaOf;
using keltest::MakeBitmap;
using keltest::PixelAt;

int MaxAlpha(BGContextRef context, int size) {
    int most = 0;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            most = std::max(most, AlphaOf(PixelAt(context, x, y)));
    return most;
}

TEST(IconRef, SystemIconsAreSharedAndCounted) {
    IconRef first = nullptr, second = nullptr;
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericNetwork, &first),
              noErr);
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericNetwork, &second),
              noErr);
    EXPECT_EQ(first, second);
    EXPECT_EQ(GetIconRefOwners(first), 2);
    EXPECT_EQ(AcquireIconRef(first), noErr);
    EXPECT_EQ(GetIconRefOwners(first), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ReleaseIconRef(first), noErr);
    EXPECT_EQ(AcquireIconRef(nullptr), paramErr);
}

TEST(IconRef, UnknownTypesAndCreatorsHaveNoIcon) {
    IconRef icon = reinterpret_cast<IconRef>(1);
    EXPECT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, 0x78787878, &icon),
              kBTIconNotFoundErr);
    EXPECT_EQ(icon, nullptr);
    EXPECT_EQ(GetIconRef(kBTSystemVolume, 0x61626364, kBTIconGenericFolder, &icon),
              kBTIconNotFoundErr);
    EXPECT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, nullptr),
              paramErr);
    EXPECT_EQ(GetIconRefFromIconName("", nullptr, &icon), paramErr);
}

TEST(IconRef, DisabledIconsArePlottedDimmed) {
    IconRef icon = nullptr;
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, &icon),
              noErr);
    const BGRect square = BGRectMake(0, 0, 32, 32);
    BGContextRef normal = MakeBitmap(32, 32);
    BGContextRef disabled = MakeBitmap(32, 32);
    EXPECT_EQ(PlotIconRefInContext(normal, &square, kBTIconAlignCenter, kBTIconTransformNone,
                                   nullptr, kBTPlotIconNormal, icon),
              noErr);
    EXPECT_EQ(PlotIconRefInContext(disabled, &square, kBTIconAlignCenter, kBTIconTransformDisabled,
                                   nullptr, kBTPlotIconNormal, icon),
              noErr);
    EXPECT_GT(MaxAlpha(normal, 32), 200);
    EXPECT_NEAR(MaxAlpha(disabled, 32), MaxAlpha(normal, 32) * 0.4, 3);
    EXPECT_EQ(PlotIconRefInContext(normal, nullptr, 0, 0, nullptr, 0, icon), paramErr);
    BGContextRelease(normal);
    BGContextRelease(disabled);
    ReleaseIconRef(icon);
}

TEST(IconRef, IconsComeOutUprightInFlippedAndUnflippedContexts) {
    IconRef icon = nullptr;
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericDocument, &icon),
              noErr);
    const BGRect square = BGRectMake(8, 8, 32, 32);
    BGContextRef yUp = MakeBitmap(48, 48);
    BGContextRef flipped = MakeBitmap(48, 48);
    BGContextTranslateCTM(flipped, 0, 48);
    BGContextScaleCTM(flipped, 1, -1);
    PlotIconRefInContext(yUp, &square, 0, 0, nullptr, 0, icon);
    PlotIconRefInContext(flipped, &square, 0, 0, nullptr, 0, icon);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 48; ++x)
            ASSERT_EQ(PixelAt(yUp, x, y), PixelAt(flipped, x, y)) << x << "," << y;
    BGContextRelease(yUp);
    BGContextRelease(flipped);
    ReleaseIconRef(icon);
}

TEST(IconRef, NamesNoThemeHasAreDrawnAndShareOneReference) {
    IconRef icon = nullptr, again = nullptr;
    ASSERT_EQ(GetIconRefFromIconName("x-no-such-icon-anywhere", nullptr, &icon), noErr);
    ASSERT_EQ(GetIconRefFromIconName("x-no-such-icon-anywhere", nullptr, &again), noErr);
    EXPECT_EQ(icon, again);
    BGContextRef context = MakeBitmap(32, 32);
    const BGRect square = BGRectMake(0, 0, 32, 32);
    EXPECT_EQ(PlotIconRefInContext(context, &square, 0, 0, nullptr, 0, icon), noErr);
    EXPECT_EQ(MaxAlpha(context, 32), 255);
    BGContextRelease(context);
    ReleaseIconRef(icon);
    ReleaseIconRef(again);
}

// A list view releases its rows' icons after each frame; the next frame must not load the
// theme's pictures again.
TEST(IconRef, PicturesOutliveTheLastReference) {
    IconRef icon = nullptr;
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, &icon),
              noErr);
    cairo_surface_t* picture = icon->PictureFor(16);
    ASSERT_NE(picture, nullptr);
    cairo_surface_reference(picture);
    ASSERT_EQ(ReleaseIconRef(icon), noErr);
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, &icon),
              noErr);
    EXPECT_EQ(icon->PictureFor(16), picture);
    EXPECT_NE(icon->PictureFor(32), picture);
    cairo_surface_destroy(picture);
    ReleaseIconRef(icon);
}

} // namespace
