#pragma once

// The main event loop: its timers and its stack of runs.
//
// A run (RunCurrentEventLoop, RunApplicationEventLoop, a modal loop) pushes a RunLevel;
// QuitEventLoop ends the innermost one. Timers fire only on the loop's own thread, from inside
// ReceiveNextEvent, so a timer proc may run a nested loop, remove itself or re-arm itself.

#include "basalt/toolbox/events/EventQueue.h"

#include <limits>
#include <memory>
#include <vector>

struct OpaqueEventLoopTimerRef {
    static constexpr EventTime kParked = std::numeric_limits<double>::infinity();

    EventLoopRef loop = nullptr;
    EventLoopTimerUPP proc = nullptr;
    void* userData = nullptr;
    EventTime fireAt = kParked;
    EventTimerInterval interval = 0;
    bool removed = false;
    bool firing = false;
};

struct OpaqueEventLoopRef {
    struct RunLevel {
        bool quit = false;
        bool application = false;
    };

    std::vector<std::shared_ptr<OpaqueEventLoopTimerRef>> timers;
    std::vector<RunLevel*> levels;

    // Calls every timer that is due; true if one fired.
    bool FireDueTimers();
    EventTime NextFireTime() const;
    bool QuitRequested() const { return !levels.empty() && levels.back()->quit; }
};

namespace basalt::toolbox {

// Runs the loop, dispatching what arrives, until the level is quit or the timeout passes.
// Returns eventLoopQuitErr or eventLoopTimedOutErr.
StatusCode RunLevel(OpaqueEventLoopRef::RunLevel& level, EventTimeout timeout);

// Takes and dispatches whatever is queued or due without waiting; true if anything happened.
bool DispatchPendingEvents();

} // namespace basalt::toolbox
