#pragma once

// Draws the popup menu the headless backend shows at the moment into a window's snapshot, as
// a person would see it over the window it opened from.

#include "basalt/backend/headless/HeadlessBackend.h"

#include <cairo.h>

namespace basalt::headless {

// The menu's frame in the snapshot's points: the content's top left is (0, contentTop).
BGRect ShownMenuFrame(const HeadlessBackend::ShownMenu& shown, const Rect& content,
                      BGFloat contentTop);
// Paints the menu with its top left at `origin` (device pixels) of cr's target.
void PaintShownMenu(cairo_t* cr, const HeadlessBackend::ShownMenu& shown, BGPoint origin,
                    double scale);

} // namespace basalt::headless
