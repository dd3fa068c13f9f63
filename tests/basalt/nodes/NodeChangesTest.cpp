#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

StatusCode NewFolder(NodeRef parent, const std::u16string& name, Held& made) {
    NodeRef created = nullptr;
    StatusCode status =
        NodeCreateNewContainerInNew(parent, static_cast<BCIndex>(name.size()),
                                    reinterpret_cast<const UniChar*>(name.data()), 0, &created);
    made = Held(created);
    return status;
}

TEST(NodeChangesTest, CreateFoldersAndDeleteNodes) {
    auto folder = keltest::MakeScratchFolder("changes");
    Held parent = NodeAt(folder);
    Held made;
    ASSERT_EQ(NewFolder(parent.get(), u"untitled folder", made), noErr);
    EXPECT_TRUE(fs::is_directory(folder / "untitled folder"));
    EXPECT_TRUE(NodeIsContainer(made.get()));
    EXPECT_EQ(made.get(), Child(parent.get(), u"untitled folder").get());
    Held again;
    EXPECT_EQ(NewFolder(parent.get(), u"untitled folder", again), dupFNErr);
    EXPECT_EQ(NewFolder(parent.get(), u"a/b", again), bdNamErr);
    EXPECT_EQ(NewFolder(parent.get(), u"..", again), bdNamErr);

    keltest::WriteFile(folder / "untitled folder" / "inside", "x");
    EXPECT_NE(DeleteNode(made.get()), noErr) << "a folder that is not empty stays";
    EXPECT_EQ(DeleteNode(Child(made.get(), u"inside").get()), noErr);
    EXPECT_EQ(DeleteNode(made.get()), noErr);
    EXPECT_FALSE(fs::exists(folder / "untitled folder"));
    EXPECT_EQ(DeleteNode(GetRootNode()), permErr);
    Held boot(GetBootNode());
    EXPECT_EQ(DeleteNode(boot.get()), permErr);
}

TEST(NodeChangesTest, DeletingALinkLeavesItsTarget) {
    auto folder = keltest::MakeScratchFolder("unlink");
    fs::create_directory(folder / "kept");
    fs::create_directory_symlink("kept", folder / "link");
    Held parent = NodeAt(folder);
    EXPECT_EQ(DeleteNode(Child(parent.get(), u"link").get()), noErr);
    EXPECT_TRUE(fs::is_directory(folder / "kept"));
}

} // namespace
