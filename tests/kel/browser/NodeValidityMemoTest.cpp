#include "kel/browser/NodeValidityMemo.h"

#include <gtest/gtest.h>

namespace {

// Addresses as nodes have them: aligned, so their low bits are all alike.
const OpaqueNodeRef* Node(uintptr_t index) {
    return reinterpret_cast<const OpaqueNodeRef*>(0x10000 + index * 256);
}

TEST(NodeValidityMemoTest, RemembersEachAnswerThroughGrowthUntilCleared) {
    NodeValidityMemo memo;
    EXPECT_FALSE(memo.Find(Node(1)).has_value());
    constexpr uintptr_t kCount = 10000;
    for (uintptr_t index = 1; index <= kCount; ++index) {
        memo.Set(Node(index), index % 3 != 0);
    }
    memo.Set(Node(7), false); // a second answer replaces the first
    for (uintptr_t index = 1; index <= kCount; ++index) {
        ASSERT_EQ(memo.Find(Node(index)), std::optional<bool>(index != 7 && index % 3 != 0))
            << index;
    }
    EXPECT_FALSE(memo.Find(Node(kCount + 1)).has_value());
    EXPECT_FALSE(memo.Find(nullptr).has_value());
    memo.clear();
    EXPECT_FALSE(memo.Find(Node(1)).has_value());
    memo.Set(Node(1), true);
    EXPECT_EQ(memo.Find(Node(1)), std::optional<bool>(true));
}

} // namespace
