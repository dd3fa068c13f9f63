#include "basalt/files/BFRef.h"

#include "tests/support/TestEnvironment.h"

#include <climits>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace basalt::files;

namespace {

BFRef RefOf(const fs::path& path) {
    BFRef ref{};
    EXPECT_EQ(BFPathMakeRef(reinterpret_cast<const uint8_t*>(path.c_str()), &ref, nullptr), noErr)
        << path;
    return ref;
}

std::string PathOf(const BFRef& ref) {
    uint8_t buffer[8192];
    if (BFRefMakePath(&ref, buffer, sizeof buffer) != noErr)
        return {};
    return reinterpret_cast<char*>(buffer);
}

TEST(BFRefTest, NamesAFileUntilItIsDeletedOrReplaced) {
    fs::path folder = keltest::MakeScratchFolder("bfref");
    keltest::WriteFile(folder / "doc.txt", "x");
    BFRef ref = RefOf(folder / "doc.txt");
    EXPECT_EQ(PathOf(ref), (folder / "doc.txt").string());

    fs::remove(folder / "doc.txt");
    keltest::WriteFile(folder / "doc.txt", "another file at the same place");
    uint8_t buffer[4096];
    EXPECT_EQ(BFRefMakePath(&ref, buffer, sizeof buffer), fnfErr);

    fs::remove(folder / "doc.txt");
    EXPECT_EQ(BFRefMakePath(&ref, buffer, sizeof buffer), fnfErr);
}

TEST(BFRefTest, GarbageAndShortBuffersAreRefused) {
    BFRef garbage{};
    garbage.hidden[0] = 0x42;
    uint8_t buffer[4];
    EXPECT_EQ(BFRefMakePath(&garbage, buffer, sizeof buffer), errBFBadRef);
    BFRef ref = RefOf(keltest::MakeScratchFolder("short"));
    EXPECT_EQ(BFRefMakePath(&ref, buffer, sizeof buffer), kBFRefPathTooLongErr);
}

TEST(BFRefTest, ChildByUnicodeNameIncludingBytesThatAreNotUtf8) {
    fs::path folder = keltest::MakeScratchFolder("child");
    std::string raw = "caf\xE9.txt";
    keltest::WriteFile(folder / raw, "x");
    BFRef parent = RefOf(folder);
    std::u16string name = u"caf\xDD69.txt";
    BFRef child;
    ASSERT_EQ(BFMakeBFRefUnicode(&parent, static_cast<BCIndex>(name.size()),
                                 reinterpret_cast<const UniChar*>(name.data()), 0, &child),
              noErr);
    EXPECT_EQ(PathOf(child), (folder / raw).string());

    std::u16string missing = u"nothing";
    EXPECT_EQ(
        BFMakeBFRefUnicode(&parent, 7, reinterpret_cast<const UniChar*>(missing.data()), 0, &child),
        fnfErr);
    std::u16string slash = u"a/b";
    EXPECT_EQ(
        BFMakeBFRefUnicode(&parent, 3, reinterpret_cast<const UniChar*>(slash.data()), 0, &child),
        bdNamErr);
}

TEST(BFRefTest, SameObjectComparesEqualThroughDifferentPaths) {
    fs::path folder = keltest::MakeScratchFolder("compare");
    keltest::WriteFile(folder / "a", "x");
    fs::create_hard_link(folder / "a", folder / "b");
    keltest::WriteFile(folder / "c", "x");
    BFRef a = RefOf(folder / "a"), b = RefOf(folder / "b"), c = RefOf(folder / "c");
    EXPECT_EQ(BFCompareBFRefs(&a, &b), noErr);
    EXPECT_EQ(BFCompareBFRefs(&a, &c), errBFRefsDifferent);
}

TEST(BFRefTest, PathsDeeperThanPathMax) {
    fs::path folder = keltest::MakeScratchFolder("deep");
    std::string path = folder.string();
    std::string segment(200, 'd');
    // Build with relative steps, as the kernel refuses long absolute paths.
    fs::path cwd = fs::current_path();
    fs::current_path(folder);
    while (path.size() < PATH_MAX + 500) {
        fs::create_directory(segment);
        fs::current_path(segment);
        path += "/" + segment;
    }
    std::ofstream("leaf.txt") << "x";
    fs::current_path(cwd);
    path += "/leaf.txt";

    BFRef ref;
    ASSERT_EQ(BFPathMakeRef(reinterpret_cast<const uint8_t*>(path.c_str()), &ref, nullptr), noErr);
    EXPECT_EQ(PathOf(ref), path);
    BFSpec spec;
    EXPECT_EQ(BFRefMakeBFSpec(&ref, &spec), noErr);
    BFRef again;
    ASSERT_EQ(BFSpecMakeBFRef(&spec, &again), noErr);
    EXPECT_EQ(BFCompareBFRefs(&ref, &again), noErr);
}

TEST(BFRefTest, URLsCarryAnyBytes) {
    fs::path folder = keltest::MakeScratchFolder("url");
    keltest::WriteFile(folder / "odd \xE9 name", "x");
    BFRef ref = RefOf(folder / "odd \xE9 name");
    BCURLRef url = BCURLCreateFromBFRef(nullptr, &ref);
    ASSERT_NE(url, nullptr);
    BFRef back;
    ASSERT_TRUE(BCURLGetBFRef(url, &back));
    EXPECT_EQ(BFCompareBFRefs(&ref, &back), noErr);
    BCRelease(url);
}

} // namespace
