#pragma once

// Conversions between gdk-pixbuf's straight-alpha RGBA rows and Cairo's premultiplied ARGB32.

#include <cairo.h>
#include <cstddef>
#include <cstdint>
#include <gdk-pixbuf/gdk-pixbuf.h>

namespace basalt::graphics {

// A new ARGB32 surface with the pixbuf's pixels; check its status.
cairo_surface_t* SurfaceFromPixbuf(const GdkPixbuf* pixbuf);

// Decodes bytes of any format the loaders know ("png" in formatName restricts it to PNG).
// Null when they are no image of that format.
GdkPixbuf* DecodePixbuf(const uint8_t* bytes, size_t size, const char* formatName);

} // namespace basalt::graphics
