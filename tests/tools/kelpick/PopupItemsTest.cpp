#include "tools/kelpick/PopupItems.h"

#include "basalt/types/BUTypes.h"

#include <cctype>
#include <gtest/gtest.h>

namespace {

TEST(PopupItems, ANewExtensionReplacesTheOldOneOnly) {
    EXPECT_EQ(WithExtension("report.txt", "md"), "report.md");
    EXPECT_EQ(WithExtension("report", "md"), "report.md");
    EXPECT_EQ(WithExtension("a.tar.gz", "zip"), "a.tar.zip");
    EXPECT_EQ(WithExtension(".profile", "txt"), ".profile.txt");
    EXPECT_EQ(WithExtension("report.txt", ""), "report.txt");
}

TEST(PopupItems, TheChosenFilterShowsMatchingNamesWithoutRegardToCase) {
    PopupItems popup = PopupItems::FromFilters(
        {{"Images", {"*.png", "*.jpg"}}, {"Notes", {"notes-*"}}, {"Other", {"*.x"}}});
    EXPECT_TRUE(popup.Shows("a.png"));
    EXPECT_TRUE(popup.Shows("B.JPG"));
    EXPECT_FALSE(popup.Shows("a.png.txt"));
    EXPECT_FALSE(popup.Shows("notes-1"));
    popup.Choose(1);
    EXPECT_TRUE(popup.Shows("notes-1"));
    EXPECT_FALSE(popup.Shows("a.png"));
    // Numbers of items that are not kelpick's change nothing.
    popup.Choose(7);
    EXPECT_TRUE(popup.Shows("notes-1"));
    EXPECT_TRUE(PopupItems().Shows("anything"));
}

TEST(PopupItems, SaveTypesGiveTheirExtensionAndFindTheNamesOwn) {
    PopupItems popup = PopupItems::FromSaveTypes({"txt", "image/png", "md"});
    ASSERT_FALSE(popup.Empty());
    EXPECT_EQ(popup.Extension(), "txt");
    EXPECT_EQ(popup.ItemForName("photo.PNG"), 1u);
    EXPECT_EQ(popup.ItemForName("notes.md"), 2u);
    EXPECT_EQ(popup.ItemForName("plain"), 0u);
    EXPECT_EQ(popup.ItemForName("archive.zip"), 0u);
    popup.Choose(1);
    EXPECT_EQ(popup.Extension(), "png") << "a MIME type gives its usual extension";

    BCArrayRef titles = popup.CreateTitles();
    ASSERT_EQ(BCArrayGetCount(titles), 3);
    const std::string first =
        basalt::types::Utf8(static_cast<BCStringRef>(BCArrayGetValueAtIndex(titles, 0)));
    EXPECT_TRUE(first.ends_with(" (.txt)")) << first;
    EXPECT_TRUE(std::isupper(static_cast<unsigned char>(first[0]))) << first;
    BCRelease(titles);
}

} // namespace
