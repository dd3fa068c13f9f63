#include "basalt/files/BFFindFolder.h"

#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <gtest/gtest.h>

constexpr uint32_t FourCC(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

namespace fs = std::filesystem;
using namespace basalt::files;

namespace {

std::string PathOf(const BFRef& ref) {
    uint8_t buffer[4096];
    return BFRefMakePath(&ref, buffer, sizeof buffer) == noErr ? reinterpret_cast<char*>(buffer)
                                                               : "";
}

TEST(BFFindFolderTest, UserDirsDecideAndCreateMakesMissingFolders) {
    fs::path home = keltest::ScratchHome();
    keltest::WriteFile(home / ".config/user-dirs.dirs",
                       "# comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                       "XDG_DOCUMENTS_DIR=\"$HOME/\"\n");
    BFRef ref;
    EXPECT_EQ(BFFindFolder(kBFUserDomain, FourCC("desk"), false, &ref), fnfErr);
    ASSERT_EQ(BFFindFolder(kBFUserDomain, FourCC("desk"), true, &ref), noErr);
    EXPECT_EQ(PathOf(ref), (home / "Schreibtisch").string());

    // A user dir set to home itself means none: the default name is used.
    EXPECT_EQ(FolderPathForType(FourCC("docs")), (home / "Documents").string());
    ASSERT_EQ(BFFindFolder(kBFUserDomain, FourCC("cusr"), false, &ref), noErr);
    EXPECT_EQ(PathOf(ref), home.string());
    EXPECT_EQ(BFFindFolder(kBFUserDomain, FourCC("zzzz"), true, &ref), fnfErr);
    fs::remove(home / ".config/user-dirs.dirs");
}

TEST(BFFindFolderTest, BookmarksKeepLocalFoldersWithLabels) {
    fs::path home = keltest::ScratchHome();
    keltest::WriteFile(home / ".config/gtk-3.0/bookmarks",
                       "file:///tmp/a%20b Label here\nsftp://host/x\nfile:///srv\n");
    std::vector<Bookmark> marks = ReadBookmarks();
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(marks[0].path, "/tmp/a b");
    EXPECT_EQ(marks[0].label, "Label here");
    EXPECT_EQ(marks[1].path, "/srv");
    fs::remove(home / ".config/gtk-3.0/bookmarks");
}

} // namespace
