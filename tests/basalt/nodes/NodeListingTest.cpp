#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

bool Contains(const std::vector<std::u16string>& names, const std::u16string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(NodeListingTest, ChildrenWithKindsAndVisibility) {
    auto folder = keltest::MakeScratchFolder("listing");
    keltest::WriteFile(folder / "b.txt", "x");
    keltest::WriteFile(folder / "a.txt", "x");
    keltest::WriteFile(folder / ".dotfile", "x");
    keltest::WriteFile(folder / "listed-hidden", "x");
    keltest::WriteFile(folder / ".hidden", "listed-hidden\n\nno-such-file\n");
    fs::create_directory(folder / "Folder");

    Held parent = NodeAt(folder);
    std::vector<Held> children = Children(parent.get());
    // The service lists in the file system's order; sorting is the browser's business.
    std::sort(children.begin(), children.end(), [](const Held& a, const Held& b) {
        return StringProperty(a.get(), "pnam") < StringProperty(b.get(), "pnam");
    });
    std::vector<std::u16string> names;
    for (const Held& child : children)
        names.push_back(StringProperty(child.get(), "pnam"));
    EXPECT_EQ(names, (std::vector<std::u16string>{u".dotfile", u".hidden", u"Folder", u"a.txt",
                                                  u"b.txt", u"listed-hidden"}));
    std::vector<bool> visible, containers;
    for (const Held& child : children) {
        visible.push_back(NodeIsVisible(child.get()));
        containers.push_back(NodeIsContainer(child.get()));
    }
    EXPECT_EQ(visible, (std::vector<bool>{false, false, true, true, true, false}));
    EXPECT_EQ(containers, (std::vector<bool>{false, false, true, false, false, false}));

    BCIndex count = 0;
    ASSERT_EQ(NodeGetChildrenCount(parent.get(), &count), noErr);
    EXPECT_EQ(count, 6);
}

TEST(NodeListingTest, FirstRestartsAndFilesAreNoContainers) {
    auto folder = keltest::MakeScratchFolder("restart");
    keltest::WriteFile(folder / "one", "x");
    keltest::WriteFile(folder / "two", "x");
    Held parent = NodeAt(folder);
    NodeIteratorRef iterator = nullptr;
    ASSERT_EQ(NewNodeIterator(parent.get(), &iterator, 0, false), noErr);
    Held first(NodeIteratorNext(iterator));
    Held second(NodeIteratorNext(iterator));
    EXPECT_EQ(NodeIteratorNext(iterator), nullptr);
    Held again(NodeIteratorFirst(iterator));
    EXPECT_EQ(again.get(), first.get());
    DisposeNodeIterator(iterator);

    Held file = Child(parent.get(), u"one");
    EXPECT_EQ(NewNodeIterator(file.get(), &iterator, 0, false), kNodeNotContainerErr);
    EXPECT_EQ(NewNodeIterator(nullptr, &iterator, 0, false), paramErr);
}

TEST(NodeListingTest, TopOfTheTreeAndBootVolume) {
    std::vector<std::u16string> top = ChildNames(GetRootNode());
    Held boot(GetBootNode());
    ASSERT_FALSE(top.empty());
    EXPECT_EQ(top.front(), StringProperty(boot.get(), "pnam")) << "the boot volume comes first";
    std::vector<std::u16string> bootNames = ChildNames(boot.get());
    ASSERT_GE(bootNames.size(), 2u);
    EXPECT_EQ(bootNames[0], u"Network");
    EXPECT_FALSE(Contains(bootNames, u"Volumes")) << "reached by name, never listed";
    EXPECT_TRUE(Contains(bootNames, u"usr"));
    BCIndex count = 0;
    ASSERT_EQ(NodeGetChildrenCount(boot.get(), &count), noErr);
    EXPECT_EQ(count, BCIndex(bootNames.size()));

    Held volumes = Child(boot.get(), u"Volumes");
    EXPECT_FALSE(NodeIsVisible(volumes.get()));
    EXPECT_TRUE(NodeIsVisible(Child(boot.get(), u"Network").get()));
    std::vector<Held> aliases = Children(volumes.get());
    ASSERT_FALSE(aliases.empty());
    EXPECT_TRUE(NodeIsAlias(aliases[0].get()));
    NodeRef original = nullptr;
    ASSERT_EQ(NodeFollowAlias(aliases[0].get(), false, &original), noErr);
    EXPECT_EQ(original, boot.get());
    DisposeNode(original);
}

TEST(NodeListingTest, FolderWithoutReadPermission) {
    auto folder = keltest::MakeScratchFolder("locked");
    fs::create_directory(folder / "closed");
    keltest::WriteFile(folder / "closed" / "inside", "x");
    fs::permissions(folder / "closed", fs::perms::none);
    int failures = keltest::RunUnprivileged(folder, [&] {
        Held closed = NodeAt(folder / "closed");
        NodeIteratorRef iterator = nullptr;
        uint32_t bits = kNodePermissionRead | kNodePermissionWrite;
        StatusCode status = noErr;
        Child(closed.get(), u"inside", &status);
        return !closed + (NewNodeIterator(closed.get(), &iterator, 0, false) != permErr) +
               (NodeGetPermissions(closed.get(), &bits) != noErr) + (bits != 0) +
               (status != permErr);
    });
    EXPECT_EQ(failures, 0);
    fs::permissions(folder / "closed", fs::perms::owner_all);
}

// A large folder. Entries are hard links to a few files: making links is many times faster
// than making files, and listing sees only names.
TEST(NodeListingTest, HundredThousandEntries) {
    auto folder = keltest::MakeScratchFolder("large");
    int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_GE(dir, 0);
    constexpr int kCount = 100000;
    constexpr int kLinksPerFile = 50000; // ext4 allows 65000 links to one file
    for (int i = 0; i < kCount; ++i) {
        std::string name = "entry-" + std::to_string(i) + ".txt";
        if (i % kLinksPerFile == 0) {
            int fd = ::openat(dir, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
            ASSERT_GE(fd, 0);
            ::close(fd);
            continue;
        }
        std::string base = "entry-" + std::to_string(i - i % kLinksPerFile) + ".txt";
        ASSERT_EQ(::linkat(dir, base.c_str(), dir, name.c_str(), 0), 0);
    }
    ::close(dir);
    Held parent = NodeAt(folder);
    std::vector<Held> children = Children(parent.get());
    ASSERT_EQ(children.size(), static_cast<size_t>(kCount));
    size_t visible = 0;
    for (const Held& child : children)
        visible += NodeIsVisible(child.get()) && !NodeIsContainer(child.get());
    EXPECT_EQ(visible, static_cast<size_t>(kCount));
    EXPECT_EQ(StringProperty(children[0].get(), "utid"), u"text/plain");
}

} // namespace
