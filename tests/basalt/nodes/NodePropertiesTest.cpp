#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

constexpr FourCharCode Code(const char (&c)[5]) {
    return NodeCode(c);
}

bool SetXattr(const fs::path& path, const char* name, const std::string& value) {
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

TEST(NodePropertiesTest, NamesTypesSizesAndDates) {
    auto folder = keltest::MakeScratchFolder("props");
    keltest::WriteFile(folder / "report.pdf", "12345");
    fs::create_directory(folder / "sub");
    Held parent = NodeAt(folder);
    Held file = Child(parent.get(), u"report.pdf");
    EXPECT_EQ(StringProperty(file.get(), "pnam"), u"report.pdf");
    EXPECT_EQ(StringProperty(file.get(), "dnam"), u"report.pdf");
    EXPECT_EQ(StringProperty(file.get(), "utid"), u"application/pdf");
    EXPECT_EQ(StringProperty(Child(parent.get(), u"sub").get(), "utid"), u"inode/directory");
    FourCharCode type = 0;
    ASSERT_EQ(GetNodePropertyAsFourCharCode(file.get(), Code("asty"), &type, 0), noErr);
    EXPECT_EQ(type, Code("PDF "));
    FourCharCode creator = Code("pset");
    EXPECT_NE(GetNodePropertyAsFourCharCode(file.get(), Code("fcrt"), &creator, 0), noErr);
    EXPECT_EQ(creator, Code("pset")) << "a failed read leaves the preset";
    int64_t size = 0;
    ASSERT_EQ(GetNodePropertyAsInt64(file.get(), Code("dats"), &size, 0), noErr);
    EXPECT_EQ(size, 5);
    UTCDateTime modified{};
    ASSERT_EQ(GetNodePropertyAsUTCDateTime(file.get(), Code("modd"), &modified, 0), noErr);
    uint64_t seconds = (uint64_t(modified.highSeconds) << 32) | modified.lowSeconds;
    EXPECT_NEAR(static_cast<double>(seconds), static_cast<double>(time(nullptr) + 2082844800), 120);
    int16_t attributes = 0;
    ASSERT_EQ(
        GetNodePropertyAsInt16(Child(parent.get(), u"sub").get(), Code("attr"), &attributes, 0),
        noErr);
    EXPECT_EQ(attributes & 0x10, 0x10);
    EXPECT_EQ(GetNodePropertyAsInt64(file.get(), Code("zzzz"), &size, 0),
              kNodePropertyNotSupportedErr);
}

TEST(NodePropertiesTest, NamesThatAreNotUtf8AreLegibleAndFindTheNodeAgain) {
    auto folder = keltest::MakeScratchFolder("bytes");
    std::string raw = "caf\xE9 menu.txt";
    keltest::WriteFile(folder / raw, "x");
    Held parent = NodeAt(folder);
    std::vector<Held> children = Children(parent.get());
    ASSERT_EQ(children.size(), 1u);
    EXPECT_EQ(StringProperty(children[0].get(), "dnam"), u"café menu.txt");
    std::u16string name = StringProperty(children[0].get(), "pnam");
    EXPECT_EQ(Child(parent.get(), name).get(), children[0].get());
}

TEST(NodePropertiesTest, ExtendedAttributesGiveTypeCreatorLabelAndHiddenExtension) {
    auto folder = keltest::MakeScratchFolder("xattrs");
    fs::path path = folder / "letter.txt";
    keltest::WriteFile(path, "x");
    if (!SetXattr(path, "user.kel.type", "TEXT"))
        GTEST_SKIP() << "this file system takes no user extended attributes";
    SetXattr(path, "user.kel.creator", "ttxt");
    SetXattr(path, "user.kel.label", "3");
    SetXattr(path, "user.kel.hide-extension", "1");
    SetXattr(path, "user.kel.resources", std::string(42, 'r'));
    Held file = NodeAt(path);
    FourCharCode creator = 0;
    ASSERT_EQ(GetNodePropertyAsFourCharCode(file.get(), Code("fcrt"), &creator, 0), noErr);
    EXPECT_EQ(creator, Code("ttxt"));
    int16_t label = 0;
    GetNodePropertyAsInt16(file.get(), Code("labl"), &label, 0);
    EXPECT_EQ(label, 3);
    Boolean hidden = false;
    GetNodePropertyAsBoolean(file.get(), Code("hext"), &hidden, 0);
    EXPECT_TRUE(hidden);
    EXPECT_EQ(StringProperty(file.get(), "dnam"), u"letter");
    EXPECT_EQ(StringProperty(file.get(), "pnam"), u"letter.txt");
    int64_t resources = 0;
    GetNodePropertyAsInt64(file.get(), Code("ress"), &resources, 0);
    EXPECT_EQ(resources, 42);
}

TEST(NodePropertiesTest, PermissionsClearOnlyWhatIsNotGranted) {
    auto folder = keltest::MakeScratchFolder("perms");
    keltest::WriteFile(folder / "ro.txt", "x");
    fs::permissions(folder / "ro.txt", fs::perms::owner_read);
    Held parent = NodeAt(folder);
    uint32_t bits = kNodePermissionAddChild | kNodePermissionWrite | kNodePermissionRead | 0x2;
    ASSERT_EQ(NodeGetPermissions(parent.get(), &bits), noErr);
    EXPECT_EQ(bits, kNodePermissionAddChild | kNodePermissionWrite | kNodePermissionRead)
        << "bits the service does not know are cleared too";
    int granted = keltest::RunUnprivileged(folder, [&] {
        uint32_t asked = kNodePermissionWrite | kNodePermissionRead;
        NodeGetPermissions(NodeAt(folder / "ro.txt").get(), &asked);
        return asked == kNodePermissionRead ? 0 : 1;
    });
    EXPECT_EQ(granted, 0) << "a read-only file is readable, not writeable";
}

int16_t ByUnits(unsigned long lengthA, const UniChar* a, unsigned long lengthB, const UniChar* b) {
    std::u16string textA(reinterpret_cast<const char16_t*>(a), lengthA);
    std::u16string textB(reinterpret_cast<const char16_t*>(b), lengthB);
    return textA < textB ? -1 : textA > textB ? 1 : 0;
}

TEST(NodePropertiesTest, StringCompareAndCollationKeysSortNames) {
    auto folder = keltest::MakeScratchFolder("sort");
    for (const char* name : {"b", "a10", "a9", "B2"})
        keltest::WriteFile(folder / name, "x");
    Held parent = NodeAt(folder);
    Held a9 = Child(parent.get(), u"a9"), a10 = Child(parent.get(), u"a10");
    EXPECT_EQ(NodeStringCompare(a9.get(), a10.get(), Code("pnam"), ByUnits), 1);
    const uint8_t *key9 = nullptr, *key10 = nullptr;
    BCIndex length9 = 0, length10 = 0;
    ASSERT_EQ(NodeGetSortKey(a9.get(), Code("dnam"), &key9, &length9), noErr);
    ASSERT_EQ(NodeGetSortKey(a10.get(), Code("dnam"), &key10, &length10), noErr);
    int order = std::memcmp(key9, key10, static_cast<size_t>(std::min(length9, length10)));
    EXPECT_LT(order, 0) << "numbers in names sort by value";
    const uint8_t* again = nullptr;
    NodeGetSortKey(a9.get(), Code("dnam"), &again, &length9);
    EXPECT_EQ(again, key9) << "keys are cached";
}

// The key is the collator's own, its length counting the closing zero, also for a name whose key
// is longer than any usual one (letters with marks, in a name that is not UTF-8).
TEST(NodePropertiesTest, SortKeysAreTheCollatorsWhateverTheirLength) {
    auto folder = keltest::MakeScratchFolder("keys");
    std::string odd; // "ÅßÅß...", read as Latin-1
    while (odd.size() < 255)
        odd += "\xC5\xDF";
    odd.resize(255);
    for (const std::string& name : {std::string("a"), std::string("Report 2.txt"), odd})
        keltest::WriteFile(folder / name, "");
    Held parent = NodeAt(folder);
    BCIndex longest = 0;
    for (const Held& child : Children(parent.get())) {
        std::u16string shown = StringProperty(child.get(), "dnam");
        const auto* chars = reinterpret_cast<const UniChar*>(shown.data());
        const auto count = static_cast<BCIndex>(shown.size());
        std::vector<uint8_t> expected(
            size_t(UCGetCollationKey(kUCCollateStandardOptions, chars, count, nullptr, 0)));
        UCGetCollationKey(kUCCollateStandardOptions, chars, count, expected.data(),
                          BCIndex(expected.size()));
        const uint8_t* key = nullptr;
        BCIndex length = 0;
        ASSERT_EQ(NodeGetSortKey(child.get(), Code("dnam"), &key, &length), noErr);
        EXPECT_EQ(std::vector<uint8_t>(key, key + length), expected);
        longest = std::max(longest, length);
    }
    EXPECT_GT(longest, 1024) << "no key took the long way";
}

} // namespace

namespace {

IconRef SystemIcon(OSType type) {
    IconRef icon = nullptr;
    GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, type, &icon);
    return icon;
}

// Icons are interned, so a node's icon can be compared with the system icon it should be.
TEST(NodePropertiesTest, IconsFollowTheKindOfNode) {
    auto folder = keltest::MakeScratchFolder("icons");
    keltest::WriteFile(folder / "notes.txt", "x");
    fs::create_directory_symlink("missing", folder / "broken");
    Held parent = NodeAt(folder);
    struct Case {
        NodeRef node;
        OSType expected;
    };
    Held home(GetHomeNode());
    Held boot(GetBootNode());
    Held broken = Child(parent.get(), u"broken");
    for (Case c : {Case{parent.get(), kBTIconGenericFolder}, Case{home.get(), kBTIconHome},
                   Case{boot.get(), kBTIconHardDisk}, Case{GetRootNode(), kBTIconComputer},
                   Case{broken.get(), kBTIconAlias}}) {
        IconRef icon = nullptr, expected = SystemIcon(c.expected);
        ASSERT_EQ(GetNodePropertyAsIconRef(c.node, NodeCode("icon"), &icon, 0), noErr);
        EXPECT_EQ(icon, expected);
        ReleaseIconRef(icon);
        ReleaseIconRef(expected);
    }
    IconRef text = nullptr;
    Held notes = Child(parent.get(), u"notes.txt");
    EXPECT_EQ(GetNodePropertyAsIconRef(notes.get(), NodeCode("icon"), &text, 0), noErr);
    EXPECT_NE(text, nullptr);
    ReleaseIconRef(text);
    EXPECT_EQ(GetNodePropertyAsIconRef(parent.get(), NodeCode("pnam"), &text, 0),
              kNodePropertyNotSupportedErr);

    BFRef ref;
    ASSERT_EQ(GetNodeAsBFRef(home.get(), &ref), noErr);
    IconRef byRef = nullptr, homeIcon = SystemIcon(kBTIconHome);
    EXPECT_EQ(GetIconRefFromFileInfo(&ref, 0, nullptr, 0, nullptr, 1, &byRef, nullptr), noErr);
    EXPECT_EQ(byRef, homeIcon);
    ReleaseIconRef(byRef);
    ReleaseIconRef(homeIcon);
}

} // namespace
