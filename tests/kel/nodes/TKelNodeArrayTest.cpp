#include "kel/nodes/TKelNodeArray.h"

#include "KelNodeTesting.h"
#include "kel/nodes/TKelNodeContainerIterator.h"
#include "tests/support/TestEnvironment.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/xattr.h>

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

TEST_F(TKelNodeArrayTest, RemovingTakesTheFirstOccurrenceOnly) {
    auto folder = keltest::MakeScratchFolder("remove");
    keltest::WriteFile(folder / "a", "x");
    keltest::WriteFile(folder / "b", "x");
    TKelNode a = NodeAt(folder / "a"), b = NodeAt(folder / "b");
    TKelNodeArray nodes;
    nodes.assign({a, b, a});
    nodes.RemoveNode(a);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0], b);
    EXPECT_EQ(nodes[1], a);
    nodes.RemoveNode(a);
    EXPECT_EQ(nodes.size(), 1u);
    nodes.RemoveNode(NodeAt(folder));
    EXPECT_EQ(nodes.size(), 1u);

    TKelNodeArray copy(nodes);
    copy = copy; // NOLINT: a self-copy changes nothing
    EXPECT_EQ(copy.size(), nodes.size());
    OpaqueNodeRef** items = copy.MallocItems();
    EXPECT_EQ(items[0], b.PeekNodeRef());
    std::free(items);
    std::free(TKelNodeArray().MallocItems());
}

TEST_F(TKelNodeArrayTest, CopyItemsCountsEachIdAndKeepsZeroAsEmpty) {
    auto folder = keltest::MakeScratchFolder("items");
    TKelNode node = NodeAt(folder);
    unsigned long items[] = {node.AsItemID(), 0};
    TKelNodeArray nodes;
    nodes.CopyItems(2, items);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0], node);
    EXPECT_TRUE(nodes[1].IsEmpty());
    nodes.CopyItems(0, nullptr);
    EXPECT_TRUE(nodes.empty());
    node = TKelNode();
    EXPECT_TRUE(NodeAt(folder).Validate());
}

TEST_F(TKelNodeArrayTest, SortingByDisplayNameFallsBackToTheFileName) {
    auto folder = keltest::MakeScratchFolder("sort");
    for (const char* name : {"b", "C", "a", "report.txt", "report.txt.txt"}) {
        keltest::WriteFile(folder / name, "x");
    }
    TKelNodeArray nodes = ChildrenOf(NodeAt(folder));
    nodes.Sort(NodeCode("pnam"));
    EXPECT_EQ(Names(nodes),
              (std::vector<std::u16string>{u"a", u"b", u"C", u"report.txt", u"report.txt.txt"}));
    // Both show as "report" once their extensions are hidden; only the file name tells them apart.
    for (const char* name : {"report.txt", "report.txt.txt"}) {
        fs::path path = folder / name;
        setxattr(path.c_str(), "user.kel.hide-extension", "1", 1, 0);
    }
    NodeSync(NodeAt(folder).PeekNodeRef());
    TKelNode one = NodeAt(folder / "report.txt"), two = NodeAt(folder / "report.txt.txt");
    if (Property(one, "dnam") != Property(two, "dnam")) {
        GTEST_SKIP() << "extended attributes are not available here";
    }
    NodeStringPropertyLessThan byDisplay(NodeCode("dnam"));
    EXPECT_TRUE(byDisplay(one, two));
    EXPECT_FALSE(byDisplay(two, one));
    NodeStringPropertyLessThan byType(NodeCode("utid"));
    EXPECT_FALSE(byType(one, two));
    EXPECT_FALSE(byType(two, one));
}

} // namespace
