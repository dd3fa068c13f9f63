#include "kel/nodes/TKelNode.h"

#include "KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

class TKelNodeTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(TKelNode::InitializeCatalog(), noErr); }

    struct Info {
        StatusCode status;
        NodeSpecies species;
        uint32_t creator;
        uint32_t type;
        std::u16string identifier;
    };

    static Info OriginalInfo(const TKelNode& node, bool askIdentifier) {
        Info info{};
        BCStringRef identifier = nullptr;
        info.status = node.GetOriginalInfo(info.species, info.creator, info.type,
                                           askIdentifier ? &identifier : nullptr);
        if (identifier != nullptr) {
            info.identifier = Chars(TUniString(identifier));
            BCRelease(identifier);
        }
        return info;
    }

    static std::u16string PathString(const std::vector<TUniString>& segments,
                                     const TKelNode& base) {
        TUniString out;
        GetPathNameString(segments, base, out);
        return Chars(out);
    }
};

TEST_F(TKelNodeTest, NetworkHangsUnderTheRootAndIsAlwaysVisible) {
    TKelNode network(TKelNode::GetNetworkNodeRef(), true);
    ASSERT_FALSE(network.IsEmpty());
    EXPECT_EQ(network.GetParent().PeekNodeRef(), TKelNode::GetRootNodeRef());
    EXPECT_TRUE(network.IsVisible());
    EXPECT_EQ(TKelNode::GetBootNode().GetParent().PeekNodeRef(), TKelNode::GetRootNodeRef());
    // The cache is filled once; later calls give the same pointer.
    EXPECT_EQ(TKelNode::GetNetworkNodeRef(), network.PeekNodeRef());
}

TEST_F(TKelNodeTest, CopiesShareOneReferenceAndAssigningTheSameNodeKeepsTheQuery) {
    auto folder = keltest::MakeScratchFolder("copy");
    TKelNode a = NodeAt(folder);
    ASSERT_FALSE(a.IsEmpty());
    TKelNode b = a;
    EXPECT_EQ(a, b);
    b.savedQueryRef = TKelNode::GetRootNodeRef();
    b = a; // same nodeRef: a no-op
    EXPECT_EQ(b.savedQueryRef, TKelNode::GetRootNodeRef());
    TKelNode byId(a.AsItemID());
    EXPECT_EQ(byId, a);
    a.Release();
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_TRUE(b.Validate()) << "the other copies still hold the node";
    EXPECT_TRUE(TKelNode(TUniString()).IsEmpty());
}

TEST_F(TKelNodeTest, SpeciesFollowTheMaskAndTheTree) {
    auto folder = keltest::MakeScratchFolder("species");
    keltest::WriteFile(folder / "file.txt", "x");
    fs::create_directory(folder / "sub");
    fs::create_directory_symlink(folder / "sub", folder / "link");
    TKelNode root(TKelNode::GetRootNodeRef(), true);
    EXPECT_EQ(root.GetSpecies(kNodeSpeciesAll), kNodeSpeciesRoot);
    EXPECT_EQ(root.GetSpecies(kNodeSpeciesFolder), kNodeSpeciesFolder);
    EXPECT_EQ(TKelNode::GetBootNode().GetSpecies(kNodeSpeciesAll), kNodeSpeciesVolume);
    EXPECT_EQ(NodeAt(folder / "file.txt").GetSpecies(kNodeSpeciesAll), kNodeSpeciesFile);
    TKelNode link = NodeAt(folder / "link");
    EXPECT_EQ(link.GetSpecies(kNodeSpeciesAll), kNodeSpeciesAlias);
    // With the alias bit off a link reports what the service says, and the service does not
    // open a link as a container: it counts as a file.
    EXPECT_EQ(link.GetSpecies(kNodeSpeciesAll & ~kNodeSpeciesAlias), kNodeSpeciesFile);
}

TEST_F(TKelNodeTest, OriginalInfoLooksThroughAliases) {
    auto folder = keltest::MakeScratchFolder("info");
    keltest::WriteFile(folder / "notes.txt", "x");
    fs::create_directory(folder / "sub");
    fs::create_directory_symlink(folder / "sub", folder / "folder link");
    fs::create_symlink(folder / "notes.txt", folder / "file link");

    Info root = OriginalInfo(TKelNode(TKelNode::GetRootNodeRef(), true), true);
    EXPECT_EQ(root.status, noErr);
    EXPECT_EQ(root.species, kNodeSpeciesRoot);
    EXPECT_EQ(root.creator, 0u);
    EXPECT_EQ(root.type, 0u);

    Info file = OriginalInfo(NodeAt(folder / "notes.txt"), true);
    EXPECT_EQ(file.species, kNodeSpeciesFile);
    EXPECT_EQ(file.type, NodeCode("TEXT"));
    EXPECT_EQ(file.identifier, u"text/plain");

    Info folderAlias = OriginalInfo(NodeAt(folder / "folder link"), true);
    EXPECT_EQ(folderAlias.status, noErr);
    EXPECT_EQ(folderAlias.species, kNodeSpeciesFolder);
    EXPECT_EQ(folderAlias.creator, NodeCode("host"));
    EXPECT_EQ(folderAlias.type, NodeCode("fldr"));
    EXPECT_EQ(folderAlias.identifier, u"inode/directory");

    Info fileAlias = OriginalInfo(NodeAt(folder / "file link"), true);
    EXPECT_EQ(fileAlias.status, noErr);
    EXPECT_EQ(fileAlias.species, kNodeSpeciesFile);
    EXPECT_EQ(fileAlias.type, NodeCode("TEXT"));
    EXPECT_EQ(fileAlias.identifier, u"text/plain") << "the identifier comes from the original";
}

// Most types have no four-character code; a link to such a file is still a working link.
TEST_F(TKelNodeTest, LinksToFilesWithoutATypeCodeCountAsTheirTarget) {
    auto folder = keltest::MakeScratchFolder("untyped");
    for (const char* name : {"report.odt", "song.flac"}) {
        keltest::WriteFile(folder / name, "x");
        fs::create_symlink(folder / name, folder / (std::string(name) + " link"));
        Info target = OriginalInfo(NodeAt(folder / name), true);
        ASSERT_EQ(target.type, 0u) << name << " has a code after all; pick another type";
        Info link = OriginalInfo(NodeAt(folder / (std::string(name) + " link")), true);
        EXPECT_EQ(link.status, noErr) << name;
        EXPECT_EQ(link.species, kNodeSpeciesFile) << name;
        EXPECT_EQ(link.type, 0u) << name;
        EXPECT_EQ(link.creator, 0u) << name;
    }
}

TEST_F(TKelNodeTest, BrokenAndLoopingLinksFailTheClassification) {
    auto folder = keltest::MakeScratchFolder("broken");
    fs::create_directory(folder / "gone");
    fs::create_directory_symlink(folder / "gone", folder / "was a folder");
    fs::create_symlink(folder / "loop b", folder / "loop a");
    fs::create_symlink(folder / "loop a", folder / "loop b");
    TKelNode wasFolder = NodeAt(folder / "was a folder");
    EXPECT_EQ(OriginalInfo(wasFolder, true).status, noErr);
    fs::remove(folder / "gone");
    NodeSync(NodeAt(folder).PeekNodeRef());
    Info broken = OriginalInfo(wasFolder, true);
    EXPECT_NE(broken.status, noErr) << "a dangling link is no file";
    EXPECT_TRUE(broken.identifier.empty());
    Info loop = OriginalInfo(NodeAt(folder / "loop a"), true);
    EXPECT_NE(loop.status, noErr);
    EXPECT_TRUE(loop.identifier.empty());
}

TEST_F(TKelNodeTest, PathSegmentsRoundTripAwkwardNames) {
    auto folder = keltest::MakeScratchFolder("paths");
    const std::string notUtf8 = "caf\xe9";
    for (const std::string& name : {notUtf8, std::string("a:b"), std::string(255, 'n')}) {
        SCOPED_TRACE(name);
        keltest::WriteFile(folder / name, "x");
        TKelNode node = NodeAt(folder / name);
        ASSERT_FALSE(node.IsEmpty());
        std::vector<TUniString> segments;
        node.GetPathName(segments);
        ASSERT_GE(segments.size(), 2u);
        EXPECT_EQ(segments.front().Length(), 0u) << "an absolute path starts with an empty segment";
        EXPECT_EQ(PathString(segments, TKelNode()), PathText(folder / name));
        EXPECT_EQ(TKelNode(segments, TKelNode()), node);
    }
    EXPECT_NE(Property(NodeAt(folder / notUtf8), "dnam"), u"<error>");
}

TEST_F(TKelNodeTest, PathsDeeperThanTheSystemLimitStillRoundTrip) {
    auto folder = keltest::MakeScratchFolder("deep");
    TKelNode node = NodeAt(folder);
    const std::u16string level(200, u'd');
    for (int i = 0; i < 25; ++i) { // about 5000 characters, past PATH_MAX
        NodeRef created = nullptr;
        ASSERT_EQ(NodeCreateNewContainerInNew(node.PeekNodeRef(), BCIndex(level.size()),
                                              reinterpret_cast<const UniChar*>(level.data()), 0,
                                              &created),
                  noErr);
        node = TKelNode(created, false);
    }
    std::vector<TUniString> segments;
    node.GetPathName(segments);
    TUniString text;
    GetPathNameString(segments, TKelNode(), text);
    EXPECT_GT(text.Length(), uint32_t(PATH_MAX));
    EXPECT_EQ(TKelNode(segments, TKelNode()), node);
}

TEST_F(TKelNodeTest, PathTextFromSegmentsHonoursHomeAndBase) {
    auto folder = keltest::MakeScratchFolder("base");
    fs::create_directory(folder / "docs");
    TKelNode base = NodeAt(folder);
    EXPECT_EQ(PathString({Text(u""), Text(u"usr"), Text(u"bin")}, TKelNode()), u"/usr/bin");
    EXPECT_EQ(PathString({Text(u"~")}, TKelNode()), PathText(keltest::ScratchHome()) + u"/");
    EXPECT_EQ(PathString({Text(u"~no-such-user-here"), Text(u"x")}, TKelNode()), u"/x");
    EXPECT_EQ(PathString({Text(u"docs")}, base), PathText(folder / "docs"));
    EXPECT_EQ(TKelNode({Text(u"docs")}, base), NodeAt(folder / "docs"));
    TKelNode root(TKelNode::GetRootNodeRef(), true);
    std::u16string bootName = Property(TKelNode::GetBootNode(), "pnam");
    EXPECT_EQ(PathString({Text(u""), Text(u"usr")}, root), bootName + u"/usr");
    EXPECT_EQ(TKelNode(std::vector<TUniString>{}, TKelNode()), root) << "no segments: the top";
    EXPECT_EQ(TKelNode::GetVolumesNode().GetParent(), TKelNode::GetBootNode());
}

TEST_F(TKelNodeTest, ChildStartingWithAPrefixIsFoundByTheCollator) {
    auto folder = keltest::MakeScratchFolder("prefix");
    keltest::WriteFile(folder / "alpha.txt", "x");
    fs::create_directory(folder / "Alpine");
    TKelNode node = NodeAt(folder);
    EXPECT_EQ(node.GetChildStartsWith(Text(u"alp"), false, true), NodeAt(folder / "alpha.txt"));
    EXPECT_EQ(node.GetChildStartsWith(Text(u"ALP"), true, false), NodeAt(folder / "Alpine"));
    EXPECT_TRUE(node.GetChildStartsWith(Text(u"ALP"), true, true).IsEmpty());
    EXPECT_TRUE(node.GetChildStartsWith(Text(u"beta"), false, false).IsEmpty());
    EXPECT_FALSE(node.GetChildStartsWith(Text(u""), false, false).IsEmpty());
    EXPECT_TRUE(NodeAt(folder / "alpha.txt").GetChildStartsWith(Text(u""), false, false).IsEmpty());
    TKelNode network = TKelNode::GetBootNode().GetChildStartsWith(Text(u"Netw"), true, false);
    EXPECT_EQ(network.PeekNodeRef(), TKelNode::GetNetworkNodeRef())
        << "the boot level still offers Network, though its listing hides it";
}

TEST_F(TKelNodeTest, VanishedFilesAndUnreadableFoldersFailQuietly) {
    auto folder = keltest::MakeScratchFolder("vanish");
    keltest::WriteFile(folder / "brief", "x");
    TKelNode node = NodeAt(folder / "brief");
    fs::remove(folder / "brief");
    EXPECT_FALSE(node.Validate());
    TUniString kept = Text(u"kept");
    EXPECT_NE(node.GetPropertyAsString(NodeCode("utid"), kept), noErr) << "a gone file has no type";
    EXPECT_EQ(Chars(kept), u"kept") << "a failed read leaves the value alone";

    fs::create_directory(folder / "locked");
    keltest::WriteFile(folder / "locked" / "inside", "x");
    fs::create_directory(folder / "open");
    fs::create_directory(folder / "open" / "inside");
    fs::permissions(folder / "locked", fs::perms::none);
    int failures = keltest::RunUnprivileged(folder, [&] {
        // The open folder shows the check can see anything at all.
        bool seesOpen =
            !NodeAt(folder / "open").GetChildStartsWith(Text(u""), false, false).IsEmpty();
        bool seesLocked =
            !NodeAt(folder / "locked").GetChildStartsWith(Text(u""), false, false).IsEmpty();
        return int(!seesOpen) + int(seesLocked);
    });
    EXPECT_EQ(failures, 0);
    fs::permissions(folder / "locked", fs::perms::owner_all);
}

TEST_F(TKelNodeTest, DescriptorsAndIconsComeFromTheNode) {
    auto folder = keltest::MakeScratchFolder("desc");
    keltest::WriteFile(folder / "a.txt", "x");
    TKelNode node = NodeAt(folder / "a.txt");
    BEDesc desc;
    BEInitializeDesc(&desc);
    ASSERT_EQ(node.GetAsBEDesc(desc, NodeCode("bfrf")), noErr);
    EXPECT_EQ(desc.descriptorType, NodeCode("bfrf"));
    EXPECT_EQ(TKelNode(GetBEDescAsNode(&desc), false), node);
    ASSERT_EQ(node.GetAsBEDesc(desc, NodeCode("bfs ")), noErr) << "replacing existing data";
    EXPECT_EQ(desc.descriptorType, NodeCode("bfs "));
    BEDisposeDesc(&desc);
    BFRef rootRef, bootRef;
    ASSERT_EQ(TKelNode(TKelNode::GetRootNodeRef(), true).GetAsBFRef(rootRef), noErr);
    ASSERT_EQ(TKelNode::GetBootNode().GetAsBFRef(bootRef), noErr);
    EXPECT_EQ(TKelNode(GetBFRefAsNode(&rootRef), false), TKelNode::GetBootNode());
    EXPECT_TRUE(node.CopyBadgedIcon());
    TIcon plain;
    EXPECT_EQ(TKelNode(TKelNode::GetRootNodeRef(), true)
                  .GetPropertyAsIcon(NodeCode("icon"), plain, false),
              noErr);
    EXPECT_TRUE(plain);
}

} // namespace
