#include "tests/basalt/graphics/PixelProbe.h"
#include "tests/support/TestEnvironment.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

using keltest::MakeBitmap;
using keltest::PixelAt;

constexpr uint32_t kRed = 0xFFFF0000;
constexpr uint32_t kBlue = 0xFF0000FF;

// A 4x4 image: red in its top half, blue in its bottom half.
BGImageRef MakeTwoToneImage() {
    BGContextRef bitmap = MakeBitmap(4, 4);
    BGContextSetRGBFillColor(bitmap, 0, 0, 1, 1);
    BGContextFillRect(bitmap, BGRectMake(0, 0, 4, 2));
    BGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    BGContextFillRect(bitmap, BGRectMake(0, 2, 4, 2));
    BGImageRef image = BGBitmapContextCreateImage(bitmap);
    BGContextRelease(bitmap);
    return image;
}

TEST(BGImage, DrawImageIsUprightInYUpAndViewDrawingIsUprightWhenFlipped) {
    BGImageRef image = MakeTwoToneImage();
    ASSERT_NE(image, nullptr);
    BGContextRef context = MakeBitmap(8, 8);
    BGContextDrawImage(context, BGRectMake(0, 0, 8, 8), image);
    EXPECT_EQ(PixelAt(context, 4, 1), kRed);
    EXPECT_EQ(PixelAt(context, 4, 6), kBlue);

    BGContextTranslateCTM(context, 0, 8);
    BGContextScaleCTM(context, 1, -1);
    const BGRect bottomHalf = BGRectMake(0, 4, 8, 4);
    EXPECT_EQ(BTViewDrawBGImage(context, &bottomHalf, image), noErr);
    EXPECT_EQ(PixelAt(context, 4, 4), kRed);
    EXPECT_EQ(PixelAt(context, 4, 7), kBlue);
    EXPECT_EQ(BTViewDrawBGImage(context, &bottomHalf, nullptr), paramErr);
    BGContextRelease(context);
    BGImageRelease(image);
}

struct ReleaseLog {
    int calls = 0;
    const void* data = nullptr;
};

void NoteRelease(void* info, const void* data, size_t) {
    auto* log = static_cast<ReleaseLog*>(info);
    ++log->calls;
    log->data = data;
}

// The round trip a bundle image takes to be kept in memory: drawn into a bitmap over a
// buffer, then an image made over the same buffer that frees it when the image dies.
TEST(BGImage, ImageOverProviderBytesKeepsThemUntilItDies) {
    std::vector<uint32_t> pixels(4 * 4, 0);
    BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
    BGContextRef bitmap =
        BGBitmapContextCreate(pixels.data(), 4, 4, 8, 16, space, kBGImageAlphaPremultipliedFirst);
    BGImageRef source = MakeTwoToneImage();
    BGContextDrawImage(bitmap, BGRectMake(0, 0, 4, 4), source);
    BGContextRelease(bitmap);
    EXPECT_EQ(pixels[0], kRed);

    ReleaseLog log;
    BGDataProviderRef provider =
        BGDataProviderCreateWithData(&log, pixels.data(), pixels.size() * 4, NoteRelease);
    BGImageRef copy = BGImageCreate(4, 4, 8, 32, 16, space, kBGImageAlphaPremultipliedFirst,
                                    provider, nullptr, false, kBGRenderingIntentDefault);
    BGDataProviderRelease(provider);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(log.calls, 0);
    EXPECT_EQ(BGImageGetWidth(copy), 4u);

    BGContextRef target = MakeBitmap(4, 4);
    BGContextDrawImage(target, BGRectMake(0, 0, 4, 4), copy);
    EXPECT_EQ(PixelAt(target, 0, 3), kBlue);
    BGContextRelease(target);
    BGImageRelease(copy);
    EXPECT_EQ(log.calls, 1);
    EXPECT_EQ(log.data, pixels.data());
    BGImageRelease(source);
    BGColorSpaceRelease(space);
}

TEST(BGImage, PixelsAtAnOddAddressAreCopied) {
    alignas(4) uint8_t bytes[1 + 8] = {};
    const uint32_t red = 0xFFFF0000;
    std::memcpy(bytes + 1, &red, 4);
    std::memcpy(bytes + 5, &red, 4);
    BGDataProviderRef provider = BGDataProviderCreateWithData(nullptr, bytes + 1, 8, nullptr);
    BGImageRef image = BGImageCreate(2, 1, 8, 32, 8, nullptr, kBGImageAlphaPremultipliedFirst,
                                     provider, nullptr, false, 0);
    BGDataProviderRelease(provider);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelAt(basalt::graphics::SurfaceOf(image), 1, 0), kRed);
    BGImageRelease(image);
}

TEST(BGImage, UnsupportedLayoutsAndShortBuffersGiveNoImage) {
    uint32_t pixels[4] = {};
    BGDataProviderRef provider = BGDataProviderCreateWithData(nullptr, pixels, 16, nullptr);
    auto make = [&](size_t width, size_t bpc, BGBitmapInfo info) {
        return BGImageCreate(width, 2, bpc, 32, width * 4, nullptr, info, provider, nullptr, false,
                             0);
    };
    EXPECT_EQ(make(2, 16, kBGImageAlphaPremultipliedFirst), nullptr);
    EXPECT_EQ(make(2, 8, kBGImageAlphaLast), nullptr);
    EXPECT_EQ(make(3, 8, kBGImageAlphaPremultipliedFirst), nullptr) << "provider too short";
    BGImageRef fits = make(2, 8, kBGImageAlphaNoneSkipFirst);
    EXPECT_NE(fits, nullptr);
    BGImageRelease(fits);
    BGDataProviderRelease(provider);
    EXPECT_EQ(BGBitmapContextCreate(nullptr, 4, 4, 8, 0, nullptr, kBGImageAlphaLast), nullptr);
    EXPECT_EQ(BGBitmapContextCreate(nullptr, 0, 4, 8, 0, nullptr, 2), nullptr);
    EXPECT_EQ(BGBitmapContextCreate(nullptr, 4, 4, 8, 10, nullptr, 2), nullptr);
}

TEST(BGImage, FilesDecodeAndBadFilesSayWhy) {
    const auto folder = keltest::MakeScratchFolder("images");
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 6, 3);
    const auto png = folder / "six-by-three.png";
    ASSERT_EQ(cairo_surface_write_to_png(surface, png.c_str()), CAIRO_STATUS_SUCCESS);
    cairo_surface_destroy(surface);
    keltest::WriteFile(folder / "notes.png", "not an image at all");

    BGDataProviderRef provider = basalt::graphics::CreateDataProviderWithPath(png);
    BGImageRef image = BGImageCreateWithPNGDataProvider(provider, nullptr, true, 0);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(BGImageGetWidth(image), 6u);
    EXPECT_EQ(BGImageGetHeight(image), 3u);
    BGImageRelease(image);
    BGDataProviderRelease(provider);

    StatusCode status = noErr;
    image = basalt::graphics::CreateImageFromFile(png, &status);
    EXPECT_NE(image, nullptr);
    EXPECT_EQ(status, noErr);
    BGImageRelease(image);
    EXPECT_EQ(basalt::graphics::CreateImageFromFile(folder / "missing.png", &status), nullptr);
    EXPECT_EQ(status, kBGNoImageErr);
    EXPECT_EQ(basalt::graphics::CreateImageFromFile(folder / "notes.png", &status), nullptr);
    EXPECT_EQ(status, kBGImageFormatErr);

    provider = basalt::graphics::CreateDataProviderWithPath(folder / "notes.png");
    EXPECT_EQ(BGImageCreateWithPNGDataProvider(provider, nullptr, true, 0), nullptr);
    BGDataProviderRelease(provider);
    EXPECT_EQ(basalt::graphics::CreateDataProviderWithPath(folder / "missing.png"), nullptr);
}

} // namespace
