#pragma once

// Waiting inside the toolbox's event loop, headless: on a condition with a generous deadline
// instead of a fixed sleep, and on a window that a key or a click brings up with a loop of its
// own.

#include "basalt/backend/headless/HeadlessDriver.h"

#include <chrono>
#include <functional>

namespace keltest {

// Runs the loop (timers fire) until the condition holds (true) or the deadline passes (false).
inline bool RunUntil(const std::function<bool()>& condition,
                     std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        basalt::headless::HeadlessDriver::RunFor(0.02);
    }
    return true;
}

// Calls work with the window in front once one has come up over `below`; a modal window runs
// its own loop, from which work is then called.
inline void WhenWindowShowsOver(WindowRef below, std::function<void(WindowRef)> work) {
    basalt::headless::HeadlessDriver::Soon(
        [below, work] {
            if (FrontWindow() == below) {
                WhenWindowShowsOver(below, work);
            } else {
                work(FrontWindow());
            }
        },
        0.01);
}

} // namespace keltest
