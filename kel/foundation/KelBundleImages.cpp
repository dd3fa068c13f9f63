#include "kel/foundation/KelBundle.h"

#include <cstdlib>

namespace {

constexpr size_t kBytesPerPixel = 4;

void ReleaseImageBits(void*, const void* data, size_t) {
    std::free(const_cast<void*>(data));
}

} // namespace

BGImageRef CopyImageIntoRAM(BGImageRef image) {
    if (image == nullptr) {
        return nullptr;
    }
    size_t width = BGImageGetWidth(image);
    size_t height = BGImageGetHeight(image);
    size_t bytesPerRow = width * kBytesPerPixel;
    void* pixels = std::calloc(height == 0 ? 1 : height, bytesPerRow == 0 ? 1 : bytesPerRow);
    if (pixels == nullptr) {
        return nullptr;
    }
    BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
    BGContextRef context = BGBitmapContextCreate(pixels, width, height, 8, bytesPerRow, space,
                                                 kBGImageAlphaPremultipliedFirst);
    if (context == nullptr) {
        BGColorSpaceRelease(space);
        std::free(pixels);
        return nullptr;
    }
    BGContextDrawImage(context, BGRectMake(0, 0, width, height), image);
    BGContextRelease(context);

    // From here the provider owns the pixels and frees them with the last image over them.
    BGDataProviderRef provider =
        BGDataProviderCreateWithData(nullptr, pixels, height * bytesPerRow, ReleaseImageBits);
    if (provider == nullptr) {
        BGColorSpaceRelease(space);
        std::free(pixels);
        return nullptr;
    }
    BGImageRef copy =
        BGImageCreate(width, height, 8, 32, bytesPerRow, space, kBGImageAlphaPremultipliedFirst,
                      provider, nullptr, false, kBGRenderingIntentDefault);
    BGDataProviderRelease(provider);
    BGColorSpaceRelease(space);
    return copy;
}

namespace KelBundle {

BGImageRef GetImageFromPNG(BCStringRef name) {
    if (name == nullptr) {
        return nullptr;
    }
    BCURLRef url = BCBundleCopyResourceURL(KelGetBundle(), name, nullptr, nullptr);
    if (url == nullptr) {
        return nullptr;
    }
    BGDataProviderRef provider = BGDataProviderCreateWithURL(url);
    BCRelease(url);
    if (provider == nullptr) {
        return nullptr;
    }
    BGImageRef image =
        BGImageCreateWithPNGDataProvider(provider, nullptr, false, kBGRenderingIntentDefault);
    BGDataProviderRelease(provider);
    if (image == nullptr) {
        return nullptr;
    }
    BGImageRef copy = CopyImageIntoRAM(image);
    if (copy == nullptr) {
        return image;
    }
    BGImageRelease(image);
    return copy;
}

} // namespace KelBundle
