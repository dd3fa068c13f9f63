// The where popup of an open dialog over a scratch HOME: the groups in order, what the filter
// takes out (only recent places), choices that move the dialog, a favourite that leads nowhere,
// and the recent places that dialogs leave behind when they end.

#include "tests/kel/browser/BrowserWindow.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/kel/widgets/LocationPopupTesting.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

using Titles = std::vector<std::string>;

const char* const kGoneText = "The favorite \u201cGone\u201d cannot be opened because the item it "
                              "refers to cannot be found.";

class TFavoritesPopupTest : public LocationPopupTest {
protected:
    // The titles between the n-th separator (1-based) and the next one or the end.
    static Titles Group(const Titles& titles, int n) {
        size_t first = 0;
        for (int seen = 0; seen < n && first < titles.size(); ++first) {
            seen += titles[first] == "-";
        }
        size_t end = first;
        while (end < titles.size() && titles[end] != "-") {
            ++end;
        }
        return Slice(titles, first, end);
    }

    int16_t CommandKeyOf(const Titles& titles, const std::string& title) {
        int16_t key = 0;
        GetItemCmd(run->dialog->WherePopup().Menu(), MenuItemIndex(IndexOf(titles, title) + 1),
                   &key);
        return key;
    }
};

TEST_F(TFavoritesPopupTest, TargetThenVolumesFavouritesAndRecentPlacesEachAfterASeparator) {
    const fs::path projects = MakeScratchFolder("projects");
    AddBookmark(projects, "Projects");
    SetRecents({home / "Documents"});
    Open(tree);
    ShowWherePopup();
    const Titles titles = Pick(kBrowseWherePopup);
    ASSERT_FALSE(titles.empty());
    EXPECT_EQ(titles[0], tree.filename().string());
    const Titles volumes = Group(titles, 1);
    ASSERT_FALSE(volumes.empty());
    EXPECT_EQ(volumes[0], NameOf(TKelNode(TKelNode::GetRootNodeRef(), true)));
    EXPECT_EQ(Group(titles, 2),
              (Titles{home.filename().string(), "Desktop", "Documents", "Projects"}));
    // The same folder as a favourite and as a recent place shows twice.
    EXPECT_EQ(Group(titles, 3), (Titles{"Recent Places", "Documents"}));
    EXPECT_FALSE(IsMenuItemEnabled(run->dialog->WherePopup().Menu(),
                                   MenuItemIndex(IndexOf(titles, "Recent Places") + 1)));
    EXPECT_EQ(CommandKeyOf(titles, "Desktop"), 'D');
    EXPECT_EQ(CommandKeyOf(titles, "Documents"), 0);

    // A favourite, a bookmark's folder, a volume and a recent place each move the dialog.
    Pick(kBrowseWherePopup, MenuItemIndex(IndexOf(titles, "Desktop") + 1));
    EXPECT_TRUE(ShowsFolder(home / "Desktop"));
    Pick(kBrowseWherePopup, MenuItemIndex(IndexOf(titles, "Projects") + 1));
    EXPECT_TRUE(ShowsFolder(projects));
    Pick(kBrowseWherePopup, MenuItemIndex(titles.size()));
    EXPECT_TRUE(ShowsFolder(home / "Documents"));
    Pick(kBrowseWherePopup, 3);
    EXPECT_TRUE(RunUntil([&] {
        TKelNode target;
        return run->dialog->Target(target) == noErr && target.IsRoot();
    }));
    // Item 1 stands for where the dialog is and now shows it.
    EXPECT_EQ(Pick(kBrowseWherePopup, 1).front(), volumes[0]);
    TKelNode target;
    run->dialog->Target(target);
    EXPECT_TRUE(target.IsRoot());
}

TEST_F(TFavoritesPopupTest, TheDesktopIsOfferedFirstWhenThePlacesLeaveItOut) {
    WriteFile(home / ".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n");
    Open(tree);
    ShowWherePopup();
    const Titles titles = Pick(kBrowseWherePopup);
    const Titles favourites = Group(titles, 2);
    ASSERT_FALSE(favourites.empty());
    EXPECT_EQ(favourites.front(), "Desktop");
    EXPECT_EQ(std::count(favourites.begin(), favourites.end(), "Desktop"), 1);
    EXPECT_EQ(CommandKeyOf(titles, "Desktop"), 'D');
    Pick(kBrowseWherePopup, MenuItemIndex(IndexOf(titles, "Desktop") + 1));
    EXPECT_TRUE(ShowsFolder(home / "Desktop"));
}

TEST_F(TFavoritesPopupTest, TheListsAreReadAgainOnlyAfterTheWindowIsActivatedAgain) {
    Open(tree);
    ShowWherePopup();
    Pick(kBrowseWherePopup);
    AddBookmark(MakeScratchFolder("later"), "Later");
    const Titles stale = Pick(kBrowseWherePopup);
    EXPECT_EQ(IndexOf(stale, "Later"), stale.size()) << "a second opening shows the same lists";

    // Another window comes to the front and goes; the dialog's window is active again.
    WindowRef other = nullptr;
    const Rect bounds{100, 100, 200, 300};
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &other), noErr);
    ShowWindow(other);
    SelectWindow(other);
    HeadlessDriver::RunUntilIdle();
    DisposeWindow(other);
    SelectWindow(run->dialog->GetWindow());
    HeadlessDriver::RunUntilIdle();
    const Titles fresh = Pick(kBrowseWherePopup);
    EXPECT_LT(IndexOf(fresh, "Later"), fresh.size());
}

TEST_F(TFavoritesPopupTest, TheFilterTakesOutRecentPlacesButNoFavourite) {
    // Invisible folders are kept out of sight by the dialog's filter.
    fs::create_directories(tree / ".secret");
    fs::create_directories(tree / "Open");
    AddBookmark(tree / ".secret", "Secret");
    SetRecents({tree / ".secret", tree / "Open"});
    Open(tree);
    ShowWherePopup();
    ASSERT_FALSE(run->dialog->WherePopup().CanNodeAppear(NodeOf(tree / ".secret")));
    const Titles titles = Pick(kBrowseWherePopup);
    const Titles favourites = Group(titles, 2);
    EXPECT_LT(IndexOf(favourites, "Secret"), favourites.size());
    EXPECT_EQ(Group(titles, 3), (Titles{"Recent Places", "Open"}));
}

TEST_F(TFavoritesPopupTest, AFavouriteThatLeadsNowhereIsReportedAndCanBeRemoved) {
    const fs::path gone = MakeScratchFolder("gone");
    AddBookmark(gone, "Gone");
    fs::remove(gone);
    Open(tree);
    ShowWherePopup();
    const Titles titles = Pick(kBrowseWherePopup);
    const auto item = MenuItemIndex(IndexOf(titles, "Gone") + 1);
    ASSERT_LE(item, titles.size());
    const fs::path bookmarks = home / ".config/gtk-3.0/bookmarks";
    // The alert names the favourite; its default button keeps it, its other one removes it.
    for (uint16_t key : {uint16_t(0x24), uint16_t(0x35)}) {
        std::string message;
        WhenInFront(run->dialog->GetWindow(), [&](WindowRef alert) {
            BGRect box = BGRectZero;
            message =
                HeadlessDriver::FindShownText(alert, kGoneText, BGRectMake(0, 0, 2000, 2000), &box)
                    ? "shown"
                    : "other";
            HeadlessDriver::WritePNG(alert, fs::path(KEL_TEST_BINARY_DIR) / "favourite-gone.png");
            HeadlessDriver::PressKey(key);
        });
        Pick(kBrowseWherePopup, item);
        EXPECT_EQ(message, "shown");
        EXPECT_TRUE(ShowsFolder(tree)) << "the dialog stays where it was";
        EXPECT_EQ(ReadFile(bookmarks).find(" Gone") != std::string::npos, key == 0x24);
    }
}

TEST_F(TFavoritesPopupTest, AnAcceptedDialogLeavesItsFolderAmongTheRecentPlacesACancelledOneNot) {
    WriteFile(tree / "Outer" / "note.txt", "text");
    {
        BrowseDialogRun accepted(tree / "Outer", kKelModalityAppModal);
        accepted.RunModal([&] {
            ClickListRow(*accepted.dialog, 1);
            ClickItem(*accepted.dialog, kBrowseDefaultButton);
        });
        BrowseDialogRun cancelled(tree / "Outer" / "Inner", kKelModalityAppModal);
        cancelled.RunModal([&] { ClickItem(*cancelled.dialog, kBrowseCancelButton); });
    }
    Open(tree);
    const Titles path = Pick(kBrowsePathPopup);
    EXPECT_EQ(Slice(path, IndexOf(path, "Recent Places"), path.size()),
              (Titles{"Recent Places", "Outer"}));
    ShowWherePopup();
    EXPECT_EQ(Group(Pick(kBrowseWherePopup), 3), (Titles{"Recent Places", "Outer"}));
}

} // namespace
