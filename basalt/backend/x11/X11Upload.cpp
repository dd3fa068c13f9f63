#include "basalt/backend/x11/X11Upload.h"

#include <algorithm>

namespace basalt::x11 {

void UploadSurface(xcb_connection_t* xcb, xcb_pixmap_t pixmap, uint8_t depth,
                   cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    const uint8_t* pixels = cairo_image_surface_get_data(surface);
    constexpr uint32_t kRequestHeader = 24;
    uint32_t maxBytes = xcb_get_maximum_request_length(xcb) * 4 - kRequestHeader;
    int band = std::max(1, int(maxBytes / uint32_t(stride)));
    xcb_gcontext_t gc = xcb_generate_id(xcb);
    xcb_create_gc(xcb, gc, pixmap, 0, nullptr);
    for (int top = 0; top < height; top += band) {
        int rows = std::min(band, height - top);
        xcb_put_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, uint16_t(width), uint16_t(rows),
                      0, int16_t(top), 0, depth, uint32_t(rows * stride),
                      pixels + size_t(top) * size_t(stride));
    }
    xcb_free_gc(xcb, gc);
}

} // namespace basalt::x11
