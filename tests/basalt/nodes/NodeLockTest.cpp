#include "basalt/nodes/NodeLock.h"

#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

using basalt::nodes::NodeLock;

namespace {

// Threads that fight for the lock, many of them sleeping in it, lose no update and all wake.
TEST(NodeLockTest, ExcludesAndWakesEveryWaiter) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 50000;
    NodeLock lock;
    long total = 0;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                std::lock_guard hold(lock);
                ++total;
            }
        });
    }
    threads.clear();
    EXPECT_EQ(total, long(kThreads) * kRounds);
}

} // namespace
