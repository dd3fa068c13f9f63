// The rubber band of list view: which rows a band selects with and without shift and command,
// that it is drawn while the button is held and gone after, and that it scrolls the list when
// the mouse leaves the rows.

#include "FakeSource.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <cmath>
#include <gtest/gtest.h>

using basalt::gridbrowser::GridBrowserView;
using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

constexpr BGFloat kRow = 18;

class BandTest : public ::testing::Test {
protected:
    BrowserWindow browser{kGridBrowserListView};
    FakeSource source;
    GridBrowserItemID apples = 0, banana = 0, cherry = 0, date = 0, elder = 0;
    double now = 100;

    void SetUp() override {
        apples = source.Add(FakeSource::kRoot, "Apples", true);
        banana = source.Add(FakeSource::kRoot, "banana");
        cherry = source.Add(FakeSource::kRoot, "Cherry");
        date = source.Add(FakeSource::kRoot, "date");
        elder = source.Add(FakeSource::kRoot, "Elder", true);
        source.Attach(browser.control);
        source.AddFileColumns();
        GridBrowserView::FromControl(browser.control)->clock = [this] { return now; };
        SetGridBrowserTarget(browser.control, FakeSource::kRoot);
        HeadlessDriver::RunUntilIdle();
        source.messages.clear();
    }

    static BGFloat Header() { return gridtest::HeaderHeight(); }
    static BGPoint At(BGFloat row, BGFloat x = 300) { return {x, Header() + kRow * row}; }
    std::vector<GridBrowserItemID> Selected() {
        return gridtest::ItemsOf(browser.control, 0, true, kGridBrowserItemIsSelected);
    }
    void Band(BGFloat from, BGFloat to, uint32_t modifiers = 0) {
        HeadlessDriver::Drag(browser.window, At(from), At(to), modifiers);
        HeadlessDriver::RunUntilIdle();
        now += 1;
    }
    uint32_t ScrollTop() {
        uint32_t top = 0, left = 0;
        GetGridBrowserScrollPosition(browser.control, &top, &left);
        return top;
    }
};

TEST_F(BandTest, ABandSelectsTheRowsItCrossesShiftAddsAndCommandToggles) {
    source.items[date].selectable = false;
    Band(1.5, 4.5);
    EXPECT_EQ(Selected(), (std::vector{banana, cherry, elder})) << "the row that can't be chosen";
    EXPECT_EQ(source.MessageLog(), "14:- 14:-") << "the press, then the band";

    Band(0.5, 0.5);
    EXPECT_EQ(Selected(), std::vector{apples}) << "no movement: a plain click";
    Band(2.5, 1.5, shiftKey);
    EXPECT_EQ(Selected(), (std::vector{apples, banana, cherry}));
    Band(4.5, 2.5, cmdKey);
    EXPECT_EQ(Selected(), (std::vector{apples, banana, elder}));

    source.messages.clear();
    now -= 0.9; // soon after the band's press: still no double click
    Band(4.5, 4.5);
    EXPECT_EQ(source.MessageLog(), "14:-");
    Band(4.5, 2.5, cmdKey);

    // Keys and shift-clicks go on from the band's far end.
    HeadlessDriver::PressKey(kVK_UpArrow);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Selected(), std::vector{banana});
}

TEST_F(BandTest, ABandFromTheEmptySpaceBelowTheRowsReachesUpIntoThem) {
    Band(0.5, 0.5);
    Band(8.5, 3.5);
    EXPECT_EQ(Selected(), (std::vector{date, elder}));
    Band(8.5, 8.6);
    EXPECT_TRUE(Selected().empty()) << "a press in the empty space lets go of the selection";
    Band(0.5, 0.5);
    Band(8.5, 8.6, cmdKey);
    EXPECT_EQ(Selected(), std::vector{apples}) << "with command it keeps it";

    SetGridBrowserSelectionFlags(browser.control, kGridBrowserSelectOnlyOne);
    Band(1.5, 4.5);
    EXPECT_EQ(Selected(), std::vector{banana}) << "one item only: no band";
}

TEST_F(BandTest, TheBandIsDrawnWhileTheButtonIsHeld) {
    BGPoint inside = At(7, 200);
    uint32_t before = gridtest::PixelAt(browser.window, inside);
    gridtest::PostMouse(browser.window, kEventMouseDown, At(8.5, 100));
    gridtest::PostMouse(browser.window, kEventMouseDragged, At(6.5, 350));
    HeadlessDriver::RunUntilIdle();
    uint32_t held = gridtest::PixelAt(browser.window, inside);
    EXPECT_GT(int(held & 0xFF), int(held >> 16 & 0xFF)) << "tinted with the accent";
    EXPECT_EQ(gridtest::PixelAt(browser.window, At(7, 450)), before) << "only inside the band";
    gridtest::PostMouse(browser.window, kEventMouseUp, At(6.5, 350));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(gridtest::PixelAt(browser.window, inside), before);
}

TEST_F(BandTest, HoldingTheBandBelowTheRowsScrollsOnAndStopsOnRelease) {
    for (int i = 0; i < 100; ++i)
        source.Add(FakeSource::kRoot, "more " + std::to_string(100 + i));
    SetGridBrowserTarget(browser.control, 0);
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    HeadlessDriver::RunUntilIdle();
    gridtest::PostMouse(browser.window, kEventMouseDown, At(1.5));
    gridtest::PostMouse(browser.window, kEventMouseDragged, At(1.5, 320));
    gridtest::PostMouse(browser.window, kEventMouseDragged, {320, 330}); // below the window
    ASSERT_TRUE(gridtest::RunUntil([&] { return ScrollTop() >= uint32_t(20 * kRow); }));
    gridtest::PostMouse(browser.window, kEventMouseUp, {320, 330});
    HeadlessDriver::RunUntilIdle();
    uint32_t top = ScrollTop();
    auto end = size_t(std::ceil((top + 300 - Header()) / kRow));
    EXPECT_EQ(Selected().size(), end - 1) << "every row from the press to the bottom in sight";
    EXPECT_FALSE(IsGridBrowserItemSelected(browser.control, apples));
    HeadlessDriver::RunFor(0.2);
    EXPECT_EQ(ScrollTop(), top) << "the release stops the scrolling";
}

} // namespace
