// The path popup of an open dialog on a scratch tree: the folders that enclose the one shown,
// nearest first, then the recent places the filter allows; a choice moves the dialog.

#include "tests/kel/browser/BrowserWindow.h"
#include "tests/kel/widgets/LocationPopupTesting.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;
using namespace keltest;

namespace {

class TPathPopupTest : public LocationPopupTest {};

using Titles = std::vector<std::string>;

TEST_F(TPathPopupTest, ItListsTheEnclosingFoldersNearestFirstUpToTheTopAndChoicesGoThere) {
    const fs::path inner = tree / "Outer" / "Inner";
    Open(inner);
    Titles titles = Pick(kBrowsePathPopup);
    const size_t separator = IndexOf(titles, "-");
    ASSERT_LT(separator, titles.size()) << "the recents' separator is always there";
    EXPECT_EQ(Slice(titles, 0, 3), (Titles{"Inner", "Outer", tree.filename().string()}));
    // Every folder of the real path but the target's own, the boot volume for "/", and the top
    // of the tree below it.
    EXPECT_EQ(long(separator) - 1, std::distance(inner.begin(), inner.end()));
    EXPECT_EQ(titles[separator - 2], NameOf(TKelNode::GetBootNode()));
    EXPECT_EQ(titles[separator - 1], NameOf(TKelNode(TKelNode::GetRootNodeRef(), true)));
    EXPECT_EQ(Slice(titles, separator, titles.size()), (Titles{"-", "Recent Places"}));

    // Item 1 is where the dialog is: choosing it changes nothing.
    Pick(kBrowsePathPopup, 1);
    EXPECT_TRUE(ShowsFolder(inner));
    // The third item is the tree; the menu is then read again for the new place.
    Pick(kBrowsePathPopup, 3);
    ASSERT_TRUE(ShowsFolder(tree));
    titles = Pick(kBrowsePathPopup);
    EXPECT_EQ(Slice(titles, 0, 2),
              (Titles{tree.filename().string(), tree.parent_path().filename().string()}));

    // The last ancestor is the top of the tree, which has none above it.
    Pick(kBrowsePathPopup, MenuItemIndex(IndexOf(titles, "-")));
    ASSERT_TRUE(RunUntil([&] {
        TKelNode target;
        return run->dialog->Target(target) == noErr && target.IsRoot();
    }));
    titles = Pick(kBrowsePathPopup);
    EXPECT_EQ(Slice(titles, 1, titles.size()), (Titles{"-", "Recent Places"}));
}

TEST_F(TPathPopupTest, RecentPlacesAreTheFoldersThatStillResolveAndThatTheFilterAllows) {
    // An invisible folder is one the dialog's filter keeps out of sight.
    for (const char* name : {"Alpha", "Beta", "Gone", ".secret"}) {
        fs::create_directories(tree / name);
    }
    WriteFile(tree / "notes.txt", "not a folder");
    SetRecents(
        {tree / ".secret", tree / "Beta", tree / "notes.txt", tree / "Gone", tree / "Alpha"});
    fs::remove(tree / "Gone");
    Open(tree / "Outer");
    Titles titles = Pick(kBrowsePathPopup);
    const size_t header = IndexOf(titles, "Recent Places");
    // Listed by name, whatever order the dialogs left them in.
    EXPECT_EQ(Slice(titles, header + 1, titles.size()), (Titles{"Alpha", "Beta"}));

    // A recent place is addressed from the end of the menu.
    const auto last = MenuItemIndex(titles.size());
    Pick(kBrowsePathPopup, last);
    EXPECT_TRUE(ShowsFolder(tree / titles.back()));
}

} // namespace
