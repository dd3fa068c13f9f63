#include <basalt/BasaltCore.h>
#include <gtest/gtest.h>
#include <thread>

namespace {

TEST(RunLoop, MainIsTheInitialThreadsAndOthersHaveTheirOwn) {
    BCRunLoopRef seenFromThread = nullptr;
    BCRunLoopRef mainFromThread = nullptr;
    // Ask from another thread first: that must not make it the main one.
    std::thread([&] {
        seenFromThread = BCRunLoopGetCurrent();
        mainFromThread = BCRunLoopGetMain();
        EXPECT_EQ(BCRunLoopGetCurrent(), seenFromThread);
    }).join();
    EXPECT_EQ(BCRunLoopGetCurrent(), BCRunLoopGetMain());
    EXPECT_EQ(mainFromThread, BCRunLoopGetMain());
    EXPECT_NE(seenFromThread, BCRunLoopGetMain());
}

} // namespace
