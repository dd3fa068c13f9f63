// Images: made over a provider's pixels, decoded from PNG or other files, and drawn.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/BGImageObject.h"
#include "basalt/graphics/PixbufSurface.h"
#include "basalt/graphics/UprightBox.h"

#include <cstring>

using basalt::graphics::ReleaseObject;
using basalt::graphics::RetainObject;

OpaqueBGImage::~OpaqueBGImage() {
    cairo_surface_destroy(surface);
    ReleaseObject(provider);
}

namespace {

BGImageRef AdoptSurface(cairo_surface_t* surface) {
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    return new OpaqueBGImage(surface);
}

BGImageRef ImageFromPixbuf(GdkPixbuf* pixbuf) {
    if (pixbuf == nullptr)
        return nullptr;
    BGImageRef image = AdoptSurface(basalt::graphics::SurfaceFromPixbuf(pixbuf));
    g_object_unref(pixbuf);
    return image;
}

// Pixels are read a word at a time, so bytes that are not word-aligned are copied first.
cairo_surface_t* CopyPixels(const uint8_t* bytes, cairo_format_t format, size_t width,
                            size_t height, size_t bytesPerRow) {
    cairo_surface_t* surface =
        cairo_image_surface_create(format, static_cast<int>(width), static_cast<int>(height));
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return surface;
    cairo_surface_flush(surface);
    unsigned char* target = cairo_image_surface_get_data(surface);
    const size_t stride = static_cast<size_t>(cairo_image_surface_get_stride(surface));
    for (size_t row = 0; row < height; ++row)
        std::memcpy(target + row * stride, bytes + row * bytesPerRow, width * 4);
    cairo_surface_mark_dirty(surface);
    return surface;
}

// Draws the image into rect: upright whatever the context's orientation, or else with its
// first row at the rect's max y (upright in y-up contexts only).
void DrawImage(BGContextRef context, BGRect rect, BGImageRef image, bool upright) {
    if (context == nullptr || !context->Valid() || image == nullptr || BGRectIsEmpty(rect))
        return;
    rect = BGRectStandardize(rect);
    const int width = cairo_image_surface_get_width(image->surface);
    const int height = cairo_image_surface_get_height(image->surface);
    if (width == 0 || height == 0)
        return;
    cairo_t* cr = context->cr;
    cairo_save(cr);
    cairo_new_path(cr);
    cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(cr);
    if (upright) {
        basalt::graphics::MakeUpright(cr, rect);
        cairo_translate(cr, rect.origin.x, rect.origin.y);
        cairo_scale(cr, rect.size.width / width, rect.size.height / height);
    } else {
        cairo_translate(cr, rect.origin.x, rect.origin.y + rect.size.height);
        cairo_scale(cr, rect.size.width / width, -rect.size.height / height);
    }
    cairo_set_source_surface(cr, image->surface, 0, 0);
    // Padding keeps the edges of a stretched image crisp instead of fading into nothing.
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint_with_alpha(cr, context->state.alpha);
    cairo_restore(cr);
}

} // namespace

namespace basalt::graphics {

cairo_surface_t* SurfaceOf(BGImageRef image) {
    return image != nullptr ? image->surface : nullptr;
}

BGImageRef CreateImageWithSurface(cairo_surface_t* surface) {
    if (surface == nullptr || cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    cairo_surface_flush(surface);
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(copy);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_paint(cr);
    cairo_destroy(cr);
    return AdoptSurface(copy);
}

BGImageRef CreateImageFromFile(const std::filesystem::path& path, StatusCode* status) {
    BGDataProviderRef provider = CreateDataProviderWithPath(path);
    if (provider == nullptr) {
        if (status != nullptr)
            *status = kBGNoImageErr;
        return nullptr;
    }
    BGImageRef image = ImageFromPixbuf(DecodePixbuf(provider->bytes, provider->size, nullptr));
    BGDataProviderRelease(provider);
    if (status != nullptr)
        *status = image != nullptr ? StatusCode{noErr} : StatusCode{kBGImageFormatErr};
    return image;
}

} // namespace basalt::graphics

extern "C" {

BGImageRef BGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, BGColorSpaceRef space, BGBitmapInfo bitmapInfo,
                         BGDataProviderRef provider, const BGFloat* decode,
                         Boolean shouldInterpolate, BGColorRenderingIntent intent) {
    (void)space;
    (void)shouldInterpolate;
    (void)intent;
    const uint32_t alpha = bitmapInfo & kBGBitmapAlphaInfoMask;
    const bool layoutKnown =
        bitsPerComponent == 8 && bitsPerPixel == 32 &&
        (alpha == kBGImageAlphaPremultipliedFirst || alpha == kBGImageAlphaNoneSkipFirst);
    if (!layoutKnown || decode != nullptr || provider == nullptr || width == 0 || height == 0 ||
        width > 32767 || height > 32767 || bytesPerRow < width * 4 || bytesPerRow % 4 != 0 ||
        provider->size < bytesPerRow * (height - 1) + width * 4)
        return nullptr;
    const cairo_format_t format =
        alpha == kBGImageAlphaPremultipliedFirst ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24;
    if (reinterpret_cast<uintptr_t>(provider->bytes) % alignof(uint32_t) != 0)
        return AdoptSurface(CopyPixels(provider->bytes, format, width, height, bytesPerRow));
    // Cairo only reads an image's pixels, so borrowing the provider's bytes is safe.
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        const_cast<unsigned char*>(provider->bytes), format, static_cast<int>(width),
        static_cast<int>(height), static_cast<int>(bytesPerRow));
    BGImageRef image = AdoptSurface(surface);
    if (image != nullptr)
        image->provider = RetainObject(provider);
    return image;
}

BGImageRef BGImageCreateWithPNGDataProvider(BGDataProviderRef provider, const BGFloat* decode,
                                            Boolean shouldInterpolate,
                                            BGColorRenderingIntent intent) {
    (void)shouldInterpolate;
    (void)intent;
    if (provider == nullptr || decode != nullptr)
        return nullptr;
    return ImageFromPixbuf(basalt::graphics::DecodePixbuf(provider->bytes, provider->size, "png"));
}

BGImageRef BGImageRetain(BGImageRef image) {
    return RetainObject(image);
}
void BGImageRelease(BGImageRef image) {
    ReleaseObject(image);
}

size_t BGImageGetWidth(BGImageRef image) {
    return image != nullptr ? static_cast<size_t>(cairo_image_surface_get_width(image->surface))
                            : 0;
}

size_t BGImageGetHeight(BGImageRef image) {
    return image != nullptr ? static_cast<size_t>(cairo_image_surface_get_height(image->surface))
                            : 0;
}

void BGContextDrawImage(BGContextRef context, BGRect rect, BGImageRef image) {
    DrawImage(context, rect, image, false);
}

StatusCode BTViewDrawBGImage(BGContextRef context, const BGRect* rect, BGImageRef image) {
    if (context == nullptr || rect == nullptr || image == nullptr)
        return paramErr;
    DrawImage(context, *rect, image, true);
    return noErr;
}

} // extern "C"
