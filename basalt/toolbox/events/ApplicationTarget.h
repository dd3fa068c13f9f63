#pragma once

// The application's target (the top of every propagation chain) and the dispatcher target,
// through which the loops send whatever they take from the queue.

#include "basalt/toolbox/events/EventTarget.h"

namespace basalt::toolbox {

// Routes input (mouse, keys) to the window or view it belongs to; everything else goes to the
// application. Defined with the windows, which it needs to know about.
StatusCode RouteDispatchedEvent(EventHandlerCallRef call, EventRef event);

// Brings every window's pixels up to date; the loop calls it before it sleeps.
void FlushWindowsBeforeWaiting();

} // namespace basalt::toolbox
