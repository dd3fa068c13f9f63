#pragma once

// The object behind an IconRef. Icons are interned by key, so asking twice for the same icon
// gives the same reference; owners is guarded by the icon table's lock. Pictures come from the
// process-wide picture cache; a size with no theme picture is drawn.

#include "basalt/graphics/DrawnIcon.h"

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <string>
#include <vector>

struct OpaqueIconRef {
    OpaqueIconRef(std::string iconKey, std::vector<std::string> themeNames,
                  basalt::graphics::DrawnIcon drawn, bool drawnOverBlurred)
        : key(std::move(iconKey)), names(std::move(themeNames)), fallback(drawn),
          sharpOnly(drawnOverBlurred) {}
    OpaqueIconRef(const OpaqueIconRef&) = delete;
    OpaqueIconRef& operator=(const OpaqueIconRef&) = delete;

    // The theme picture closest to pixelSize, or null when the icon is to be drawn. Owned by
    // the picture cache.
    cairo_surface_t* PictureFor(int pixelSize);

    const std::string key;
    const std::vector<std::string> names;
    const basalt::graphics::DrawnIcon fallback;
    // Drawn rather than taken from a theme picture that would have to be blown up.
    const bool sharpOnly;
    uint16_t owners = 1;
};
