#include "NodeTestSupport.h"
#include "basalt/nodes/NodeTable.h"
#include "tests/support/TestEnvironment.h"

#include <cstring>
#include <gtest/gtest.h>
#include <set>

using namespace nodetest;
using basalt::nodes::Existing;
using basalt::nodes::PathOf;

namespace {

// A name of length bytes that is not UTF-8: plain letters, a two-byte character, and bytes
// that begin or continue a sequence out of place.
std::string OddName(size_t length) {
    static const char kPattern[] = "a\xC3\xA9z\xFF\x80-\xE2";
    std::string name;
    for (size_t at = 0; name.size() < length; ++at)
        name += kPattern[at % (sizeof kPattern - 1)];
    return name;
}

// The node keeps its name in its own block: every length a file system allows comes back byte
// for byte, as a view and as a C string, in the path, and again after the node was freed.
TEST(OpaqueNodeRefTest, NamesOfEveryLengthSurviveListingPathsAndRelease) {
    auto folder = keltest::MakeScratchFolder("names");
    std::set<std::string> made;
    for (size_t length = 1; length <= 255; ++length) {
        made.insert(OddName(length));
        keltest::WriteFile(folder / OddName(length), "");
    }
    Held parent = NodeAt(folder);
    const std::string folderPath = PathOf(parent.get());
    {
        std::vector<Held> children = Children(parent.get());
        ASSERT_EQ(children.size(), made.size());
        std::set<std::string> listed;
        for (const Held& child : children) {
            std::string_view name = child.get()->Name();
            EXPECT_EQ(std::strlen(child.get()->CName()), name.size());
            EXPECT_EQ(PathOf(child.get()), folderPath + "/" + std::string(name));
            listed.emplace(name);
        }
        EXPECT_EQ(listed, made);
    }
    const std::string longest = OddName(255);
    EXPECT_EQ(Existing(parent.get(), longest), nullptr) << "released with the listing";
    Held again = Held(basalt::nodes::Intern(parent.get(), longest, NodeKind::Unknown));
    EXPECT_EQ(again.get()->Name(), longest);
    EXPECT_TRUE(NodeValidate(again.get())) << "the name still reaches the file";
}

} // namespace
