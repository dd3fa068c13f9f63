#pragma once

// The pointer's shape: the application's choice, or, as the pointer moves, what the view
// under it asks for (an I-beam over text, a resize arrow over a divider). While the
// application shows that it is busy, moving the pointer does not undo that.

#include <cstdint>

namespace basalt::toolbox {

void SetApplicationCursor(uint32_t themeCursor);
void ShowPointerCursor(uint32_t themeCursor);

} // namespace basalt::toolbox
