#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <thread>

using namespace nodetest;

namespace {

TEST(NodeTableTest, OneNodePerObjectWhicheverWayItIsReached) {
    auto folder = keltest::MakeScratchFolder("identity");
    keltest::WriteFile(folder / "a.txt", "x");
    Held byPath = NodeAt(folder / "a.txt");
    Held parent = NodeAt(folder);
    Held byName = Child(parent.get(), u"a.txt");
    ASSERT_TRUE(byPath);
    EXPECT_EQ(byPath.get(), byName.get());
    std::vector<Held> listed = Children(parent.get());
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed[0].get(), byPath.get());
    Held viaDots = NodeAt(folder / "sub/../a.txt");
    EXPECT_EQ(viaDots.get(), byPath.get()) << "paths are folded lexically";
}

TEST(NodeTableTest, SpecialNodesAreStable) {
    InitializeCatalog();
    Held boot(GetBootNode());
    Held bootAgain(GetBootNode());
    EXPECT_EQ(boot.get(), bootAgain.get());
    EXPECT_EQ(GetRootNode(), GetRootNode());
    Held home(GetHomeNode());
    EXPECT_EQ(home.get(), NodeAt(keltest::ScratchHome()).get());
    Held places(GetVirtualNode(kVirtualNodePlaces));
    EXPECT_NE(places.get(), nullptr);
    EXPECT_EQ(GetVirtualNode(99), nullptr);
}

// Counting from many threads at once must neither lose a node nor free one in use.
TEST(NodeTableTest, CountsHoldUnderConcurrentUse) {
    auto folder = keltest::MakeScratchFolder("threads");
    for (int i = 0; i < 50; ++i)
        keltest::WriteFile(folder / ("f" + std::to_string(i)), "x");
    Held parent = NodeAt(folder);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                for (Held& child : Children(parent.get()))
                    NodeIsVisible(child.get());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(Children(parent.get()).size(), 50u);
}

} // namespace
