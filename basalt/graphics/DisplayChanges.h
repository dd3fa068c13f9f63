#pragma once

// The backends' side of the display reconfiguration callbacks.

#include <basalt/BasaltGraphics.h>

namespace basalt::graphics {

// Tells every registered callback, on the calling (main) thread: first the announcement with
// kBGDisplayBeginConfigurationFlag, then flags.
void NotifyDisplayReconfiguration(BGDirectDisplayID display, BGDisplayChangeSummaryFlags flags);

} // namespace basalt::graphics
