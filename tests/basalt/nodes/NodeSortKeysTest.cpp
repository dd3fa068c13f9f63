#include "basalt/nodes/NodeSortKeys.h"

#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <mutex>
#include <optional>

using namespace nodetest;
using basalt::nodes::kParallelSortKeysFrom;

namespace {

std::optional<std::vector<uint8_t>> PreparedKey(NodeRef node) {
    if (node->sortKeys.displayName.ready.load() == nullptr)
        return std::nullopt;
    const uint8_t* key = nullptr;
    BCIndex length = 0;
    EXPECT_EQ(NodeGetSortKey(node, NodeCode("dnam"), &key, &length), noErr);
    return std::vector<uint8_t>(key, key + length);
}

// The key made fresh, for comparison with the one made ahead.
std::vector<uint8_t> FreshKey(NodeRef node) {
    {
        std::lock_guard lock(node->mutex);
        node->sortKeys.displayName.ready.store(nullptr);
        node->sortKeys.displayName.bytes.reset();
    }
    const uint8_t* key = nullptr;
    BCIndex length = 0;
    EXPECT_EQ(NodeGetSortKey(node, NodeCode("dnam"), &key, &length), noErr);
    return {key, key + length};
}

std::vector<Held> ListFolderOf(size_t count, const char* label) {
    auto folder = keltest::MakeScratchFolder(label);
    for (size_t index = 0; index < count; ++index)
        keltest::WriteFile(folder / ("File " + std::to_string(index) + ".txt"), "");
    Held parent = NodeAt(folder);
    return Children(parent.get());
}

TEST(NodeSortKeysTest, LargeListingHasEveryDisplayKeyMadeAhead) {
    // Not a multiple of the worker count, so the last share is a short one.
    std::vector<Held> children = ListFolderOf(kParallelSortKeysFrom + 3, "sortkeys-large");
    ASSERT_EQ(children.size(), kParallelSortKeysFrom + 3);
    size_t prepared = 0;
    for (const Held& child : children) {
        std::optional<std::vector<uint8_t>> key = PreparedKey(child.get());
        if (!key)
            continue;
        ++prepared;
        EXPECT_EQ(*key, FreshKey(child.get())) << "a key belongs to another node";
    }
    EXPECT_EQ(prepared, children.size());
}

TEST(NodeSortKeysTest, SmallListingLeavesKeysToBeAskedFor) {
    std::vector<Held> children = ListFolderOf(5, "sortkeys-small");
    ASSERT_EQ(children.size(), 5u);
    for (const Held& child : children)
        EXPECT_FALSE(PreparedKey(child.get()).has_value());
}

} // namespace
