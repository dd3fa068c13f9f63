#pragma once

// Puts the pixels of an image surface into a pixmap on the server.

#include <cairo.h>
#include <xcb/xcb.h>

namespace basalt::x11 {

// The surface's rows go as they are: cairo's ARGB32 in memory is the server's 32-bit Z-pixmap
// layout for depth 24. Rows go in bands that fit one request. (Not through cairo-xcb: its
// shared-memory path reads from the connection behind our event thread's back, and events got
// lost.)
void UploadSurface(xcb_connection_t* xcb, xcb_pixmap_t pixmap, uint8_t depth,
                   cairo_surface_t* surface);

} // namespace basalt::x11
