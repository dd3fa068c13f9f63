#include "basalt/types/BLRegistry.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

namespace {

size_t Count(const std::string& text, const std::string& what) {
    size_t count = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

TEST(BLRecentItemsTest, AddsOnceKeepsOtherEntriesAndEscapes) {
    std::string file = basalt::types::RecentItemsPath();
    keltest::WriteFile(file, "<?xml version=\"1.0\"?>\n<xbel version=\"1.0\">\n"
                             "  <bookmark href=\"file:///other\" added=\"x\" modified=\"x\" "
                             "visited=\"x\"></bookmark>\n</xbel>\n");
    auto folder = keltest::MakeScratchFolder("recent");
    std::string path = (folder / "R&D <draft>.txt").string();
    keltest::WriteFile(path, "x");

    ASSERT_EQ(_BLAddRecentItem(path.c_str(), 2), noErr);
    ASSERT_EQ(_BLAddRecentItem(path.c_str(), 2), noErr);
    std::string text = keltest::ReadFile(file);
    EXPECT_EQ(Count(text, "<bookmark href="), 2u) << text;
    EXPECT_NE(text.find("file:///other"), std::string::npos);
    EXPECT_NE(text.find("R&amp;D%20%3Cdraft%3E.txt"), std::string::npos) << text;
    EXPECT_NE(text.find("type=\"text/plain\""), std::string::npos);
    EXPECT_EQ(_BLAddRecentItem("relative/path", 2), paramErr);
}

} // namespace
