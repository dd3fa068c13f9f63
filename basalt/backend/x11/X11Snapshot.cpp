#include "basalt/backend/x11/X11Snapshot.h"

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/backend/x11/X11Window.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <cairo.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace basalt::x11 {

StatusCode WriteDrawablePNG(xcb_connection_t* xcb, xcb_drawable_t drawable, int x, int y, int width,
                            int height, const std::filesystem::path& path) {
    xcb_get_image_reply_t* reply =
        xcb_get_image_reply(xcb,
                            xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, int16_t(x),
                                          int16_t(y), uint16_t(width), uint16_t(height), ~0u),
                            nullptr);
    if (reply == nullptr || reply->depth < 24) {
        std::free(reply);
        return errInvalidWindowRef;
    }
    cairo_surface_t* picture = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    const uint8_t* source = xcb_get_image_data(reply);
    int sourceStride = xcb_get_image_data_length(reply) / height;
    int stride = cairo_image_surface_get_stride(picture);
    uint8_t* target = cairo_image_surface_get_data(picture);
    // Z-pixmap rows of 32-bit pixels in the server's (little-endian, BGRx) order, as RGB24 is.
    for (int row = 0; row < height; ++row)
        std::memcpy(target + row * stride, source + row * sourceStride, size_t(width) * 4);
    cairo_surface_mark_dirty(picture);
    std::free(reply);
    cairo_status_t status = cairo_surface_write_to_png(picture, path.c_str());
    cairo_surface_destroy(picture);
    return status == CAIRO_STATUS_SUCCESS ? noErr : StatusCode(fnfErr);
}

namespace {

// How long a window just shown may take to become viewable.
constexpr auto kShowDeadline = std::chrono::seconds(5);

bool Viewable(xcb_connection_t* xcb, xcb_window_t id) {
    xcb_get_window_attributes_reply_t* attributes =
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, id), nullptr);
    bool viewable = attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    std::free(attributes);
    return viewable;
}

bool WaitUntilViewable(xcb_connection_t* xcb, xcb_window_t id) {
    auto deadline = std::chrono::steady_clock::now() + kShowDeadline;
    while (!Viewable(xcb, id)) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace

StatusCode WriteWindowPNG(WindowRef window, const std::filesystem::path& path) {
    X11Backend* backend = ActiveX11Backend();
    toolbox::Window* live = toolbox::windows::Live(window);
    xcb_window_t id =
        backend != nullptr && live != nullptr ? backend->XWindowFor(window) : XCB_NONE;
    if (id == XCB_NONE)
        return errInvalidWindowRef;
    live->Flush();
    xcb_connection_t* xcb = backend->Connection().get();
    if (!WaitUntilViewable(xcb, id))
        return errInvalidWindowRef;
    // The frame goes onto the window once more now that it shows, then a round trip makes
    // sure the server has drawn it before we read it back.
    backend->WithWindow(id, [](X11Window& shown) { shown.Expose(0, 0, 0xFFFF, 0xFFFF); });
    std::free(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    xcb_get_geometry_reply_t* geometry =
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, id), nullptr);
    if (geometry == nullptr)
        return errInvalidWindowRef;
    StatusCode status = WriteDrawablePNG(xcb, id, 0, 0, geometry->width, geometry->height, path);
    std::free(geometry);
    return status;
}

} // namespace basalt::x11
