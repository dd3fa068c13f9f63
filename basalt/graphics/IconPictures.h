#pragma once

// Theme pictures of icons by icon key and pixel size, loaded once for the process. A list
// view takes and releases its rows' icons on every frame; keeping the pictures here rather
// than in the icon means that the last release does not send the next frame back to the
// theme folders and the image decoder.

#include <cairo.h>
#include <string>
#include <vector>

namespace basalt::graphics {

// The picture of the first of names that a theme has, closest to pixelSize, or null when none
// has one. With sharpOnly, a raster file much smaller than pixelSize counts as none. Owned by
// the cache; it lives as long as the process.
cairo_surface_t* IconPicture(const std::string& key, const std::vector<std::string>& names,
                             int pixelSize, bool sharpOnly = false);

} // namespace basalt::graphics
