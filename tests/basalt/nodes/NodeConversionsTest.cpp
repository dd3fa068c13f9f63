#include "NodeTestSupport.h"
#include "basalt/nodes/NodeVolumes.h"
#include "tests/support/TestEnvironment.h"

#include <climits>
#include <fstream>
#include <gtest/gtest.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

std::u16string PathText(NodeRef node) {
    std::vector<UniChar> buffer(8192);
    BCIndex length = 0;
    if (GetNodeAsPathName(node, 1, static_cast<BCIndex>(buffer.size()), &length, buffer.data()) !=
        noErr)
        return u"<error>";
    return std::u16string(reinterpret_cast<char16_t*>(buffer.data()), static_cast<size_t>(length));
}

Held FromText(const std::u16string& text) {
    return Held(GetPathNameAsNode(static_cast<BCIndex>(text.size()),
                                  reinterpret_cast<const UniChar*>(text.data())));
}

TEST(NodeConversionsTest, PathTextRoundTripsAwkwardNames) {
    auto folder = keltest::MakeScratchFolder("paths");
    for (std::string name : {std::string("with:colon"), std::string("caf\xE9"),
                             std::string(255, 'L'), std::string("sp ace")}) {
        keltest::WriteFile(folder / name, "x");
        Held node = NodeAt(folder / name);
        ASSERT_TRUE(node) << name;
        std::u16string text = PathText(node.get());
        EXPECT_NE(text.front(), u'/') << "format 1 has no leading slash";
        EXPECT_EQ(FromText(u"/" + text).get(), node.get());
    }
    Held boot(GetBootNode());
    EXPECT_EQ(PathText(boot.get()), u"");
    UniChar small[4];
    BCIndex needed = 0;
    EXPECT_EQ(GetNodeAsPathName(NodeAt(folder).get(), 1, 4, &needed, small),
              basalt::files::kBFRefPathTooLongErr);
    EXPECT_EQ(needed, static_cast<BCIndex>(folder.string().size() - 1)) << "the length needed";
    EXPECT_EQ(FromText(u"/").get(), boot.get());
    EXPECT_EQ(FromText(u"/no/such/thing").get(), nullptr);
    EXPECT_EQ(FromText(u"relative/path").get(), nullptr);
}

TEST(NodeConversionsTest, BootNameFormAndVolumesFolderReachTheSameNodes) {
    Held usr = FromText(u"/usr");
    ASSERT_TRUE(usr);
    std::u16string bootName = basalt::files::DecodeName(basalt::nodes::BootVolumeName());
    EXPECT_EQ(FromText(bootName + u"/usr").get(), usr.get());
    EXPECT_EQ(FromText(u"/Volumes/" + bootName + u"/usr").get(), usr.get());
    Held network = FromText(u"/Network");
    ASSERT_TRUE(network);
    EXPECT_EQ(PathText(network.get()), u"Network");
}

TEST(NodeConversionsTest, PathsDeeperThanPathMaxWork) {
    auto folder = keltest::MakeScratchFolder("deep");
    fs::path cwd = fs::current_path();
    fs::current_path(folder);
    std::string segment(250, 's');
    fs::path deep = folder;
    while (deep.string().size() < PATH_MAX + 300) {
        fs::create_directory(segment);
        fs::current_path(segment);
        deep /= segment;
    }
    std::ofstream("leaf.txt") << "12";
    fs::current_path(cwd);

    Held leaf = NodeAt(deep / "leaf.txt");
    ASSERT_TRUE(leaf);
    int64_t size = 0;
    ASSERT_EQ(GetNodePropertyAsInt64(leaf.get(), NodeCode("dats"), &size, 0), noErr);
    EXPECT_EQ(size, 2);
    EXPECT_EQ(ChildNames(NodeAt(deep).get()), std::vector<std::u16string>{u"leaf.txt"});
    BFRef ref;
    ASSERT_EQ(GetNodeAsBFRef(leaf.get(), &ref), noErr);
    EXPECT_EQ(Held(GetBFRefAsNode(&ref)).get(), leaf.get());
}

TEST(NodeConversionsTest, RefsDescriptorsAndURLs) {
    auto folder = keltest::MakeScratchFolder("convert");
    keltest::WriteFile(folder / "doc.txt", "x");
    Held node = NodeAt(folder / "doc.txt");

    BEDesc desc;
    ASSERT_EQ(GetNodeAsBEDesc(node.get(), &desc), noErr);
    EXPECT_EQ(desc.descriptorType, static_cast<DescType>(typeBFRef));
    BEDesc url;
    ASSERT_EQ(BECoerceDesc(&desc, typeFileURL, &url), noErr);
    EXPECT_EQ(Held(GetBEDescAsNode(&url)).get(), node.get());
    BEDisposeDesc(&url);
    BEDisposeDesc(&desc);

    ASSERT_EQ(GetNodeAsBEDesc(GetRootNode(), &desc), noErr);
    EXPECT_EQ(GetBEDescAsNode(&desc), GetRootNode()) << "no data stands for the root";

    std::string path = (folder / "doc.txt").string();
    BCURLRef fileURL = BCURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const uint8_t*>(path.data()), static_cast<BCIndex>(path.size()),
        false);
    EXPECT_EQ(Held(GetURLAsNode(fileURL)).get(), node.get());
    BCRelease(fileURL);

    BFRef rootRef, bootRef;
    Held boot(GetBootNode());
    ASSERT_EQ(GetNodeAsBFRef(GetRootNode(), &rootRef), noErr);
    GetNodeAsBFRef(boot.get(), &bootRef);
    EXPECT_EQ(BFCompareBFRefs(&rootRef, &bootRef), noErr)
        << "the root answers with the boot volume";
}

TEST(NodeConversionsTest, FileVanishingBetweenListingAndReading) {
    auto folder = keltest::MakeScratchFolder("vanish");
    keltest::WriteFile(folder / "brief", "x");
    Held parent = NodeAt(folder);
    std::vector<Held> children = Children(parent.get());
    ASSERT_EQ(children.size(), 1u);
    fs::remove(folder / "brief");
    int64_t size = -7;
    EXPECT_EQ(GetNodePropertyAsInt64(children[0].get(), NodeCode("dats"), &size, 0), fnfErr);
    EXPECT_EQ(size, -7);
    EXPECT_FALSE(NodeValidate(children[0].get()));
    BFRef ref;
    EXPECT_EQ(GetNodeAsBFRef(children[0].get(), &ref), fnfErr);
    EXPECT_EQ(StringProperty(children[0].get(), "pnam"), u"brief") << "the name stays known";
}

} // namespace
