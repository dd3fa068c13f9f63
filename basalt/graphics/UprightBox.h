#pragma once

// Things that must look upright (text, icons, theme parts) are laid out top-down in their box.
// In a y-up context the box is mirrored onto itself first, so they come out upright whichever
// way the caller's context is turned.

#include <basalt/BasaltGraphics.h>
#include <cairo.h>

namespace basalt::graphics {

// True when user space runs y-down on the device, as in a flipped view context.
inline bool IsFlipped(cairo_t* cr) {
    cairo_matrix_t m;
    cairo_get_matrix(cr, &m);
    return m.xx * m.yy - m.xy * m.yx > 0;
}

// Mirrors box onto itself if user space runs y-up; call between cairo_save and cairo_restore.
inline void MakeUpright(cairo_t* cr, BGRect box) {
    if (IsFlipped(cr))
        return;
    box = BGRectStandardize(box);
    cairo_translate(cr, 0, 2 * box.origin.y + box.size.height);
    cairo_scale(cr, 1, -1);
}

} // namespace basalt::graphics
