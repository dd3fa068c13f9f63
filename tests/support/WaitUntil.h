#pragma once

// Waiting on a condition that another thread makes true, with a generous deadline instead of a
// fixed sleep: a slow machine waits longer, a fast one returns at once.

#include <chrono>
#include <functional>
#include <thread>

namespace keltest {

// Polls the condition until it holds (true) or the deadline passes (false).
inline bool WaitUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds deadline = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace keltest
