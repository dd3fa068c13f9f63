#pragma once

// The bridge between graphics objects and Cairo, for the toolbox and the backends: contexts over
// the surfaces of windows, and the Cairo objects behind images and regions.

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <filesystem>

namespace basalt::graphics {

// A context drawing into surface, whose size is heightInPoints tall at scale device pixels a
// point (1 or 2). User space starts as the base space: points, origin bottom left, y up.
// The context keeps its own reference to the surface. Null when Cairo fails.
BGContextRef CreateContextForSurface(cairo_surface_t* surface, BGFloat heightInPoints,
                                     BGFloat scale);

// The Cairo context behind a graphics context; owned by it.
cairo_t* CairoOf(BGContextRef context);

// The device pixels a point of the context's base space is drawn with (1 or 2).
BGFloat DeviceScaleOf(BGContextRef context);

// An ARGB32 image surface with the image's pixels; owned by the image.
cairo_surface_t* SurfaceOf(BGImageRef image);

// An image over a copy of an ARGB32 image surface's pixels, or null.
BGImageRef CreateImageWithSurface(cairo_surface_t* surface);

// Decodes an image file of any format the image loaders know. Null with status
// kBGNoImageErr (missing or unreadable) or kBGImageFormatErr (not an image).
BGImageRef CreateImageFromFile(const std::filesystem::path& path, StatusCode* status);

// The data of a file, or null when it cannot be read.
BGDataProviderRef CreateDataProviderWithPath(const std::filesystem::path& path);

// The Cairo region behind a region handle; owned by it, never null for a live handle.
cairo_region_t* RegionOf(RgnHandle rgn);

} // namespace basalt::graphics
