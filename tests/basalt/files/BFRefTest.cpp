#include "basalt/files/BFRef.h"

#include "tests/support/TestEnvironment.h"

#include <climits>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

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

// Deleting and re-creating at once gives the new file the old inode number, and on a file
// system whose clock has not ticked in between (ext4 keeps a coarse clock on older kernels) the
// old birth time too. The test plays that clock by writing the new file's birth time into the
// old reference, at the place the reference keeps it (bytes 24..35): the reference must still
// tell the files apart.
TEST(BFRefTest, AFileRecreatedWithinOneClockTickIsNotTheOldOne) {
    fs::path file = keltest::MakeScratchFolder("recreate") / "doc.txt";
    bool reused = false;
    for (int round = 0; round < 50 && !reused; ++round) {
        keltest::WriteFile(file, "x");
        BFRef ref = RefOf(file);
        struct statx before {};
        ASSERT_EQ(::statx(AT_FDCWD, file.c_str(), 0, STATX_INO, &before), 0);
        fs::remove(file);
        keltest::WriteFile(file, "y");
        struct statx after {};
        ASSERT_EQ(::statx(AT_FDCWD, file.c_str(), 0, STATX_INO | STATX_BTIME, &after), 0);
        reused = after.stx_ino == before.stx_ino;
        if (reused && (after.stx_mask & STATX_BTIME)) {
            int64_t seconds = after.stx_btime.tv_sec;
            uint32_t nanoseconds = after.stx_btime.tv_nsec;
            std::memcpy(ref.hidden + 24, &seconds, sizeof seconds);
            std::memcpy(ref.hidden + 32, &nanoseconds, sizeof nanoseconds);
            uint8_t buffer[4096];
            EXPECT_EQ(BFRefMakePath(&ref, buffer, sizeof buffer), fnfErr);
        }
        fs::remove(file);
    }
    EXPECT_TRUE(reused) << "the file system never reused the inode number";
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
