#pragma once

// Icons drawn in code, for when no icon theme has a picture: plain, flat shapes in the theme's
// palette, laid out top-down in their square.

#include <basalt/BasaltGraphics.h>
#include <cairo.h>

namespace basalt::graphics {

enum class DrawnIcon {
    Document,
    Folder,
    Device,
    Search,
    Application,
    Trash,
    Eject,
    Caution,
    Note,
    Stop
};

void DrawIconShape(cairo_t* cr, DrawnIcon kind, BGRect square);

} // namespace basalt::graphics
