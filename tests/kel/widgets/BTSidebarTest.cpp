// The sidebar over a scratch HOME: its rows come from the node service's two lists and follow
// them, a click tells the dialog, and the dialog's location selects a row.

#include "SidebarWindow.h"
#include "kel/nodes/TNodeFilter.h"
#include "tests/kel/nodes/KelNodeTesting.h"

using basalt::headless::HeadlessDriver;
using kelnodetest::NodeAt;
using namespace keltest;

namespace {

class BTSidebarTest : public SidebarWindow {};

const BGRect kTall = BGRectMake(10, 10, 180, 380);

} // namespace

TEST_F(BTSidebarTest, RowsAreThePlacesTheUserDirsAndTheBookmarks) {
    MakeSidebar(kTall);
    ASSERT_GE(sidebar->CountTopItems(), 2);
    EXPECT_EQ(sidebar->GetItem(0)->node, TKelNode::GetRootNodeRef());
    EXPECT_EQ(BottomNames(),
              (std::vector<std::string>{"home", "Desktop", "Documents", "Downloads", "Projects"}));
    for (int index = sidebar->CountTopItems(); index < sidebar->CountItems(); ++index) {
        EXPECT_FALSE(sidebar->GetItem(index)->IsEjectable()) << "the places never eject";
        EXPECT_TRUE(sidebar->GetItem(index)->icon) << "every place has its icon";
    }
    EXPECT_EQ(sidebar->GetItem(-1), nullptr);
    EXPECT_EQ(sidebar->GetItem(sidebar->CountItems()), nullptr);
}

TEST_F(BTSidebarTest, ABookmarkAddedWhileShownAppearsAndTheSelectionStaysOnItsNode) {
    MakeSidebar(kTall);
    HeadlessDriver::ClickAt(window, RowPoint(RowNamed("Projects")));
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(items->SelectedRow(), RowNamed("Projects"));
    told.clear();

    // A bookmark put first in the file comes above the selected row, which moves down one.
    auto later = MakeScratchFolder("later");
    WriteFile(home / ".config/gtk-3.0/bookmarks", "file://" + later.string() + " Later\n" +
                                                      ReadFile(home / ".config/gtk-3.0/bookmarks"));
    ASSERT_TRUE(RunUntil([&] { return RowNamed("Later") != 0; }));
    EXPECT_EQ(BottomNames(), (std::vector<std::string>{"home", "Desktop", "Documents", "Downloads",
                                                       "Later", "Projects"}));
    EXPECT_EQ(items->SelectedRow(), RowNamed("Projects"));
    EXPECT_TRUE(told.empty()) << "a change of the list tells the dialog nothing";
}

TEST_F(BTSidebarTest, AChangeWithNothingSelectedSelectsWhatTheDialogShows) {
    MakeSidebar(kTall);
    location = NodeAt(home / "Documents");
    AddBookmark(MakeScratchFolder("more"), "More");
    ASSERT_TRUE(RunUntil([&] { return RowNamed("More") != 0; }));
    EXPECT_EQ(told, std::vector<std::string>{"asked"});
    EXPECT_EQ(items->SelectedRow(), RowNamed("Documents"));
}

TEST_F(BTSidebarTest, AClickPicksTheRowAndTellsTheDialogWithTheModifiers) {
    MakeSidebar(kTall);
    int desktop = RowNamed("Desktop");
    HeadlessDriver::ClickAt(window, RowPoint(desktop), cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(told, std::vector<std::string>{"chosen:Desktop"});
    EXPECT_EQ(lastChosen, NodeAt(home / "Desktop"));
    EXPECT_EQ(lastModifiers & cmdKey, unsigned(cmdKey));
    EXPECT_EQ(items->SelectedRow(), desktop);

    // A bookmark's row tells the folder it leads to.
    HeadlessDriver::ClickAt(window, RowPoint(RowNamed("Projects")));
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[1].rfind("chosen:projects-", 0), 0u) << told[1];

    // Clicking the selected row again says nothing new; the space below the rows is no row.
    HeadlessDriver::ClickAt(window, RowPoint(RowNamed("Projects")));
    HeadlessDriver::ClickAt(window, {100, 385});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(BTSidebarTest, TheDialogsLocationSelectsItsRowOrNone) {
    MakeSidebar(kTall);
    ReportLocation(NodeAt(home / "Documents"));
    EXPECT_EQ(items->SelectedRow(), RowNamed("Documents"));
    // A bookmark's folder is found through the list's own entry for it.
    TKelNode projects;
    ASSERT_EQ(sidebar->GetItem(RowNamed("Projects") - 1)->node.FollowAlias(true, projects), noErr);
    ReportLocation(projects);
    EXPECT_EQ(items->SelectedRow(), RowNamed("Projects"));
    std::filesystem::create_directories(home / "Documents/inner");
    ReportLocation(NodeAt(home / "Documents/inner"));
    EXPECT_EQ(items->SelectedRow(), 0) << "a place with no row shows no selection";
    EXPECT_TRUE(told.empty());
}

TEST_F(BTSidebarTest, TheDialogsReportOfTheChosenVolumeSelectsNothingAnew) {
    MakeSidebar(kTall);
    int desktop = RowNamed("Desktop");
    HeadlessDriver::ClickAt(window, RowPoint(desktop));
    HeadlessDriver::RunUntilIdle();
    TKelNode volume = NodeAt(home / "Desktop");
    while (!NodeIsVolume(volume.PeekNodeRef()))
        volume = volume.GetParent();
    ReportLocation(volume);
    EXPECT_EQ(items->SelectedRow(), desktop);
    // Only once: a later report of the volume selects its row, if it has one, or none.
    ReportLocation(volume);
    EXPECT_EQ(items->SelectedRow(), sidebar->LocateNode(volume.PeekNodeRef()));
}

TEST_F(BTSidebarTest, TheSplitterSnapsTheWidthToIconsNamesOrClosed) {
    MakeSidebar(kTall);
    const float icons = float(items->IconSize() + 10);
    const float optimal = items->GetOptimalWidth();
    ASSERT_GT(optimal, icons + 30);
    auto snapped = [&](float width) {
        BGRect frame = BGRectMake(0, 0, width, 300);
        EXPECT_EQ(_BTSidebarConstrainFrame(view, &frame), noErr);
        return float(frame.size.width);
    };
    EXPECT_EQ(snapped(icons * 0.5f - 1), 0);
    EXPECT_EQ(snapped(icons * 0.5f), icons);
    EXPECT_EQ(snapped(icons + 7), icons);
    EXPECT_EQ(snapped(icons + 8), icons + 8);
    EXPECT_EQ(snapped(optimal + 1), optimal);
    EXPECT_EQ(snapped(optimal + 15), optimal);
    EXPECT_EQ(snapped(optimal + 16), optimal + 16);

    // The width the names want is measured once: names that come later do not change it.
    AddBookmark(MakeScratchFolder("long"), "A bookmark with a very much longer label than most");
    ASSERT_TRUE(RunUntil([&] { return BottomNames().size() == 6; }));
    EXPECT_EQ(items->GetOptimalWidth(), optimal);

    BGRect frame{};
    ControlRef root = nullptr;
    GetRootControl(window, &root);
    EXPECT_EQ(_BTSidebarConstrainFrame(root, &frame), paramErr);
    EXPECT_EQ(_BTSidebarSetFilter(root, nullptr), paramErr);
}

TEST_F(BTSidebarTest, RowsTheDialogsFilterRefusesCannotBeChosen) {
    MakeSidebar(kTall);
    TKelClient client{nullptr, nullptr, nullptr, nullptr, NodeCode("bfrf")};
    NodeFilterMaskSet filesOnly;
    filesOnly.select = kNodeSpeciesFile | kNodeSpeciesRoot;
    TNodeFilter filter(client, 0, filesOnly, nullptr, 0);
    ASSERT_EQ(_BTSidebarSetFilter(view, &filter), noErr);
    HeadlessDriver::ClickAt(window, RowPoint(RowNamed("Desktop")));
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(items->SelectedRow(), 0);
    HeadlessDriver::ClickAt(window, RowPoint(1));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(items->SelectedRow(), 1) << "the computer can always be chosen";
    _BTSidebarSetFilter(view, nullptr);
}
