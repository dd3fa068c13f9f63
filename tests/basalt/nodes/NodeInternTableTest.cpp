#include "basalt/nodes/NodeInternTable.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>

using basalt::nodes::NodeInternTable;

namespace {

// Nodes as the table sees them: named under a parent, with their hash set.
struct DestroyNode {
    void operator()(OpaqueNodeRef* node) const { OpaqueNodeRef::Destroy(node); }
};
using OwnedNode = std::unique_ptr<OpaqueNodeRef, DestroyNode>;

class NodeInternTableTest : public ::testing::Test {
protected:
    OpaqueNodeRef* Make(OpaqueNodeRef* parent, const std::string& name) {
        made.emplace_back(OpaqueNodeRef::Make(NodeKind::File, name, parent));
        made.back()->tableHash = NodeInternTable::HashOf(parent, name);
        return made.back().get();
    }
    OpaqueNodeRef* Find(OpaqueNodeRef* parent, std::string_view name) const {
        return table.Find(parent, name, NodeInternTable::HashOf(parent, name));
    }

    OwnedNode a{OpaqueNodeRef::Make(NodeKind::Folder, "a", nullptr)};
    OwnedNode b{OpaqueNodeRef::Make(NodeKind::Folder, "b", nullptr)};
    OpaqueNodeRef& folderA = *a;
    OpaqueNodeRef& folderB = *b;
    std::vector<OwnedNode> made;
    NodeInternTable table;
};

// Thousands of nodes make the table grow many times and share buckets; the same name under
// two parents is two nodes.
TEST_F(NodeInternTableTest, FindsEachNodeByParentAndNameThroughGrowth) {
    for (int i = 0; i < 5000; ++i) {
        table.Insert(Make(&folderA, "file " + std::to_string(i)));
        table.Insert(Make(&folderB, "file " + std::to_string(i)));
    }
    for (int i = 0; i < 5000; i += 499) {
        OpaqueNodeRef* inA = Find(&folderA, "file " + std::to_string(i));
        ASSERT_NE(inA, nullptr);
        EXPECT_EQ(inA->Name(), "file " + std::to_string(i));
        EXPECT_EQ(inA->parent, &folderA);
        EXPECT_NE(inA, Find(&folderB, "file " + std::to_string(i)));
    }
    EXPECT_EQ(Find(&folderA, "file 5000"), nullptr);
    std::set<OpaqueNodeRef*> visited;
    table.ForEach([&](OpaqueNodeRef* node) { visited.insert(node); });
    EXPECT_EQ(visited.size(), 10000u);
}

// Erasing from the head, middle and end of a crowded bucket keeps the rest; erasing a node
// that was never added (a search hit, say) changes nothing.
TEST_F(NodeInternTableTest, ErasedNodesGoAndTheOthersStay) {
    table.Reserve(4000);
    std::vector<OpaqueNodeRef*> nodes;
    for (int i = 0; i < 3000; ++i) {
        nodes.push_back(Make(&folderA, std::to_string(i)));
        table.Insert(nodes.back());
    }
    OwnedNode stranger{OpaqueNodeRef::Make(NodeKind::QueryHit, {}, &folderA)};
    table.Erase(stranger.get());
    for (size_t i = 0; i < nodes.size(); i += 2)
        table.Erase(nodes[i]);
    for (size_t i = 0; i < nodes.size(); ++i)
        EXPECT_EQ(Find(&folderA, nodes[i]->Name()), i % 2 == 0 ? nullptr : nodes[i]) << i;
    size_t left = 0;
    table.ForEach([&](OpaqueNodeRef*) { ++left; });
    EXPECT_EQ(left, 1500u);
    table.Insert(nodes[0]);
    EXPECT_EQ(Find(&folderA, "0"), nodes[0]) << "a node can come back";
}

} // namespace
