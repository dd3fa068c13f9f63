#include "basalt/nodes/NodeSortKeys.h"

#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <mutex>
#include <optional>
#include <sys/resource.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace nodetest;
using basalt::nodes::kParallelSortKeysFrom;

namespace {

std::optional<std::vector<uint8_t>> PreparedKey(NodeRef node) {
    if (node->sortKeys.displayName.Get() == nullptr)
        return std::nullopt;
    const uint8_t* key = nullptr;
    BCIndex length = 0;
    EXPECT_EQ(NodeGetSortKey(node, NodeCode("dnam"), &key, &length), noErr);
    return std::vector<uint8_t>(key, key + length);
}

// The key made fresh, for comparison with the one made ahead.
std::vector<uint8_t> FreshKey(NodeRef node) {
    node->sortKeys.displayName.Reset();
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

// Every child has its key made ahead, and each is the one made when asked.
void ExpectEveryKeyMadeAhead(const std::vector<Held>& children) {
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

TEST(NodeSortKeysTest, LargeListingHasEveryDisplayKeyMadeAhead) {
    // Large enough to be interned in two parts, and not a multiple of the batch size, so the
    // last batch is a short one.
    const size_t count = 2 * kParallelSortKeysFrom + 3;
    std::vector<Held> children = ListFolderOf(count, "sortkeys-large");
    ASSERT_EQ(children.size(), count);
    ExpectEveryKeyMadeAhead(children);
}

// Keys made ahead read the files' attributes through their folder: a hidden extension
// shortens the name that sorts, and the other attributes read on the way are the file's own.
TEST(NodeSortKeysTest, KeysMadeAheadHonourHiddenExtensions) {
    auto folder = keltest::MakeScratchFolder("sortkeys-hidden");
    for (size_t index = 0; index < kParallelSortKeysFrom + 3; ++index)
        keltest::WriteFile(folder / ("File " + std::to_string(index) + ".txt"), "");
    const auto hidden = folder / "File 2050.txt";
    if (::setxattr(hidden.c_str(), "user.kel.hide-extension", "1", 1, 0) != 0)
        GTEST_SKIP() << "no user attributes on this file system";
    ASSERT_EQ(::setxattr(hidden.c_str(), "user.kel.label", "3", 1, 0), 0);
    auto other = keltest::MakeScratchFolder("sortkeys-plain");
    keltest::WriteFile(other / "File 2050", "");
    Held plainFolder = NodeAt(other);
    Held plain = Child(plainFolder.get(), u"File 2050");

    Held parent = NodeAt(folder);
    std::vector<Held> children = Children(parent.get());
    ASSERT_EQ(children.size(), kParallelSortKeysFrom + 3);
    for (const Held& child : children) {
        const bool isHidden = child.get()->Name() == "File 2050.txt";
        std::optional<std::vector<uint8_t>> key = PreparedKey(child.get());
        ASSERT_TRUE(key.has_value());
        EXPECT_EQ(*key == FreshKey(plain.get()), isHidden) << child.get()->Name();
        int16_t label = 0;
        GetNodePropertyAsInt16(child.get(), NodeCode("labl"), &label, 0);
        EXPECT_EQ(label, isHidden ? 3 : 0) << child.get()->Name();
    }
}

// procfs keeps no user attributes: its large folders list whole, every key made ahead and each
// the same as the one made when asked. A process's descriptor folder is large once it holds
// enough descriptors.
TEST(NodeSortKeysTest, FolderWithoutUserAttributesListsWhole) {
    const size_t wanted = kParallelSortKeysFrom + 50;
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    ASSERT_GE(limit.rlim_max, wanted + 100) << "too few descriptors allowed for this test";
    const rlimit old = limit;
    limit.rlim_cur = std::max<rlim_t>(limit.rlim_cur, wanted + 100);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    std::vector<int> opened;
    for (size_t index = 0; index < wanted; ++index)
        opened.push_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    {
        Held folder = NodeAt("/proc/" + std::to_string(::getpid()) + "/fd");
        std::vector<Held> children = Children(folder.get());
        EXPECT_GE(children.size(), wanted);
        ExpectEveryKeyMadeAhead(children);
        EXPECT_EQ(StringProperty(children.back().get(), "dnam"),
                  StringProperty(children.back().get(), "pnam"));
    }
    for (int fd : opened)
        ::close(fd);
    ::setrlimit(RLIMIT_NOFILE, &old);
}

TEST(NodeSortKeysTest, SmallListingLeavesKeysToBeAskedFor) {
    std::vector<Held> children = ListFolderOf(5, "sortkeys-small");
    ASSERT_EQ(children.size(), 5u);
    for (const Held& child : children)
        EXPECT_FALSE(PreparedKey(child.get()).has_value());
}

} // namespace
