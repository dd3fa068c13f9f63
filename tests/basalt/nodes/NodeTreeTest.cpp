#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

constexpr FourCharCode Code(const char (&c)[5]) {
    return NodeCode(c);
}

FourCharCode AliasType(NodeRef node, StatusCode* status) {
    FourCharCode type = 0;
    *status = GetNodePropertyAsFourCharCode(node, Code("asty"), &type, 0);
    return type;
}

TEST(NodeTreeTest, ParentsFollowTheTreeThePersonSees) {
    Held boot(GetBootNode());
    EXPECT_EQ(Held(GetNodeParent(boot.get())).get(), GetRootNode());
    EXPECT_EQ(GetNodeParent(GetRootNode()), nullptr);
    Held network = Child(boot.get(), u"Network");
    ASSERT_TRUE(network);
    EXPECT_EQ(Held(GetNodeParent(network.get())).get(), boot.get());
    auto folder = keltest::MakeScratchFolder("parent");
    Held node = NodeAt(folder);
    Held up(GetNodeParent(node.get()));
    EXPECT_EQ(up.get(), NodeAt(folder.parent_path()).get());
}

TEST(NodeTreeTest, ChildLookupFollowsTheFileSystemsCaseRule) {
    auto folder = keltest::MakeScratchFolder("case");
    keltest::WriteFile(folder / "Readme", "x");
    Held parent = NodeAt(folder);
    uint32_t hint = 0;
    ASSERT_EQ(NodeGetNameSyntaxHint(parent.get(), &hint), noErr);
    EXPECT_NE(hint, 0u) << "the scratch folder is on a case-sensitive file system";
    StatusCode status = noErr;
    EXPECT_TRUE(Child(parent.get(), u"Readme", &status));
    EXPECT_FALSE(Child(parent.get(), u"README", &status));
    EXPECT_EQ(status, fnfErr);
    Boolean has = true;
    EXPECT_EQ(NodeHasChildNew(parent.get(), 6, reinterpret_cast<const UniChar*>(u"README"), &has),
              noErr);
    EXPECT_FALSE(has);
    Child(parent.get(), u"a/b", &status);
    EXPECT_EQ(status, bdNamErr);
    Child(parent.get(), std::u16string(256, u'n'), &status);
    EXPECT_EQ(status, bdNamErr);
}

// A folder that folds case, where the file system offers it (ext4 with the casefold feature).
TEST(NodeTreeTest, CaseFoldingFolderFindsTheRealName) {
    auto folder = keltest::MakeScratchFolder("fold") / "folding";
    fs::create_directory(folder);
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    int flags = 0;
    bool folds = fd >= 0 && ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0 &&
                 ::ioctl(fd, FS_IOC_SETFLAGS, &(flags |= FS_CASEFOLD_FL)) == 0;
    if (fd >= 0)
        ::close(fd);
    if (!folds)
        GTEST_SKIP() << "no file system here folds case for a folder";
    keltest::WriteFile(folder / "Readme", "x");
    Held parent = NodeAt(folder);
    uint32_t hint = 1;
    ASSERT_EQ(NodeGetNameSyntaxHint(parent.get(), &hint), noErr);
    EXPECT_EQ(hint, 0u);
    Held found = Child(parent.get(), u"README");
    ASSERT_TRUE(found);
    EXPECT_EQ(StringProperty(found.get(), "pnam"), u"Readme");
}

TEST(NodeTreeTest, AliasesResolveOneStepOrWholeChainAndReportLoops) {
    auto folder = keltest::MakeScratchFolder("alias");
    fs::create_directory(folder / "target");
    keltest::WriteFile(folder / "photo.png", "x");
    fs::create_directory_symlink("target", folder / "link1");
    fs::create_symlink(folder / "link1", folder / "link2");
    fs::create_symlink("photo.png", folder / "photo link");
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("loopB", folder / "loopA");
    fs::create_symlink("loopA", folder / "loopB");
    Held parent = NodeAt(folder);
    Held link2 = Child(parent.get(), u"link2");
    Held link1 = Child(parent.get(), u"link1");
    Held target = Child(parent.get(), u"target");
    ASSERT_TRUE(NodeIsAlias(link2.get()));
    EXPECT_FALSE(NodeIsContainer(link2.get()));

    NodeRef out = nullptr;
    ASSERT_EQ(NodeGetOriginal(link2.get(), false, &out), noErr);
    EXPECT_EQ(Held(out).get(), link1.get());
    ASSERT_EQ(NodeFollowAlias(link2.get(), false, &out), noErr);
    EXPECT_EQ(Held(out).get(), target.get());
    ASSERT_EQ(NodeGetOriginal(target.get(), false, &out), noErr) << "no alias: itself";
    EXPECT_EQ(Held(out).get(), target.get());

    StatusCode status = noErr;
    EXPECT_EQ(AliasType(link2.get(), &status), Code("fdrp"));
    EXPECT_EQ(AliasType(Child(parent.get(), u"photo link").get(), &status), Code("PNGf"));
    Held dangling = Child(parent.get(), u"dangling");
    EXPECT_EQ(NodeFollowAlias(dangling.get(), false, &out), fnfErr);
    FourCharCode preset = Code("keep");
    EXPECT_EQ(GetNodePropertyAsFourCharCode(dangling.get(), Code("asty"), &preset, 0), fnfErr);
    EXPECT_EQ(preset, Code("keep"));
    EXPECT_EQ(NodeFollowAlias(Child(parent.get(), u"loopA").get(), false, &out), kNodeAliasLoopErr);
}

TEST(NodeTreeTest, PackagesApplicationsAndVolumes) {
    auto folder = keltest::MakeScratchFolder("kinds");
    fs::create_directory(folder / "Tool.app");
    fs::create_directory(folder / "Tool.AppDir");
    keltest::WriteFile(folder / "editor.desktop", "[Desktop Entry]\n");
    keltest::WriteFile(folder / "fake.app", "a file, not a package");
    Held parent = NodeAt(folder);
    EXPECT_TRUE(NodeIsPackage(Child(parent.get(), u"Tool.app").get()));
    EXPECT_FALSE(NodeIsPackage(Child(parent.get(), u"fake.app").get()));
    EXPECT_TRUE(NodeIsApplication(Child(parent.get(), u"Tool.AppDir").get()));
    EXPECT_TRUE(NodeIsApplication(Child(parent.get(), u"editor.desktop").get()));
    EXPECT_EQ(StringProperty(Child(parent.get(), u"Tool.app").get(), "utid"),
              u"inode/x-kel-package");
    Held boot(GetBootNode());
    EXPECT_TRUE(NodeIsVolume(boot.get()));
    EXPECT_TRUE(VolumeIsLocal(boot.get()));
    EXPECT_FALSE(NodeIsVolume(parent.get()));
    EXPECT_EQ(VolumeEject(boot.get()), paramErr);
}

// A name reused by another kind of object: the node must follow, after a change event, a
// validation or a fresh look-up.
TEST(NodeTreeTest, AReusedNameTakesTheKindOfItsNewObject) {
    auto folder = keltest::MakeScratchFolder("reuse");
    fs::create_directory(folder / "x");
    Held parent = NodeAt(folder);
    Held x = Child(parent.get(), u"x");
    ASSERT_TRUE(NodeIsContainer(x.get()));
    fs::remove(folder / "x");
    keltest::WriteFile(folder / "x", "now a file");
    EXPECT_TRUE(NodeValidate(x.get()));
    EXPECT_FALSE(NodeIsContainer(x.get()));
    EXPECT_EQ(StringProperty(x.get(), "utid"), u"application/octet-stream");

    fs::remove(folder / "x");
    fs::create_directory(folder / "x");
    Held again = Child(parent.get(), u"x");
    EXPECT_EQ(again.get(), x.get());
    EXPECT_TRUE(NodeIsContainer(again.get())) << "a look-up sees the folder again";
}

// The entries of the volumes folder open onto their volumes, and the Network node, filed under
// the boot volume, is found by name under the root as well, where it is shown.
TEST(NodeTreeTest, VolumeEntriesAreContainersAndNetworkIsFoundUnderTheRoot) {
    Held boot(GetBootNode());
    Held volumes = Child(boot.get(), u"Volumes");
    std::vector<Held> entries = Children(volumes.get());
    ASSERT_FALSE(entries.empty());
    EXPECT_TRUE(NodeIsContainer(entries[0].get()));
    EXPECT_TRUE(NodeIsAlias(entries[0].get()));
    StatusCode status = fnfErr;
    Held usr = Child(entries[0].get(), u"usr", &status);
    EXPECT_EQ(status, noErr);
    EXPECT_EQ(usr.get(), Child(boot.get(), u"usr").get());

    Held network = Child(GetRootNode(), u"Network", &status);
    EXPECT_EQ(status, noErr);
    EXPECT_EQ(network.get(), Child(boot.get(), u"Network").get());
}

} // namespace
