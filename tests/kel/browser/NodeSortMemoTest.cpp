#include "kel/browser/NodeSortMemo.h"

#include <gtest/gtest.h>

namespace {

// Addresses as nodes have them: aligned, so their low bits are all alike.
const OpaqueNodeRef* Node(uintptr_t index) {
    return reinterpret_cast<const OpaqueNodeRef*>(0x10000 + index * 256);
}

TEST(NodeSortMemoTest, KeepsEachNodesFactsThroughGrowthUntilCleared) {
    NodeSortMemo memo;
    EXPECT_EQ(memo.Find(Node(1)), nullptr);
    constexpr uintptr_t kCount = 10000;
    for (uintptr_t index = 1; index <= kCount; ++index) {
        memo.Keep(Node(index), {index % 3 != 0, index % 5 == 0, false, uint32_t(index), nullptr});
    }
    memo.Keep(Node(7), {false, false, true, 0, nullptr}); // kept again, replaced
    for (uintptr_t index = 1; index <= kCount; ++index) {
        const NodeSortFacts* facts = memo.Find(Node(index));
        ASSERT_NE(facts, nullptr) << index;
        if (index == 7) {
            EXPECT_FALSE(facts->valid);
            EXPECT_TRUE(facts->keyKnown);
            continue;
        }
        EXPECT_EQ(facts->valid, index % 3 != 0) << index;
        EXPECT_EQ(facts->queryHit, index % 5 == 0) << index;
        EXPECT_EQ(facts->keyLength, index) << index;
    }
    EXPECT_EQ(memo.Find(Node(kCount + 1)), nullptr);
    EXPECT_EQ(memo.Find(nullptr), nullptr);
    memo.clear();
    EXPECT_EQ(memo.Find(Node(1)), nullptr);
    memo.Keep(Node(1), {true, false, false, 0, nullptr});
    ASSERT_NE(memo.Find(Node(1)), nullptr);
    EXPECT_TRUE(memo.Find(Node(1))->valid);
}

} // namespace
