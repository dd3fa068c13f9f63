#include "basalt/backend/x11/X11Dnd.h"

#include <gtest/gtest.h>

namespace basalt::x11 {
namespace {

TEST(X11DndTest, AURIListGivesItsFileURLsInOrder) {
    EXPECT_EQ(FileURLsOfURIList("file:///home/a/x.txt\r\nfile:///tmp/b%20c\r\n"),
              (std::vector<std::string>{"file:///home/a/x.txt", "file:///tmp/b%20c"}));
    // Comments, other schemes, blank lines and a last line without an end all as senders
    // write them.
    EXPECT_EQ(FileURLsOfURIList("# from a file manager\nhttps://example.org/\n\nfile:///x"),
              (std::vector<std::string>{"file:///x"}));
    EXPECT_TRUE(FileURLsOfURIList("").empty());
}

} // namespace
} // namespace basalt::x11
