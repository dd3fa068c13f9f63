#pragma once

// The object behind an IconRef. Icons are interned by key, so asking twice for the same icon
// gives the same reference; owners is guarded by the icon table's lock. Pictures are loaded per
// pixel size on first use and kept; a size with no theme picture keeps a null entry and is drawn.

#include "basalt/graphics/DrawnIcon.h"

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <map>
#include <mutex>
#include <string>
#include <vector>

struct OpaqueIconRef {
    OpaqueIconRef(std::string iconKey, std::vector<std::string> themeNames,
                  basalt::graphics::DrawnIcon drawn)
        : key(std::move(iconKey)), names(std::move(themeNames)), fallback(drawn) {}
    ~OpaqueIconRef();
    OpaqueIconRef(const OpaqueIconRef&) = delete;
    OpaqueIconRef& operator=(const OpaqueIconRef&) = delete;

    // The theme picture closest to pixelSize, or null when the icon is to be drawn. Owned by
    // the icon.
    cairo_surface_t* PictureFor(int pixelSize);

    const std::string key;
    const std::vector<std::string> names;
    const basalt::graphics::DrawnIcon fallback;
    uint16_t owners = 1;

private:
    std::mutex mutex_;
    std::map<int, cairo_surface_t*> pictures_;
};
