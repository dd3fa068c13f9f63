// Column view driven through the headless driver: the path and its columns, clicks and keys
// across columns, the messages in their order, the preview slot and the shared width.

#include "FakeSource.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <filesystem>
#include <gtest/gtest.h>

using basalt::gridbrowser::GridBrowserView;
using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

constexpr BGFloat kRow = 18;
constexpr BGFloat kWidth = 170;

std::vector<GridBrowserItemID> ReportedPath(ControlRef control) {
    Handle handle = NewHandle(0);
    GetGridBrowserColumnViewPath(control, handle);
    return gridtest::TakeIds(handle);
}

class ColumnTest : public ::testing::Test {
protected:
    BrowserWindow browser{kGridBrowserColumnView, 600, 300};
    FakeSource source;
    GridBrowserItemID docs = 0, music = 0, notes = 0, plans = 0, drafts = 0, old = 0, readme = 0;
    double now = 100;

    void SetUp() override {
        docs = source.Add(FakeSource::kRoot, "Documents", true);
        music = source.Add(FakeSource::kRoot, "Music", true);
        readme = source.Add(FakeSource::kRoot, "readme.txt");
        notes = source.Add(docs, "notes.txt");
        plans = source.Add(docs, "plans.txt");
        drafts = source.Add(docs, "Drafts", true);
        old = source.Add(drafts, "old.txt");
        source.Attach(browser.control);
        GridBrowserView::FromControl(browser.control)->clock = [this] { return now; };
        SetKeyboardFocus(browser.window, browser.control, kControlFocusNextPart);
    }

    GridBrowserItemID Target() {
        GridBrowserItemID target = 0;
        GetGridBrowserTarget(browser.control, &target);
        return target;
    }
    void ClickAt(size_t column, size_t row, uint32_t modifiers = 0) {
        HeadlessDriver::ClickAt(browser.window, {kWidth * column + 40, kRow * row + kRow / 2},
                                modifiers);
        HeadlessDriver::RunUntilIdle();
        now += 1;
    }
    void Key(uint16_t code) {
        HeadlessDriver::PressKey(code);
        HeadlessDriver::RunUntilIdle();
    }
};

TEST_F(ColumnTest, APathOpensOneColumnPerContainerAndAFileAtItsEndIsSelected) {
    std::vector path = {FakeSource::kRoot, docs, plans};
    ASSERT_EQ(SetGridBrowserColumnViewPath(browser.control, 3, path.data()), noErr);
    EXPECT_EQ(source.MessageLog(), "8:root 8:Documents 15:Documents");
    EXPECT_EQ(Target(), docs);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, plans));
    EXPECT_EQ(ReportedPath(browser.control), path);

    source.messages.clear();
    std::vector shorter = {FakeSource::kRoot, music};
    SetGridBrowserColumnViewPath(browser.control, 2, shorter.data());
    EXPECT_EQ(source.MessageLog(), "10:Documents 8:Music 15:Music")
        << "the common column stays open";
}

TEST_F(ColumnTest, ClickingAFolderOpensItsColumnAndAFileLeftOfItClosesIt) {
    SetGridBrowserColumnViewPath(browser.control, 1, &FakeSource::kRoot);
    source.messages.clear();
    ClickAt(0, 0); // Documents
    EXPECT_EQ(source.MessageLog(), "8:Documents 15:Documents 14:-");
    EXPECT_EQ(ReportedPath(browser.control), (std::vector{FakeSource::kRoot, docs}));

    ClickAt(1, 0); // Drafts, sorted first in Documents
    source.messages.clear();
    ClickAt(0, 2); // readme.txt
    EXPECT_EQ(source.MessageLog(), "10:Drafts 10:Documents 15:root 14:-");
    EXPECT_EQ(ReportedPath(browser.control), (std::vector{FakeSource::kRoot, readme}));
    EXPECT_EQ(Target(), FakeSource::kRoot);
}

TEST_F(ColumnTest, CommandClicksSelectSeveralFilesOfOneColumn) {
    std::vector path = {FakeSource::kRoot, docs};
    SetGridBrowserColumnViewPath(browser.control, 2, path.data());
    ClickAt(1, 1);
    ClickAt(1, 2, cmdKey);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, notes));
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, plans));
    EXPECT_EQ(Target(), docs);
    uint32_t count = 0;
    GetGridBrowserItemCount(browser.control, docs, false, kGridBrowserItemIsSelected, &count);
    EXPECT_EQ(count, 2u);
}

TEST_F(ColumnTest, ArrowKeysMoveWithinAndAcrossColumns) {
    SetGridBrowserColumnViewPath(browser.control, 1, &FakeSource::kRoot);
    Key(kVK_DownArrow);
    EXPECT_EQ(Target(), docs) << "moving onto a folder opens it";
    Key(kVK_RightArrow);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, drafts) || Target() == drafts);
    EXPECT_EQ(Target(), drafts);
    Key(kVK_DownArrow);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, notes));
    EXPECT_EQ(Target(), docs);
    source.messages.clear();
    Key(kVK_LeftArrow);
    EXPECT_EQ(Target(), docs);
    EXPECT_EQ(ReportedPath(browser.control), (std::vector{FakeSource::kRoot, docs}));
    EXPECT_EQ(source.MessageLog(), "14:-") << "the open column stays open, rows and all";
    Key(kVK_LeftArrow);
    EXPECT_EQ(Target(), docs) << "the first column has nothing to its left";
    Key(kVK_DownArrow);
    EXPECT_EQ(Target(), music);
}

TEST_F(ColumnTest, DeepPathsScrollSoThatTheLastColumnStaysInSight) {
    GridBrowserItemID parent = FakeSource::kRoot;
    std::vector<GridBrowserItemID> path = {parent};
    for (int level = 0; level < 6; ++level) {
        parent = source.Add(parent, "level " + std::to_string(level), true);
        path.push_back(parent);
    }
    SetGridBrowserColumnViewPath(browser.control, uint32_t(path.size()), path.data());
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, uint32_t(kWidth * 7 - 600));
    RevealGridBrowserItem(browser.control, path[1], kGridBrowserItemSelfIdentityProperty, 1);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 0u);

    // The bottom bar's thumb, dragged all the way right, shows the last column again; taken
    // under a column's edge, it is still the thumb.
    BGFloat barY = 300 - GridBrowserView::kBarWidth / 2;
    HeadlessDriver::Drag(browser.window, {kWidth, barY}, {590, barY});
    HeadlessDriver::RunUntilIdle();
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, uint32_t(kWidth * 7 - 600));
    EXPECT_EQ(Target(), path.back()) << "the bar is no column";
    uint16_t width = 0;
    GetGridBrowserTableViewColumnWidth(browser.control, &width);
    EXPECT_EQ(width, kWidth);
}

// Deltas as a touchpad's smooth scrolling gives them: in points, fractions included.
TEST_F(ColumnTest, ASidewaysWheelScrollsThroughTheColumnsAndAnUprightOneDownAColumn) {
    for (int i = 0; i < 40; ++i)
        source.Add(drafts, "y file " + std::to_string(10 + i));
    std::vector path = {FakeSource::kRoot, docs, drafts};
    SetGridBrowserColumnViewPath(browser.control, 3, path.data());
    Rect narrow = {0, 0, 300, 400};
    SetControlBounds(browser.control, &narrow);
    GridBrowserView* view = GridBrowserView::FromControl(browser.control);
    BGPoint overLast = {300, 100};
    view->ScrollByWheel(overLast, 45.5, 0);
    EXPECT_EQ(view->ScrollPosition().x, 3 * kWidth - 400 - 45.5);
    view->ScrollByWheel(overLast, 0, -20.25);
    view->ScrollByWheel(overLast, 0, -20.25);
    EXPECT_EQ(view->ColumnScroll(2), 40.5) << "the column under the mouse";
    EXPECT_EQ(view->ColumnScroll(1), 0);
    view->ScrollByWheel(overLast, 500, 0);
    EXPECT_EQ(view->ScrollPosition().x, 0) << "no further than the first column";

    // A wheel with shift held turns sideways.
    gridtest::PostMouse(browser.window, kEventMouseWheelMoved, overLast, shiftKey, -2);
    HeadlessDriver::RunUntilIdle();
    EXPECT_GT(view->ScrollPosition().x, 0);
    EXPECT_EQ(view->ColumnScroll(2), 40.5) << "and not down";

    // So does a wheel that turns sideways by itself, such as a tilt wheel's.
    BGFloat before = view->ScrollPosition().x;
    gridtest::PostMouse(browser.window, kEventMouseWheelMoved, overLast, 0, -2,
                        kEventMouseWheelAxisX);
    HeadlessDriver::RunUntilIdle();
    EXPECT_GT(view->ScrollPosition().x, before);
    EXPECT_EQ(view->ColumnScroll(2), 40.5);
}

TEST_F(ColumnTest, ANarrowerControlOrWiderColumnsStillShowTheLastColumn) {
    std::vector path = {FakeSource::kRoot, docs, drafts};
    SetGridBrowserColumnViewPath(browser.control, 3, path.data());
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 0u) << "three columns fit in 600";
    Rect narrow = {0, 0, 300, 400};
    SetControlBounds(browser.control, &narrow);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, uint32_t(3 * kWidth - 400));
    Rect wide = {0, 0, 300, 900};
    SetControlBounds(browser.control, &wide);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 0u);

    // A width restored from the preferences after the path was shown.
    SetGridBrowserTableViewColumnWidth(browser.control, 400);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 3 * 400u - 900u);
}

TEST_F(ColumnTest, AColumnsOwnBarPagesAndItsThumbDrags) {
    for (int i = 0; i < 40; ++i)
        source.Add(FakeSource::kRoot, "z file " + std::to_string(10 + i));
    SetGridBrowserColumnViewPath(browser.control, 1, &FakeSource::kRoot);
    GridBrowserView* view = GridBrowserView::FromControl(browser.control);
    BGFloat barX = kWidth - 1 - GridBrowserView::kBarWidth / 2;
    HeadlessDriver::ClickAt(browser.window, {barX, 290});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(view->ColumnScroll(0), 300) << "a page down";
    EXPECT_EQ(Target(), FakeSource::kRoot) << "nothing chosen";

    // 43 rows in 300 points: a thumb of 116 points with 184 to travel over 474 of rows.
    view->ColumnScroll(0) = 0;
    HeadlessDriver::Drag(browser.window, {barX, 10}, {barX, 102});
    HeadlessDriver::RunUntilIdle();
    EXPECT_NEAR(view->ColumnScroll(0), 92.0 * 474 / 184, 1);

    // A path set from outside shows the row of each column that leads on.
    GridBrowserItemID last = source.Add(FakeSource::kRoot, "zz folder", true);
    GridBrowserItemID deep = source.Add(last, "zz file");
    AddGridBrowserItems(browser.control, FakeSource::kRoot, 1, &last, 0);
    std::vector path = {FakeSource::kRoot, last, deep};
    SetGridBrowserColumnViewPath(browser.control, 3, path.data());
    EXPECT_EQ(view->ColumnScroll(0), 44 * 18 - 300) << "the last row, at the bottom";
    path = {FakeSource::kRoot};
    SetGridBrowserColumnViewPath(browser.control, 1, path.data());

    // Most rows go: the column scrolls back to show what is left.
    std::vector<GridBrowserItemID> gone = source.ChildrenOf(FakeSource::kRoot);
    gone.resize(39);
    RemoveGridBrowserItems(browser.control, FakeSource::kRoot, uint32_t(gone.size()), gone.data(),
                           0);
    EXPECT_EQ(view->ColumnScroll(0), 0);
}

TEST_F(ColumnTest, DraggingAColumnEdgeResizesEveryColumn) {
    std::vector path = {FakeSource::kRoot, docs};
    SetGridBrowserColumnViewPath(browser.control, 2, path.data());
    HeadlessDriver::Drag(browser.window, {kWidth, 100}, {kWidth + 40, 100});
    HeadlessDriver::RunUntilIdle();
    uint16_t width = 0;
    GetGridBrowserTableViewColumnWidth(browser.control, &width);
    EXPECT_EQ(width, uint16_t(kWidth + 40));
    HeadlessDriver::Drag(browser.window, {kWidth + 40, 100}, {20, 100});
    HeadlessDriver::RunUntilIdle();
    GetGridBrowserTableViewColumnWidth(browser.control, &width);
    EXPECT_EQ(width, 100u) << "columns keep a useful width";
}

TEST_F(ColumnTest, SwitchingStylesReopensTheTargetInTheNewStyle) {
    std::vector path = {FakeSource::kRoot, docs};
    SetGridBrowserColumnViewPath(browser.control, 2, path.data());
    source.messages.clear();
    ASSERT_EQ(SetGridBrowserViewStyle(browser.control, kGridBrowserListView), noErr);
    EXPECT_EQ(source.MessageLog(), "10:Documents 10:root 8:Documents 15:Documents");
    EXPECT_EQ(SetGridBrowserViewStyle(browser.control, 0x77686174), kGridBrowserBadStyle);
}

TEST_F(ColumnTest, TheWheelScrollsTheColumnUnderTheMouseAlone) {
    for (int i = 0; i < 40; ++i)
        source.Add(FakeSource::kRoot, "z file " + std::to_string(10 + i));
    for (int i = 0; i < 40; ++i)
        source.Add(docs, "x file " + std::to_string(10 + i));
    std::vector path = {FakeSource::kRoot, docs};
    SetGridBrowserColumnViewPath(browser.control, 2, path.data());
    HeadlessDriver::Scroll(browser.window, {40, 100}, -4);
    HeadlessDriver::RunUntilIdle();
    ClickAt(1, 0);
    EXPECT_EQ(Target(), drafts) << "the second column did not move";
    ClickAt(0, 0);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, source.Find("z file 11")))
        << "Documents, Music, readme.txt, z file 10 went by";
}

TEST_F(ColumnTest, TypingSelectsInTheFocusedColumn) {
    std::vector path = {FakeSource::kRoot, docs, notes};
    SetGridBrowserColumnViewPath(browser.control, 3, path.data());
    source.messages.clear();
    HeadlessDriver::TypeText("pl");
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, plans));
    EXPECT_FALSE(IsGridBrowserItemSelected(browser.control, notes));
    EXPECT_EQ(Target(), docs);
    EXPECT_EQ(source.MessageLog(), "14:-") << "the second key kept the selection";
    source.messages.clear();
    ClickAt(1, 0); // Drafts
    ClickAt(1, 0);
    EXPECT_EQ(source.MessageLog(), "8:Drafts 15:Drafts 14:-")
        << "a second click on the open folder changes nothing";
}

TEST(ColumnSnapshotTest, ThreeLevelsDeepAtOneAndTwoTimes) {
    for (double scale : {1.0, 2.0}) {
        HeadlessDriver::SetScale(scale);
        BrowserWindow shown(kGridBrowserColumnView, 720, 260);
        FakeSource source;
        GridBrowserItemID home = source.Add(FakeSource::kRoot, "Home", true);
        source.Add(FakeSource::kRoot, "Applications", true);
        source.Add(FakeSource::kRoot, "System", true);
        GridBrowserItemID projects = source.Add(home, "Projects", true);
        source.Add(home, "Pictures", true);
        source.Add(home, "notes.txt");
        GridBrowserItemID report = source.Add(projects, "report-with-a-rather-long-name.pdf");
        source.Add(projects, "budget.ods");
        source.items[source.Add(projects, "locked.bin")].active = false;
        source.Attach(shown.control);
        SetKeyboardFocus(shown.window, shown.control, kControlFocusNextPart);
        std::vector path = {FakeSource::kRoot, home, projects, report};
        SetGridBrowserColumnViewPath(shown.control, 4, path.data());
        std::filesystem::path png =
            std::filesystem::path(KEL_TEST_BINARY_DIR) /
            (scale == 1 ? "gridbrowser-columns@1x.png" : "gridbrowser-columns@2x.png");
        ASSERT_EQ(HeadlessDriver::WritePNG(shown.window, png), noErr);
        EXPECT_GT(std::filesystem::file_size(png), 2000u);
        EXPECT_FALSE(source.previewsDrawn.empty());
    }
    HeadlessDriver::SetScale(1);
}

} // namespace
