#include "kel/foundation/KelBundle.h"
#include "kel/foundation/RetainedRef.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

// The pixels of image as drawn into a fresh 32-bit bitmap.
std::vector<uint32_t> PixelsOf(BGImageRef image, size_t width, size_t height) {
    std::vector<uint32_t> pixels(width * height);
    BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
    BGContextRef context = BGBitmapContextCreate(pixels.data(), width, height, 8, width * 4, space,
                                                 kBGImageAlphaPremultipliedFirst);
    BGContextDrawImage(context, BGRectMake(0, 0, width, height), image);
    BGContextRelease(context);
    BGColorSpaceRelease(space);
    return pixels;
}

} // namespace

TEST(KelBundleImages, CopyKeepsThePixelsAfterTheSourceIsGone) {
    BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
    BGContextRef context =
        BGBitmapContextCreate(nullptr, 3, 2, 8, 12, space, kBGImageAlphaPremultipliedFirst);
    BGContextSetRGBFillColor(context, 1.0, 0.0, 0.0, 1.0);
    BGContextFillRect(context, BGRectMake(0, 0, 2, 2));
    BGImageRef source = BGBitmapContextCreateImage(context);
    BGContextRelease(context);
    BGColorSpaceRelease(space);
    std::vector<uint32_t> expected = PixelsOf(source, 3, 2);

    BGImageRef copy = CopyImageIntoRAM(source);
    BGImageRelease(source);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(BGImageGetWidth(copy), 3u);
    EXPECT_EQ(BGImageGetHeight(copy), 2u);
    EXPECT_EQ(PixelsOf(copy, 3, 2), expected);
    EXPECT_EQ(expected[0], 0xFFFF0000u);
    EXPECT_EQ(expected[2], 0u);
    BGImageRelease(copy);
}

TEST(KelBundleImages, MissingImagesGiveNull) {
    EXPECT_EQ(KelBundle::GetImageFromPNG(BCSTR("_internal_NoSuchImage.png")), nullptr);
    // A resource that exists but is no PNG.
    RetainedRef<BCOpaqueURL> table = RetainedRef<BCOpaqueURL>::Adopt(BCBundleCopyResourceURL(
        KelBundle::KelGetBundle(), BCSTR("Localized.strings"), nullptr, nullptr));
    ASSERT_TRUE(table);
    EXPECT_EQ(KelBundle::GetImageFromPNG(BCSTR("Localized.strings")), nullptr);
    EXPECT_EQ(KelBundle::GetImageFromPNG(nullptr), nullptr);
    EXPECT_EQ(CopyImageIntoRAM(nullptr), nullptr);
}
