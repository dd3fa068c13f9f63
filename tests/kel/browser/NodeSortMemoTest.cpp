#include "kel/browser/NodeSortMemo.h"

#include <gtest/gtest.h>

namespace {

// Addresses as nodes have them: aligned, so their low bits are all alike.
const OpaqueNodeRef* Node(uintptr_t index) {
    return reinterpret_cast<const OpaqueNodeRef*>(0x10000 + index * 256);
}

const uint8_t* Key(uintptr_t index) {
    return reinterpret_cast<const uint8_t*>(0x900000 + index * 3);
}

// Every mix of flags, kept beside the node's address, comes back with its node's own key.
NodeSortFacts FactsOf(uintptr_t index) {
    return {index % 2 != 0, index % 4 >= 2, index % 8 >= 4, index % 3 == 0 ? nullptr : Key(index)};
}

TEST(NodeSortMemoTest, KeepsEachNodesFactsThroughGrowthUntilCleared) {
    NodeSortMemo memo;
    EXPECT_FALSE(memo.Find(Node(1)));
    constexpr uintptr_t kCount = 10000;
    for (uintptr_t index = 1; index <= kCount; ++index) {
        memo.Keep(Node(index), FactsOf(index));
    }
    memo.Keep(Node(7), {false, false, true, nullptr}); // kept again, replaced
    for (uintptr_t index = 1; index <= kCount; ++index) {
        const std::optional<NodeSortFacts> facts = memo.Find(Node(index));
        ASSERT_TRUE(facts) << index;
        const NodeSortFacts expected =
            index == 7 ? NodeSortFacts{false, false, true, nullptr} : FactsOf(index);
        EXPECT_EQ(facts->valid, expected.valid) << index;
        EXPECT_EQ(facts->queryHit, expected.queryHit) << index;
        EXPECT_EQ(facts->keyKnown, expected.keyKnown) << index;
        EXPECT_EQ(facts->displayKey, expected.displayKey) << index;
    }
    EXPECT_FALSE(memo.Find(Node(kCount + 1)));
    EXPECT_FALSE(memo.Find(nullptr));
    memo.clear();
    EXPECT_FALSE(memo.Find(Node(1)));
    memo.Keep(Node(1), {true, false, false, nullptr});
    ASSERT_TRUE(memo.Find(Node(1)));
    EXPECT_TRUE(memo.Find(Node(1))->valid);
}

} // namespace
