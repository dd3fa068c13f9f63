#pragma once

// A mutex in four bytes for the node: a large folder keeps one node per entry, and a standard
// mutex would take forty. Uncontended it costs one atomic exchange each way; a waiter sleeps in
// the kernel (the holder may be reading the file system), not in a spin.
//
// State: 0 free, 1 held, 2 held with someone possibly waiting (so unlock must wake one).

#include <atomic>
#include <cstdint>

namespace basalt::nodes {

class NodeLock {
public:
    NodeLock() = default;
    NodeLock(const NodeLock&) = delete;
    NodeLock& operator=(const NodeLock&) = delete;

    void lock() {
        uint32_t seen = 0;
        if (state_.compare_exchange_strong(seen, 1, std::memory_order_acquire))
            return;
        if (seen != 2)
            seen = state_.exchange(2, std::memory_order_acquire);
        while (seen != 0) {
            state_.wait(2, std::memory_order_relaxed);
            seen = state_.exchange(2, std::memory_order_acquire);
        }
    }

    void unlock() {
        if (state_.exchange(0, std::memory_order_release) == 2)
            state_.notify_one();
    }

private:
    std::atomic<uint32_t> state_{0};
};

} // namespace basalt::nodes
