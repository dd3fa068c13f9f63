#include "kel/nodes/NodeRefOperations.h"

#include "KelNodeTesting.h"
#include "basalt/files/BFFindFolder.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

class NodeRefOperationsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(TKelNode::InitializeCatalog(), noErr); }

    static TKelNode ChildOf(OpaqueNodeRef* node, const char* name) {
        TStringRef text(BCStringCreateWithCString(nullptr, name, kBCStringEncodingUTF8), false);
        return TKelNode(NodeRefOps::CopyChildWithName(node, text.AsBCStringRef()), false);
    }
};

TEST_F(NodeRefOperationsTest, NetworkIsNoChildOfTheBootVolumeButHangsUnderTheRoot) {
    EXPECT_TRUE(ChildOf(NodeRefOps::BootNode(), "Network").IsEmpty());
    OpaqueNodeRef* network = NodeRefOps::NetworkNode();
    ASSERT_NE(network, nullptr);
    TKelNode parent(NodeRefOps::CopyParent(network), false);
    EXPECT_TRUE(parent.IsRoot());
    EXPECT_EQ(NodeRefOps::PrivateNode(), nullptr) << "this system has no private folder";
}

TEST_F(NodeRefOperationsTest, NamesCompareByTheFileSystemsRuleForCase) {
    auto folder = keltest::MakeScratchFolder("names");
    keltest::WriteFile(folder / "Readme", "x");
    TKelNode node = NodeAt(folder);
    EXPECT_EQ(NodeRefOps::NameSyntaxClass(node.PeekNodeRef()), 1u);
    EXPECT_NE(
        NodeRefOps::CompareNamesInContext(node.PeekNodeRef(), BCSTR("readme"), BCSTR("Readme")), 0);
    EXPECT_FALSE(ChildOf(node.PeekNodeRef(), "Readme").IsEmpty());
    EXPECT_TRUE(ChildOf(node.PeekNodeRef(), "README").IsEmpty());
}

TEST_F(NodeRefOperationsTest, NamesURLsAndSpecialFolders) {
    auto folder = keltest::MakeScratchFolder("special");
    keltest::WriteFile(folder / "a:b", "x");
    TKelNode node = NodeAt(folder / "a:b");
    TStringRef name(NodeRefOps::CopyName(node.PeekNodeRef(), NodeRefOps::kNameWithColons), false);
    EXPECT_EQ(Chars(TUniString(name.AsBCStringRef())), u"a:b");
    TObjectRef url(NodeRefOps::CopyURL(node.PeekNodeRef()), false);
    ASSERT_FALSE(url.IsNil());
    EXPECT_EQ(TKelNode(GetURLAsNode(static_cast<BCURLRef>(url.Get())), false), node);

    TKelNode desktop(KelCopyDesktopNode(), false);
    EXPECT_EQ(desktop, NodeAt(keltest::ScratchHome() / "Desktop"));
    TKelNode documents;
    EXPECT_EQ(TKelNode::FindContainer(kBFUserDomain, NodeCode("docs"), true, documents), noErr);
    EXPECT_FALSE(documents.IsEmpty());
    TKelNode untouched = documents;
    EXPECT_NE(TKelNode::FindContainer(kBFUserDomain, NodeCode("zzzz"), false, untouched), noErr);
    EXPECT_EQ(untouched, documents) << "a failed lookup leaves out alone";

    RetainedMutableRef<OpaqueNodeRef> held = node.PeekNodeRef();
    TKelNode fromHolder(held);
    node.Release();
    EXPECT_TRUE(fromHolder.Validate()) << "the holder and the value each count the node";

    std::u16string urlText = Chars(TUniString(BCURLGetString(static_cast<BCURLRef>(url.Get()))));
    EXPECT_EQ(TKelNode(Text(urlText)), fromHolder);
}

} // namespace
