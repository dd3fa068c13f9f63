// Bitmap contexts: a context over caller's or own pixels, 8 bits a component, 4 bytes a pixel.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/BGImageObject.h"

#include <new>

using basalt::graphics::ReleaseObject;
using basalt::graphics::RetainObject;

namespace {

bool IsBitmap(BGContextRef context) {
    return context != nullptr && context->isBitmap;
}

bool FormatFor(BGBitmapInfo info, cairo_format_t* format) {
    switch (info & kBGBitmapAlphaInfoMask) {
    case kBGImageAlphaPremultipliedFirst:
        *format = CAIRO_FORMAT_ARGB32;
        return true;
    case kBGImageAlphaNoneSkipFirst:
        *format = CAIRO_FORMAT_RGB24;
        return true;
    default:
        return false;
    }
}

} // namespace

extern "C" {

BGColorSpaceRef BGColorSpaceCreateDisplayRGB(void) {
    return new OpaqueBGColorSpace;
}
BGColorSpaceRef BGColorSpaceRetain(BGColorSpaceRef space) {
    return RetainObject(space);
}
void BGColorSpaceRelease(BGColorSpaceRef space) {
    ReleaseObject(space);
}

BGContextRef BGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, BGColorSpaceRef space,
                                   BGBitmapInfo bitmapInfo) {
    (void)space;
    cairo_format_t format;
    if (bitsPerComponent != 8 || !FormatFor(bitmapInfo, &format) || width == 0 || height == 0 ||
        width > 32767 || height > 32767)
        return nullptr;
    if (bytesPerRow == 0)
        bytesPerRow = width * 4;
    if (bytesPerRow < width * 4 || bytesPerRow % 4 != 0)
        return nullptr;
    std::unique_ptr<unsigned char[]> own;
    if (data == nullptr) {
        own.reset(new (std::nothrow) unsigned char[bytesPerRow * height]());
        if (!own)
            return nullptr;
        data = own.get();
    }
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        static_cast<unsigned char*>(data), format, static_cast<int>(width),
        static_cast<int>(height), static_cast<int>(bytesPerRow));
    const cairo_matrix_t base = {1, 0, 0, -1, 0, static_cast<double>(height)};
    auto* context = new OpaqueBGContext(surface, base);
    cairo_surface_destroy(surface);
    if (!context->Valid()) {
        ReleaseObject(context);
        return nullptr;
    }
    context->isBitmap = true;
    context->data = data;
    context->width = width;
    context->height = height;
    context->bytesPerRow = bytesPerRow;
    context->ownPixels = std::move(own);
    return context;
}

BGImageRef BGBitmapContextCreateImage(BGContextRef context) {
    if (!IsBitmap(context))
        return nullptr;
    return basalt::graphics::CreateImageWithSurface(cairo_get_target(context->cr));
}

void* BGBitmapContextGetData(BGContextRef context) {
    if (!IsBitmap(context))
        return nullptr;
    cairo_surface_flush(cairo_get_target(context->cr));
    return context->data;
}

size_t BGBitmapContextGetWidth(BGContextRef context) {
    return IsBitmap(context) ? context->width : 0;
}

size_t BGBitmapContextGetHeight(BGContextRef context) {
    return IsBitmap(context) ? context->height : 0;
}

size_t BGBitmapContextGetBytesPerRow(BGContextRef context) {
    return IsBitmap(context) ? context->bytesPerRow : 0;
}

} // extern "C"
