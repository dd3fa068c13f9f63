#include "basalt/graphics/PixbufSurface.h"

namespace basalt::graphics {

namespace {

uint32_t Premultiplied(const guchar* p, bool hasAlpha) {
    const uint32_t alpha = hasAlpha ? p[3] : 255;
    auto scale = [alpha](uint32_t c) { return (c * alpha + 127) / 255; };
    return alpha << 24 | scale(p[0]) << 16 | scale(p[1]) << 8 | scale(p[2]);
}

} // namespace

cairo_surface_t* SurfaceFromPixbuf(const GdkPixbuf* pixbuf) {
    const int width = gdk_pixbuf_get_width(pixbuf);
    const int height = gdk_pixbuf_get_height(pixbuf);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return surface;
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixbuf);
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    const int sourceStride = gdk_pixbuf_get_rowstride(pixbuf);
    const guchar* source = gdk_pixbuf_read_pixels(pixbuf);
    unsigned char* target = cairo_image_surface_get_data(surface);
    const int targetStride = cairo_image_surface_get_stride(surface);
    cairo_surface_flush(surface);
    for (int y = 0; y < height; ++y) {
        const guchar* in = source + static_cast<ptrdiff_t>(y) * sourceStride;
        auto* out = reinterpret_cast<uint32_t*>(target + static_cast<ptrdiff_t>(y) * targetStride);
        for (int x = 0; x < width; ++x)
            out[x] = Premultiplied(in + x * channels, hasAlpha);
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

GdkPixbuf* DecodePixbuf(const uint8_t* bytes, size_t size, const char* formatName) {
    if (bytes == nullptr || size == 0)
        return nullptr;
    GError* error = nullptr;
    GdkPixbufLoader* loader = formatName != nullptr
                                  ? gdk_pixbuf_loader_new_with_type(formatName, &error)
                                  : gdk_pixbuf_loader_new();
    if (loader == nullptr) {
        g_clear_error(&error);
        return nullptr;
    }
    const bool written = gdk_pixbuf_loader_write(loader, bytes, size, &error);
    const bool closed = gdk_pixbuf_loader_close(loader, written ? &error : nullptr);
    g_clear_error(&error);
    GdkPixbuf* pixbuf = written && closed ? gdk_pixbuf_loader_get_pixbuf(loader) : nullptr;
    if (pixbuf != nullptr)
        g_object_ref(pixbuf);
    g_object_unref(loader);
    return pixbuf;
}

} // namespace basalt::graphics
