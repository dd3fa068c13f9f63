#pragma once

// One frame of a GridBrowser after a jump: the list scrolls to a random row and the window
// draws. Virtualised drawing makes this cost the same at 100 rows and at 100,000.

#include "basalt/gridbrowser/GridBrowser.h"

#include <cstdint>

namespace kelbench {

// The median time, in seconds, of drawing the window once after the list view control of the
// window jumps to a random scroll position, over `samples` jumps.
double MedianFrameAfterJump(WindowRef window, ControlRef control, int samples, uint32_t seed);

} // namespace kelbench
