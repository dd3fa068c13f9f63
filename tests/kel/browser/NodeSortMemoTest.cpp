#include "kel/browser/NodeSortMemo.h"

#include <gtest/gtest.h>

namespace {

// Addresses as nodes have them: aligned, so their low bits are all alike.
const OpaqueNodeRef* Node(uintptr_t index) {
    return reinterpret_cast<const OpaqueNodeRef*>(0x10000 + index * 256);
}

// Keys as the node service makes them, with the lengths it gives: the closing zero counts,
// and one it could not make is a lone zero of length 0.
struct KnownKey {
    const char* bytes;
    uint32_t length;
};
const KnownKey kKeys[] = {{"", 0}, {"k", 2}, {"key of eleven", 14}, {"\x7f\x01\x05\x01\x05", 6}};

const uint8_t* Key(uintptr_t index) {
    return reinterpret_cast<const uint8_t*>(kKeys[index % 4].bytes);
}

uint32_t KeyLength(uintptr_t index) {
    return kKeys[index % 4].length;
}

// Every mix of flags, kept beside the node's address, comes back with its node's own key.
NodeSortFacts FactsOf(uintptr_t index) {
    if (index % 5 == 0) {
        return {index % 2 != 0, index % 4 >= 2, index % 8 >= 4, 0, nullptr};
    }
    return {index % 2 != 0, index % 4 >= 2, index % 8 >= 4, KeyLength(index), Key(index)};
}

TEST(NodeSortMemoTest, KeepsEachNodesFactsThroughGrowthUntilCleared) {
    NodeSortMemo memo;
    EXPECT_FALSE(memo.Find(Node(1)));
    constexpr uintptr_t kCount = 10000;
    for (uintptr_t index = 1; index <= kCount; ++index) {
        memo.Keep(Node(index), FactsOf(index));
    }
    memo.Keep(Node(7), {false, false, true, 0, nullptr}); // kept again, replaced
    for (uintptr_t index = 1; index <= kCount; ++index) {
        const std::optional<NodeSortFacts> facts = memo.Find(Node(index));
        ASSERT_TRUE(facts) << index;
        const NodeSortFacts expected =
            index == 7 ? NodeSortFacts{false, false, true, 0, nullptr} : FactsOf(index);
        EXPECT_EQ(facts->valid, expected.valid) << index;
        EXPECT_EQ(facts->queryHit, expected.queryHit) << index;
        EXPECT_EQ(facts->keyKnown, expected.keyKnown) << index;
        EXPECT_EQ(facts->displayKey, expected.displayKey) << index;
        EXPECT_EQ(facts->keyLength, expected.keyLength) << index;
    }
    EXPECT_FALSE(memo.Find(Node(kCount + 1)));
    EXPECT_FALSE(memo.Find(nullptr));
    memo.clear();
    EXPECT_FALSE(memo.Find(Node(1)));
    memo.Keep(Node(1), {true, false, false, 0, nullptr});
    ASSERT_TRUE(memo.Find(Node(1)));
    EXPECT_TRUE(memo.Find(Node(1))->valid);
}

} // namespace
