#include "basalt/files/BFBookmarks.h"

#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using namespace basalt::files;

namespace {

// Every line another reader shows is kept: labels, remote places and missing folders alike.
TEST(BFBookmarksTest, EveryLineOthersShowIsKeptWithItsLabel) {
    keltest::WriteFile(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks",
                       "file:///tmp/a%20b Label here\n"
                       "sftp://host/x\n"
                       "\n"
                       "file:///no/such/folder Gone  with  spaces\n"
                       "smb://server/share Team\xff\n"
                       "not a uri\n"
                       "file:///srv\n");
    std::vector<Bookmark> marks = ReadBookmarks();
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_EQ(marks[0].path, "/tmp/a b");
    EXPECT_EQ(marks[0].label, "Label here");
    EXPECT_EQ(marks[1].uri, "sftp://host/x");
    EXPECT_FALSE(marks[1].path.has_value());
    EXPECT_EQ(marks[1].label, "");
    EXPECT_EQ(marks[2].path, "/no/such/folder");
    EXPECT_EQ(marks[2].label, "Gone  with  spaces");
    EXPECT_EQ(marks[3].path, "/srv");
    std::filesystem::remove(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks");
}

} // namespace
