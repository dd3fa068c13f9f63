#pragma once

// Reads pixels of bitmap contexts and Cairo image surfaces in tests. Rows count from the top
// of the memory image; a pixel is 0xAARRGGBB, premultiplied.

#include "basalt/graphics/BGCairo.h"

#include <cstdint>

namespace keltest {

inline uint32_t PixelAt(cairo_surface_t* surface, int x, int rowFromTop) {
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    return reinterpret_cast<const uint32_t*>(data + rowFromTop * stride)[x];
}

inline uint32_t PixelAt(BGContextRef context, int x, int rowFromTop) {
    return PixelAt(cairo_get_target(basalt::graphics::CairoOf(context)), x, rowFromTop);
}

inline int AlphaOf(uint32_t pixel) {
    return static_cast<int>(pixel >> 24);
}
inline int RedOf(uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}
inline int GreenOf(uint32_t pixel) {
    return static_cast<int>(pixel >> 8 & 0xFF);
}
inline int BlueOf(uint32_t pixel) {
    return static_cast<int>(pixel & 0xFF);
}

// A premultiplied-first RGB bitmap context of its own pixels.
inline BGContextRef MakeBitmap(size_t width, size_t height) {
    BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
    BGContextRef context =
        BGBitmapContextCreate(nullptr, width, height, 8, 0, space, kBGImageAlphaPremultipliedFirst);
    BGColorSpaceRelease(space);
    return context;
}

} // namespace keltest
