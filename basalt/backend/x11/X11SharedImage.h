#pragma once

// A back buffer in memory the X server maps too (MIT-SHM): a frame reaches the server without
// going through the socket, which at 2x is megabytes a frame.

#include <cairo.h>
#include <memory>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace basalt::x11 {

class SharedImage {
public:
    // Null where the server cannot map our memory: no MIT-SHM, or a server on another machine.
    static std::unique_ptr<SharedImage> Create(xcb_connection_t* xcb, int width, int height);
    ~SharedImage();
    SharedImage(const SharedImage&) = delete;
    SharedImage& operator=(const SharedImage&) = delete;

    // The toolbox draws here; the image owns it.
    cairo_surface_t* Surface() const { return surface_; }
    // Copies the image into the pixmap and waits until the server has read it, so the next
    // frame cannot be drawn over pixels still on their way.
    void PutInto(xcb_pixmap_t pixmap, uint8_t depth);

private:
    SharedImage(xcb_connection_t* xcb, xcb_shm_seg_t segment, void* memory,
                cairo_surface_t* surface)
        : xcb_(xcb), segment_(segment), memory_(memory), surface_(surface) {}

    xcb_connection_t* xcb_;
    xcb_shm_seg_t segment_;
    void* memory_;
    cairo_surface_t* surface_;
};

} // namespace basalt::x11
