#include "tests/basalt/graphics/PixelProbe.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

BCURLRef URLFor(const fs::path& path) {
    const std::string text = path.string();
    return BCURLCreateFromFileSystemRepresentation(kBCAllocatorDefault,
                                                   reinterpret_cast<const uint8_t*>(text.data()),
                                                   static_cast<BCIndex>(text.size()), false);
}

// A 32 by 16 PNG, opaque red.
fs::path WritePNG(const fs::path& folder) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 32, 16);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 1, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    const fs::path path = folder / "wide.png";
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
    return path;
}

BCDictionaryRef ThumbnailOptions(int maxSize, bool fromImage) {
    BCMutableDictionaryRef options = BCDictionaryCreateMutable(kBCAllocatorDefault, 0);
    BCNumberRef size = BCNumberCreate(kBCAllocatorDefault, kBCNumberIntType, &maxSize);
    BCDictionarySetValue(options, kBGImageSourceThumbnailMaxPixelSize, size);
    BCRelease(size);
    BCDictionarySetValue(options, kBGImageSourceCreateThumbnailFromImageIfAbsent,
                         fromImage ? kBCBooleanTrue : kBCBooleanFalse);
    BCDictionarySetValue(options, kBGImageSourceCreateThumbnailWithTransform, kBCBooleanTrue);
    return options;
}

TEST(BGImageSource, ThumbnailsKeepProportionsWithinTheMaximum) {
    const fs::path png = WritePNG(keltest::MakeScratchFolder("source"));
    BCURLRef url = URLFor(png);
    BGImageSourceRef source = BGImageSourceCreateWithURL(url, nullptr);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(BGImageSourceGetCount(source), 1u);

    BCDictionaryRef options = ThumbnailOptions(8, true);
    BGImageRef thumbnail = BGImageSourceCreateThumbnailAtIndex(source, 0, options);
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(BGImageGetWidth(thumbnail), 8u);
    EXPECT_EQ(BGImageGetHeight(thumbnail), 4u);
    EXPECT_EQ(keltest::PixelAt(basalt::graphics::SurfaceOf(thumbnail), 2, 2), 0xFFFF0000u);
    EXPECT_EQ(BGImageSourceCreateThumbnailAtIndex(source, 1, options), nullptr);
    BGImageRelease(thumbnail);
    BCRelease(options);

    options = ThumbnailOptions(8, false);
    EXPECT_EQ(BGImageSourceCreateThumbnailAtIndex(source, 0, options), nullptr)
        << "no embedded thumbnail and none may be made";
    BCRelease(options);

    BGImageRef full = BGImageSourceCreateImageAtIndex(source, 0, nullptr);
    EXPECT_EQ(BGImageGetWidth(full), 32u);
    BGImageRelease(full);
    BGImageSourceRelease(source);
    BCRelease(url);
}

TEST(BGImageSource, PropertiesTellSizeAndFormat) {
    const fs::path png = WritePNG(keltest::MakeScratchFolder("properties"));
    BCURLRef url = URLFor(png);
    BGImageSourceRef source = BGImageSourceCreateWithURL(url, nullptr);
    BCDictionaryRef properties = BGImageSourceCopyPropertiesAtIndex(source, 0, nullptr);
    ASSERT_NE(properties, nullptr);
    int width = 0, height = 0;
    BCNumberGetValue(
        static_cast<BCNumberRef>(BCDictionaryGetValue(properties, kBGImagePropertyPixelWidth)),
        kBCNumberIntType, &width);
    BCNumberGetValue(
        static_cast<BCNumberRef>(BCDictionaryGetValue(properties, kBGImagePropertyPixelHeight)),
        kBCNumberIntType, &height);
    EXPECT_EQ(width, 32);
    EXPECT_EQ(height, 16);
    char format[16] = {};
    BCStringGetCString(
        static_cast<BCStringRef>(BCDictionaryGetValue(properties, kBGImagePropertyFormatName)),
        format, sizeof format, kBCStringEncodingUTF8);
    EXPECT_STREQ(format, "png");
    BCRelease(properties);
    BGImageSourceRelease(source);
    BCRelease(url);
}

TEST(BGImageSource, MissingAndUnreadableFiles) {
    const fs::path folder = keltest::MakeScratchFolder("bad");
    keltest::WriteFile(folder / "fake.jpg", "GIF89a but not really");
    BCURLRef missing = URLFor(folder / "missing.png");
    EXPECT_EQ(BGImageSourceCreateWithURL(missing, nullptr), nullptr);
    EXPECT_EQ(BGDataProviderCreateWithURL(missing), nullptr);
    BCRelease(missing);

    BCURLRef fake = URLFor(folder / "fake.jpg");
    BGImageSourceRef source = BGImageSourceCreateWithURL(fake, nullptr);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(BGImageSourceGetCount(source), 0u);
    EXPECT_EQ(BGImageSourceCreateImageAtIndex(source, 0, nullptr), nullptr);
    EXPECT_EQ(BGImageSourceCopyPropertiesAtIndex(source, 0, nullptr), nullptr);
    BGImageSourceRelease(source);
    BCRelease(fake);
}

TEST(BGImageSource, ReadableTypesIncludePNGAndJPEG) {
    BCArrayRef types = BGImageSourceCopyTypeIdentifiers();
    EXPECT_TRUE(
        BCArrayContainsValue(types, BCRangeMake(0, BCArrayGetCount(types)), BCSTR("image/png")));
    EXPECT_TRUE(
        BCArrayContainsValue(types, BCRangeMake(0, BCArrayGetCount(types)), BCSTR("image/jpeg")));
    BCRelease(types);
}

TEST(BGDataProvider, CoreDataRoundTrips) {
    const uint8_t bytes[] = {1, 2, 3};
    BCDataRef data = BCDataCreate(kBCAllocatorDefault, bytes, 3);
    BGDataProviderRef provider = BGDataProviderCreateWithBCData(data);
    BCRelease(data);
    BCDataRef copy = BGDataProviderCopyData(provider);
    BGDataProviderRelease(provider);
    ASSERT_EQ(BCDataGetLength(copy), 3);
    EXPECT_EQ(BCDataGetBytePtr(copy)[2], 3);
    BCRelease(copy);
}

} // namespace
