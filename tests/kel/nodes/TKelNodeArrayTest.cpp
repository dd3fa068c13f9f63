#include "kel/nodes/TKelNodeArray.h"

#include "KelNodeTesting.h"
#include "kel/nodes/TKelNodeContainerIterator.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

class TKelNodeArrayTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(TKelNode::InitializeCatalog(), noErr); }

    static TKelNodeArray ChildrenOf(const TKelNode& container) {
        TKelNodeArray children;
        TKelNodeContainerIterator iterator(container, false);
        EXPECT_TRUE(iterator.IsValid());
        for (TKelNode child = iterator.First(); !child.IsEmpty(); iterator.Next(child)) {
            children.push_back(child);
        }
        return children;
    }

    static std::vector<std::u16string> Names(const TKelNodeArray& nodes) {
        std::vector<std::u16string> names;
        for (const TKelNode& node : nodes) {
            names.push_back(Property(node, "pnam"));
        }
        return names;
    }
};

TEST_F(TKelNodeArrayTest, NetworkIsLiftedFromTheBootVolumeToTheTop) {
    TKelNode root(TKelNode::GetRootNodeRef(), true);
    TKelNodeArray top = ChildrenOf(root);
    ASSERT_FALSE(top.empty());
    EXPECT_EQ(top.front().PeekNodeRef(), TKelNode::GetNetworkNodeRef());
    EXPECT_NE(std::find(top.begin(), top.end(), TKelNode::GetBootNode()), top.end());
    TKelNodeArray bootChildren = ChildrenOf(TKelNode::GetBootNode());
    TKelNode network(TKelNode::GetNetworkNodeRef(), true);
    EXPECT_EQ(std::find(bootChildren.begin(), bootChildren.end(), network), bootChildren.end());
    EXPECT_FALSE(bootChildren.empty());
}

TEST_F(TKelNodeArrayTest, IteratorListsAwkwardNamesAndEndsOnAnEmptyNode) {
    auto folder = keltest::MakeScratchFolder("iterate");
    keltest::WriteFile(folder / "caf\xe9", "x");
    keltest::WriteFile(folder / "a:b", "x");
    keltest::WriteFile(folder / ".hidden", "a:b\n");
    TKelNodeArray children = ChildrenOf(NodeAt(folder));
    ASSERT_EQ(children.size(), 3u);
    for (const TKelNode& child : children) {
        if (Property(child, "pnam") == u"a:b") {
            EXPECT_FALSE(child.IsVisible()) << "listed in the folder's .hidden";
        }
    }
    EXPECT_NE(std::find(children.begin(), children.end(), NodeAt(folder / "caf\xe9")),
              children.end())
        << "a name that is not UTF-8 is listed and found again as the same node";
    TKelNodeContainerIterator empty(NodeAt(keltest::MakeScratchFolder("empty")), false);
    EXPECT_TRUE(empty.First().IsEmpty());
    TKelNodeContainerIterator onFile(NodeAt(folder / "a:b"), false);
    EXPECT_FALSE(onFile.IsValid());
}

TEST_F(TKelNodeArrayTest, RemovingTakesTheFirstOccurrenceAndItemsCountEachNode) {
    auto folder = keltest::MakeScratchFolder("remove");
    keltest::WriteFile(folder / "a", "x");
    keltest::WriteFile(folder / "b", "x");
    TKelNode a = NodeAt(folder / "a"), b = NodeAt(folder / "b");
    unsigned long items[] = {a.AsItemID(), b.AsItemID(), a.AsItemID(), 0};
    TKelNodeArray nodes;
    nodes.CopyItems(4, items);
    ASSERT_EQ(nodes.size(), 4u);
    EXPECT_TRUE(nodes[3].IsEmpty()) << "a zero id is an empty node";
    nodes.pop_back();
    nodes.RemoveNode(a);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0], b);
    EXPECT_EQ(nodes[1], a);
    nodes.RemoveNode(NodeAt(folder));
    EXPECT_EQ(nodes.size(), 2u);
    OpaqueNodeRef** refs = nodes.MallocItems();
    EXPECT_EQ(refs[1], a.PeekNodeRef());
    std::free(refs);
    a = TKelNode();
    nodes.CopyItems(0, nullptr);
    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(NodeAt(folder / "a").Validate());
}

TEST_F(TKelNodeArrayTest, SortingByDisplayNameFallsBackToTheFileName) {
    auto folder = keltest::MakeScratchFolder("sort");
    // Both show as "café": one name is Latin-1 bytes, which are read legibly for display.
    for (const char* name : {"b", "C", "a", "caf\xc3\xa9", "caf\xe9"}) {
        keltest::WriteFile(folder / name, "x");
    }
    TKelNode latin = NodeAt(folder / "caf\xe9"), utf8 = NodeAt(folder / "caf\xc3\xa9");
    ASSERT_EQ(Property(latin, "dnam"), Property(utf8, "dnam"));
    NodeStringPropertyLessThan byDisplay(NodeCode("dnam"));
    EXPECT_NE(byDisplay(latin, utf8), byDisplay(utf8, latin)) << "a stable order for twins";
    NodeStringPropertyLessThan byType(NodeCode("utid"));
    EXPECT_FALSE(byType(latin, utf8));
    EXPECT_FALSE(byType(utf8, latin));

    TKelNodeArray nodes = ChildrenOf(NodeAt(folder));
    nodes.Sort(NodeCode("dnam"));
    std::vector<std::u16string> names = Names(nodes);
    names.resize(3);
    EXPECT_EQ(names, (std::vector<std::u16string>{u"a", u"b", u"C"}));
}

// The leaf comparison answers "smaller" both ways for any two different names; sorting with
// it must stay within the range and keep every path, and paths to equal names end up together.
TEST_F(TKelNodeArrayTest, PathsSortByLeafWithoutAnOrderingAndGroupEqualNames) {
    auto folder = keltest::MakeScratchFolder("leaves");
    std::vector<std::string> leaves;
    for (int i = 0; i < 40; ++i) {
        leaves.push_back("n" + std::to_string(i % 7));
        keltest::WriteFile(folder / ("f" + std::to_string(i)) / leaves.back(), "x");
    }
    std::vector<TKelNodeArray> storage(leaves.size());
    std::vector<TKelNodeArray*> paths;
    for (size_t i = 0; i < leaves.size(); ++i) {
        storage[i].push_back(NodeAt(folder / ("f" + std::to_string(i)) / leaves[i]));
        paths.push_back(&storage[i]);
    }
    TKelNodePathLeafStringPropertyLess less(NodeCode("dnam"));
    EXPECT_TRUE(less(paths[0], paths[1]) && less(paths[1], paths[0])) << "kept as it answers";
    EXPECT_FALSE(less(paths[0], paths[7]));

    SortPathsByLeaf(paths, NodeCode("dnam"));
    ASSERT_EQ(paths.size(), leaves.size());
    std::vector<std::u16string> sorted;
    for (TKelNodeArray* path : paths) {
        sorted.push_back(Property(path->back(), "dnam"));
    }
    std::vector<std::u16string> groups;
    for (const std::u16string& name : sorted) {
        if (groups.empty() || groups.back() != name) {
            groups.push_back(name);
        }
    }
    EXPECT_EQ(groups.size(), 7u) << "each name forms one run";
    std::sort(paths.begin(), paths.end());
    EXPECT_EQ(std::unique(paths.begin(), paths.end()), paths.end()) << "no path lost or doubled";
}

} // namespace
