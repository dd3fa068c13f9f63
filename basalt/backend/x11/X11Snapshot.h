#pragma once

// Pictures taken through the X server: what a drawable shows on screen, read back with
// GetImage, written as PNG. Unlike a copy of our own back buffer this shows what the user
// sees, whatever the server did with it.

#include <basalt/BasaltToolbox.h>
#include <filesystem>
#include <xcb/xcb.h>

namespace basalt::x11 {

// A rectangle of the drawable's pixels (a 24- or 32-bit TrueColor depth) as an opaque PNG.
StatusCode WriteDrawablePNG(xcb_connection_t* xcb, xcb_drawable_t drawable, int x, int y, int width,
                            int height, const std::filesystem::path& path);

// The window as it is on screen; errInvalidWindowRef if the X11 backend does not show it.
StatusCode WriteWindowPNG(WindowRef window, const std::filesystem::path& path);

} // namespace basalt::x11
