#include "kel/nodes/TNodePathHelper.h"

#include "KelNodeTesting.h"
#include "basalt/nodes/NodeVolumes.h"
#include "kel/foundation/TObjectRef.h"
#include "kel/nodes/NodeRefOperations.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

class TNodePathHelperTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(TKelNode::InitializeCatalog(), noErr); }

    static TStringRef String(const std::u16string& text) {
        return TStringRef(
            BCStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(text.data()),
                                         BCIndex(text.size())),
            false);
    }

    static TObjectRef URLFor(const fs::path& path, bool directory) {
        return TObjectRef(BCURLCreateWithFileSystemPath(nullptr,
                                                        String(PathText(path)).AsBCStringRef(),
                                                        kBCURLPOSIXPathStyle, directory),
                          false);
    }

    static std::u16string URLText(BCURLRef url) {
        return url == nullptr ? u"<null>" : Chars(TUniString(BCURLGetString(url)));
    }

    // The leaf the text leads to, or an empty node.
    static TKelNode Leaf(const std::u16string& text) {
        TNodePathHelper helper(String(text).AsBCStringRef());
        return helper.IsComplete() && !helper.NodePath().empty() ? helper.NodePath().back()
                                                                 : TKelNode();
    }

    static std::u16string BootName() { return Property(TKelNode::GetBootNode(), "pnam"); }
};

TEST_F(TNodePathHelperTest, SlashesAloneLeadToTheBootVolume) {
    for (const char16_t* text : {u"/", u"///"}) {
        TNodePathHelper helper(String(text).AsBCStringRef());
        ASSERT_TRUE(helper.IsComplete());
        ASSERT_EQ(helper.NodePath().size(), 2u);
        EXPECT_TRUE(helper.NodePath()[0].IsRoot());
        EXPECT_EQ(helper.NodePath()[1], TKelNode::GetBootNode());
    }
    TNodePathHelper empty(String(u"").AsBCStringRef());
    EXPECT_TRUE(empty.IsComplete());
    EXPECT_TRUE(empty.NodePath().empty());
    EXPECT_EQ(empty.CopyURL(), nullptr) << "an empty path has nothing to start from";
}

TEST_F(TNodePathHelperTest, DoubledAndTrailingSlashesChangeNothing) {
    auto folder = keltest::MakeScratchFolder("slashes");
    fs::create_directories(folder / "a" / "b");
    std::u16string clean = PathText(folder / "a" / "b");
    std::u16string messy = PathText(folder) + u"//a///b/";
    TKelNode leaf = Leaf(clean);
    ASSERT_FALSE(leaf.IsEmpty());
    EXPECT_EQ(leaf, NodeAt(folder / "a" / "b"));
    EXPECT_EQ(Leaf(messy), leaf);
    EXPECT_EQ(Leaf(u"/" + BootName() + clean), leaf) << "the boot volume's name may lead";
}

TEST_F(TNodePathHelperTest, ColonsAndUndecodableBytesRoundTripThroughText) {
    auto folder = keltest::MakeScratchFolder("names");
    for (const std::string& name :
         {std::string("a:b"), std::string("caf\xe9"), std::string(255, 'L')}) {
        SCOPED_TRACE(name);
        keltest::WriteFile(folder / name, "x");
        TKelNode node = NodeAt(folder / name);
        ASSERT_FALSE(node.IsEmpty());
        EXPECT_EQ(Leaf(PathText(folder / name)), node);
        TNodePathHelper fromNode(node.PeekNodeRef());
        ASSERT_TRUE(fromNode.IsComplete());
        EXPECT_EQ(fromNode.NodePath().back(), node);
        BCURLRef url = fromNode.CopyURL();
        TObjectRef held(url, false);
        EXPECT_EQ(URLText(url), URLText(static_cast<BCURLRef>(URLFor(folder / name, false).Get())));
        TNodePathHelper fromURL(url);
        ASSERT_TRUE(fromURL.IsComplete());
        EXPECT_EQ(fromURL.NodePath().back(), node);
    }
}

TEST_F(TNodePathHelperTest, HomeTextsStartAtTheHomeFolder) {
    TKelNode home = NodeAt(keltest::ScratchHome());
    ASSERT_FALSE(home.IsEmpty());
    EXPECT_EQ(Leaf(u"~"), home);
    EXPECT_EQ(Leaf(u"~/"), home);
    fs::create_directory(keltest::ScratchHome() / "Notes");
    EXPECT_EQ(Leaf(u"~/Notes"), NodeAt(keltest::ScratchHome() / "Notes"));
    TNodePathHelper stranger(String(u"~no-such-user-here/x").AsBCStringRef());
    EXPECT_FALSE(stranger.IsComplete());
    EXPECT_TRUE(stranger.NodePath().empty());
}

TEST_F(TNodePathHelperTest, TextsThatLeadNowhereStayFailedUntilTheTextChanges) {
    auto folder = keltest::MakeScratchFolder("nowhere");
    EXPECT_TRUE(Leaf(u"relative/text").IsEmpty()) << "no base: a relative text never completes";
    std::u16string later = PathText(folder / "later");
    TNodePathHelper helper(String(later).AsBCStringRef());
    EXPECT_FALSE(helper.IsComplete());
    fs::create_directory(folder / "later");
    helper.SetTextPath(String(later).AsBCStringRef());
    EXPECT_FALSE(helper.IsComplete()) << "the same text is not looked up again";
    EXPECT_EQ(helper.CopyURL(), nullptr);
    helper.SetTextPath(String(later + u"/").AsBCStringRef());
    EXPECT_TRUE(helper.IsComplete());

    std::u16string rootName = Property(TKelNode(TKelNode::GetRootNodeRef(), true), "pnam");
    TNodePathHelper top(String(u"/" + rootName + u"/whatever/else").AsBCStringRef());
    ASSERT_TRUE(top.IsComplete()) << "the root's own name stops the walk at the root";
    ASSERT_EQ(top.NodePath().size(), 2u);
    EXPECT_TRUE(top.NodePath()[1].IsRoot());
}

TEST_F(TNodePathHelperTest, VolumesFolderAndVolumeNameLeadToTheSameVolume) {
    auto folder = keltest::MakeScratchFolder("volumes");
    std::u16string viaVolumes = u"/Volumes/" + BootName() + PathText(folder);
    TNodePathHelper text(String(viaVolumes).AsBCStringRef());
    ASSERT_TRUE(text.IsComplete());
    EXPECT_EQ(text.NodePath()[1], TKelNode::GetVolumesNode()) << "text keeps the folder";
    EXPECT_EQ(text.NodePath().back(), NodeAt(folder));
    EXPECT_EQ(Leaf(u"/" + BootName() + PathText(folder)), NodeAt(folder));

    TObjectRef url(BCURLCreateWithFileSystemPath(nullptr, String(viaVolumes).AsBCStringRef(),
                                                 kBCURLPOSIXPathStyle, true),
                   false);
    TNodePathHelper collapsed(static_cast<BCURLRef>(url.Get()));
    ASSERT_TRUE(collapsed.IsComplete());
    EXPECT_EQ(collapsed.NodePath()[1], TKelNode::GetBootNode());
    EXPECT_EQ(collapsed.NodePath().back(), NodeAt(folder));
    for (const TKelNode& node : collapsed.NodePath()) {
        EXPECT_FALSE(NodeIsAlias(node.PeekNodeRef())) << "no volume entry left in the path";
    }
}

// A URL that ends at a volume's entry in the volumes folder collapses to the volume itself.
TEST_F(TNodePathHelperTest, AURLEndingAtAVolumeEntryCollapsesToTheVolume) {
    TObjectRef url(BCURLCreateWithFileSystemPath(nullptr,
                                                 String(u"/Volumes/" + BootName()).AsBCStringRef(),
                                                 kBCURLPOSIXPathStyle, true),
                   false);
    TNodePathHelper helper(static_cast<BCURLRef>(url.Get()));
    ASSERT_TRUE(helper.IsComplete());
    ASSERT_EQ(helper.NodePath().size(), 2u);
    EXPECT_TRUE(helper.NodePath()[0].IsRoot());
    EXPECT_EQ(helper.NodePath()[1], TKelNode::GetBootNode());
}

TEST_F(TNodePathHelperTest, DoubledLeadingAndTrailingSlashesChangeNothing) {
    TKelNode usrBin = Leaf(u"/usr/bin");
    ASSERT_FALSE(usrBin.IsEmpty());
    for (const char16_t* text : {u"//usr/bin", u"///usr//bin/", u"/usr/bin//"}) {
        EXPECT_EQ(Leaf(text), usrBin) << basalt::files::EncodeName(text);
    }
}

TEST_F(TNodePathHelperTest, NetworkIsReachedFromTheTop) {
    TKelNode network(TKelNode::GetNetworkNodeRef(), true);
    ASSERT_FALSE(network.IsEmpty());
    EXPECT_EQ(Leaf(u"/Network"), network);
    EXPECT_EQ(Leaf(u"/Network/"), network);
    EXPECT_TRUE(Leaf(u"/Network/no such server").IsEmpty());
}

// A volume whose name matches a folder of "/" (here "USR", against "usr", so even by case
// alone) must not capture paths that exist from "/"; it is still reached by its own name and
// through the volumes folder. The volume is a tmpfs mounted under /mnt in a mount namespace
// of a child process, so nobody else sees it.
TEST_F(TNodePathHelperTest, FoldersOfTheBootVolumeWinOverVolumesOfTheSameName) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "mounting a volume needs root";
    }
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (unshare(CLONE_NEWNS) != 0 ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("kel-test", "/mnt", "tmpfs", 0, nullptr) != 0 || mkdir("/mnt/USR", 0755) != 0 ||
            mount("kel-test", "/mnt/USR", "tmpfs", 0, nullptr) != 0) {
            _exit(125);
        }
        basalt::nodes::RefreshVolumes();
        TKelNode volume = NodeAt("/mnt/USR");
        bool isVolume = NodeIsVolume(volume.PeekNodeRef());
        bool folderWins = Leaf(u"/usr/bin") == NodeAt("/usr/bin");
        bool byName = Leaf(u"/USR") == volume;
        TKelNode entry = Leaf(u"/Volumes/USR"), entered;
        bool byVolumes = entry.FollowAlias(false, entered) == noErr && entered == volume;
        _exit(isVolume && folderWins && byName && byVolumes ? 0 : 1 + !folderWins);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 125) {
        GTEST_SKIP() << "no mount namespace here";
    }
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: the volume is not reached; 2: it captured /usr";
}

TEST_F(TNodePathHelperTest, NodePathsGiveTextAndURLs) {
    auto folder = keltest::MakeScratchFolder("nodes");
    fs::create_directory(folder / "sub");
    TNodePathHelper fromNode(NodeAt(folder / "sub").PeekNodeRef());
    ASSERT_TRUE(fromNode.IsComplete());
    TKelNodeArray nodes = fromNode.NodePath();
    TNodePathHelper fromNodes(nodes);
    EXPECT_EQ(fromNodes.GetState(), TNodePathHelper::kInStep);
    TObjectRef url(fromNodes.CopyURL(), false);
    EXPECT_EQ(URLText(static_cast<BCURLRef>(url.Get())),
              URLText(static_cast<BCURLRef>(URLFor(folder / "sub", true).Get())));
    TNodePathHelper root(TKelNode::GetRootNodeRef());
    EXPECT_EQ(Chars(TUniString(root.TextPath())), u"/");
    TObjectRef rootURL(root.CopyURL(), false);
    EXPECT_EQ(URLText(static_cast<BCURLRef>(rootURL.Get())), u"file:///");
    TNodePathHelper none((TKelNodeArray()));
    EXPECT_EQ(none.GetState(), TNodePathHelper::kUnresolved);
}

} // namespace
