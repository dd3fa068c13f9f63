// List view driven through the headless driver: selection, keys, sorting, disclosure,
// type-to-select, the messages and their order, virtualisation, and what is drawn.

#include "FakeSource.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

using basalt::gridbrowser::GridBrowserView;
using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

constexpr BGFloat kRow = 18;
using gridtest::ItemsOf;

BGFloat Header() {
    return gridtest::HeaderHeight();
}

class ListTest : public ::testing::Test {
protected:
    BrowserWindow browser{kGridBrowserListView};
    FakeSource source;
    GridBrowserItemID apples = 0, seed = 0, core = 0, banana = 0, cherry = 0, date = 0, elder = 0;
    double now = 100;

    void SetUp() override {
        apples = source.Add(FakeSource::kRoot, "Apples", true);
        seed = source.Add(apples, "seed");
        core = source.Add(apples, "core", true);
        source.Add(core, "pip");
        elder = source.Add(FakeSource::kRoot, "Elder", true);
        date = source.Add(FakeSource::kRoot, "date");
        cherry = source.Add(FakeSource::kRoot, "Cherry");
        banana = source.Add(FakeSource::kRoot, "banana");
        source.Attach(browser.control);
        source.AddFileColumns();
        View()->clock = [this] { return now; };
        SetKeyboardFocus(browser.window, browser.control, kControlFocusNextPart);
        ASSERT_EQ(SetGridBrowserTarget(browser.control, FakeSource::kRoot), noErr);
        HeadlessDriver::RunUntilIdle();
        source.messages.clear();
    }

    GridBrowserView* View() { return GridBrowserView::FromControl(browser.control); }
    std::vector<GridBrowserItemID> Rows() { return ItemsOf(browser.control, 0, true, 0); }
    std::vector<GridBrowserItemID> Selected() { return ItemsOf(browser.control, 0, true, 1); }
    BGPoint RowPoint(size_t row, BGFloat x = 120) { return {x, Header() + kRow * row + kRow / 2}; }
    void Click(size_t row, uint32_t modifiers = 0) {
        HeadlessDriver::ClickAt(browser.window, RowPoint(row), modifiers);
        HeadlessDriver::RunUntilIdle();
        now += 1; // far enough apart not to make a double click
    }
    void Key(uint16_t code, uint32_t modifiers = 0) {
        HeadlessDriver::PressKey(code, modifiers);
        HeadlessDriver::RunUntilIdle();
    }
};

TEST_F(ListTest, TargetRowsAreSortedByNameIgnoringCase) {
    EXPECT_EQ(Rows(), (std::vector{apples, banana, cherry, date, elder}));
    GridBrowserItemID target = 0;
    GetGridBrowserTarget(browser.control, &target);
    EXPECT_EQ(target, FakeSource::kRoot);
}

// A source that lists a folder again (a second open of the same container) must not show any
// of its rows twice, nor move a row listed under another container.
TEST_F(ListTest, RowsAddedAgainAreListedOnce) {
    OpenGridBrowserContainer(browser.control, apples);
    HeadlessDriver::RunUntilIdle();
    const auto before = Rows();
    std::vector<GridBrowserItemID> again{cherry, banana, cherry, seed};
    EXPECT_EQ(AddGridBrowserItems(browser.control, FakeSource::kRoot, uint32_t(again.size()),
                                  again.data(), 0),
              noErr);
    EXPECT_EQ(AddGridBrowserItems(browser.control, apples, 1, &seed, 0), noErr);
    EXPECT_EQ(Rows(), before);
    uint32_t count = 0;
    GetGridBrowserItemCount(browser.control, 0, true, kGridBrowserItemAnyState, &count);
    EXPECT_EQ(count, before.size());
}

TEST_F(ListTest, SettingATargetClosesTheOldContainersDeepestFirstThenOpensTheNew) {
    OpenGridBrowserContainer(browser.control, apples);
    OpenGridBrowserContainer(browser.control, core);
    source.messages.clear();
    ASSERT_EQ(SetGridBrowserTarget(browser.control, elder), noErr);
    EXPECT_EQ(source.MessageLog(), "10:core 10:Apples 10:root 8:Elder 15:Elder");
    source.messages.clear();
    EXPECT_EQ(SetGridBrowserTarget(browser.control, elder), noErr);
    EXPECT_EQ(source.MessageLog(), "") << "the same target again changes nothing";
    SetGridBrowserTarget(browser.control, 0);
    EXPECT_EQ(source.MessageLog(), "10:Elder 15:-");
    EXPECT_TRUE(Rows().empty());
}

TEST_F(ListTest, ClickShiftAndCommandBuildTheSelection) {
    Click(1);
    EXPECT_EQ(Selected(), std::vector{banana});
    Click(3, shiftKey);
    EXPECT_EQ(Selected(), (std::vector{banana, cherry, date}));
    Click(2, cmdKey);
    EXPECT_EQ(Selected(), (std::vector{banana, date}));
    Click(0, cmdKey);
    EXPECT_EQ(Selected(), (std::vector{apples, banana, date}));
    EXPECT_EQ(source.MessageLog(), "14:- 14:- 14:- 14:-");

    SetGridBrowserSelectionFlags(browser.control, kGridBrowserSelectOnlyOne);
    Click(4, shiftKey);
    EXPECT_EQ(Selected(), std::vector{elder}) << "one item only: shift selects just the row";
}

TEST_F(ListTest, ClickingBelowTheRowsClearsTheSelection) {
    Click(1);
    Click(9);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(source.MessageLog(), "14:- 14:-");
}

TEST_F(ListTest, AnUnselectableRowReportsTheClickAndKeepsTheSelection) {
    source.items[cherry].selectable = false;
    Click(1);
    source.messages.clear();
    Click(2);
    EXPECT_EQ(Selected(), std::vector{banana});
    EXPECT_EQ(source.MessageLog(), "1000:Cherry");
    Key(kVK_DownArrow);
    EXPECT_EQ(Selected(), std::vector{date}) << "the keys step over it";
}

TEST_F(ListTest, ASecondClickSoonOnTheSameRowIsADoubleClick) {
    HeadlessDriver::ClickAt(browser.window, RowPoint(2));
    now += 0.2;
    HeadlessDriver::ClickAt(browser.window, RowPoint(2));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(source.MessageLog(), "14:- 7:Cherry");

    source.messages.clear();
    now += 5;
    Click(2);
    now += 0.2;
    Click(3);
    EXPECT_EQ(source.MessageLog(), "14:-") << "slow or on another row: single clicks";
}

TEST_F(ListTest, HeaderClicksSortByTheColumnAndASecondClickReverses) {
    BGPoint dateHeader = {228 + 50, Header() / 2};
    HeadlessDriver::ClickAt(browser.window, dateHeader);
    HeadlessDriver::RunUntilIdle();
    GridBrowserPropertyID property = 0;
    GridBrowserSortOrder order = 0;
    GetGridBrowserSortProperty(browser.control, &property);
    GetGridBrowserSortOrder(browser.control, &order);
    EXPECT_EQ(property, GridBrowserPropertyID(kGridBrowserDateProperty));
    EXPECT_EQ(order, kGridBrowserOrderIncreasing);
    // The source sorts dates newest first; later ids are newer.
    EXPECT_EQ(Rows(), (std::vector{banana, cherry, date, elder, apples}));

    HeadlessDriver::ClickAt(browser.window, dateHeader);
    HeadlessDriver::RunUntilIdle();
    GetGridBrowserSortOrder(browser.control, &order);
    EXPECT_EQ(order, kGridBrowserOrderDecreasing);
    EXPECT_EQ(Rows(), (std::vector{apples, elder, date, cherry, banana}));
    EXPECT_EQ(source.MessageLog(), "") << "rows that the control sorts send no message";
}

TEST_F(ListTest, SortingAPresortedContainerIsLeftToTheSource) {
    GridBrowserItemID hits = source.Add(0, "hits", true);
    source.fillOnOpen = false;
    SetGridBrowserTarget(browser.control, hits);
    std::vector ordered = {elder, banana, apples};
    AddGridBrowserItems(browser.control, hits, 3, ordered.data(),
                        kGridBrowserItemSelfIdentityProperty);
    source.messages.clear();
    HeadlessDriver::ClickAt(browser.window, {60, Header() / 2});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Rows(), ordered);
    EXPECT_EQ(source.MessageLog(), "1001:hits");
}

TEST_F(ListTest, DisclosureTrianglesOpenAndCloseNestedRowsInPlace) {
    HeadlessDriver::ClickAt(browser.window, RowPoint(0, 9));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(source.MessageLog(), "8:Apples");
    EXPECT_EQ(Rows(), (std::vector{apples, core, seed, banana, cherry, date, elder}));
    EXPECT_TRUE(Selected().empty()) << "the triangle doesn't select";

    HeadlessDriver::ClickAt(browser.window, RowPoint(1, 9 + GridBrowserView::kIndent));
    HeadlessDriver::RunUntilIdle();
    Click(2); // pip, two levels down
    EXPECT_EQ(Selected(), std::vector{source.Find("pip")});
    source.messages.clear();

    HeadlessDriver::ClickAt(browser.window, RowPoint(0, 9));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(source.MessageLog(), "10:core 10:Apples 14:-");
    EXPECT_EQ(Rows(), (std::vector{apples, banana, cherry, date, elder}));
    EXPECT_TRUE(Selected().empty()) << "rows that went are no longer selected";
}

TEST_F(ListTest, ArrowAndJumpKeysMoveTheSelectionAndShiftExtendsIt) {
    Key(kVK_DownArrow);
    EXPECT_EQ(Selected(), std::vector{apples});
    Key(kVK_DownArrow);
    EXPECT_EQ(Selected(), std::vector{banana});
    Key(kVK_DownArrow, shiftKey);
    Key(kVK_DownArrow, shiftKey);
    EXPECT_EQ(Selected(), (std::vector{banana, cherry, date}));
    Key(kVK_UpArrow, shiftKey);
    EXPECT_EQ(Selected(), (std::vector{banana, cherry}));
    Key(kVK_End);
    EXPECT_EQ(Selected(), std::vector{elder});
    Key(kVK_Home);
    EXPECT_EQ(Selected(), std::vector{apples});
    Key(kVK_DownArrow, optionKey);
    EXPECT_EQ(Selected(), std::vector{elder}) << "option-down: the last row";
    Key(kVK_UpArrow, optionKey | shiftKey);
    EXPECT_EQ(Selected().size(), 5u) << "and shift extends to the first";
    Key(kVK_Home);
    Key(kVK_UpArrow);
    EXPECT_EQ(Selected(), std::vector{apples}) << "the top stays the top";
    Key(kVK_ANSI_A, cmdKey);
    EXPECT_EQ(Selected().size(), 5u);
}

TEST_F(ListTest, RightAndLeftOpenACloseAndClimbOutOfDisclosures) {
    Key(kVK_DownArrow);
    source.messages.clear();
    Key(kVK_RightArrow);
    EXPECT_EQ(source.MessageLog(), "8:Apples");
    Key(kVK_RightArrow);
    EXPECT_EQ(Selected(), std::vector{core}) << "right on an open row steps into it";
    Key(kVK_LeftArrow);
    EXPECT_EQ(Selected(), std::vector{apples}) << "left on a closed child goes to its parent";
    source.messages.clear();
    Key(kVK_LeftArrow);
    EXPECT_EQ(source.MessageLog(), "10:Apples");

    GridBrowserItemID zeta = source.Add(FakeSource::kRoot, "zeta");
    AddGridBrowserItems(browser.control, FakeSource::kRoot, 1, &zeta, 0);
    Key(kVK_End);
    Key(kVK_UpArrow);
    Key(kVK_RightArrow);
    Key(kVK_RightArrow);
    EXPECT_EQ(Selected(), std::vector{elder}) << "an empty open folder has no row to step into";
}

TEST_F(ListTest, TypingSelectsByNamePrefixAndAPauseStartsAnew) {
    HeadlessDriver::TypeText("CH");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Selected(), std::vector{cherry});
    now += 0.3;
    HeadlessDriver::TypeText("x");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Selected(), std::vector{date}) << "\"chx\" matches nothing: the next name after";
    now += 5;
    HeadlessDriver::TypeText("b");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Selected(), std::vector{banana});

    source.items[cherry].selectable = false;
    now += 5;
    HeadlessDriver::TypeText("ch");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Selected(), std::vector{date}) << "a row that can't be chosen isn't typed to";
}

TEST_F(ListTest, RemovingRowsDropsThemFromTheSelectionAndClosesThem) {
    OpenGridBrowserContainer(browser.control, apples);
    Click(0);
    Click(3, shiftKey);
    source.messages.clear();
    std::vector gone = {apples, banana};
    ASSERT_EQ(RemoveGridBrowserItems(browser.control, FakeSource::kRoot, 2, gone.data(), 0), noErr);
    EXPECT_EQ(source.MessageLog(), "10:Apples 14:-");
    EXPECT_EQ(Selected(), std::vector<GridBrowserItemID>{});
    EXPECT_EQ(Rows(), (std::vector{cherry, date, elder}));
    EXPECT_EQ(RemoveGridBrowserItems(browser.control, 777, 1, gone.data(), 0),
              kGridBrowserItemNotFound);
}

TEST_F(ListTest, DraggingAHeaderEdgeResizesTheColumnWithinItsLimits) {
    HeadlessDriver::Drag(browser.window, {228, Header() / 2}, {300, Header() / 2});
    HeadlessDriver::RunUntilIdle();
    uint16_t width = 0;
    GetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, &width);
    EXPECT_EQ(width, 300);
    HeadlessDriver::Drag(browser.window, {300, Header() / 2}, {20, Header() / 2});
    HeadlessDriver::RunUntilIdle();
    GetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, &width);
    EXPECT_EQ(width, 150) << "the column's minimum";
    GridBrowserPropertyID property = 0;
    GetGridBrowserSortProperty(browser.control, &property);
    EXPECT_EQ(property, GridBrowserPropertyID(kGridBrowserNameProperty)) << "a resize isn't a sort";
}

TEST_F(ListTest, AResizeArrowShowsOverAHeaderEdgeAlone) {
    auto cursorAt = [&](BGPoint local) {
        HeadlessDriver::MoveTo(browser.window, local);
        HeadlessDriver::RunUntilIdle();
        return HeadlessDriver::Cursor();
    };
    EXPECT_EQ(cursorAt({228, Header() / 2}), uint32_t(kThemeResizeLeftRightCursor));
    EXPECT_EQ(cursorAt({100, Header() / 2}), uint32_t(kThemeArrowCursor));
    EXPECT_EQ(cursorAt({228, Header() + 30}), uint32_t(kThemeArrowCursor)) << "the rows";
}

TEST_F(ListTest, ColumnsWiderThanTheListScrollSideways) {
    SetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, 450);
    HeadlessDriver::RunUntilIdle();
    HeadlessDriver::ClickAt(browser.window, {495, 300 - GridBrowserView::kBarWidth / 2});
    HeadlessDriver::RunUntilIdle();
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 650u - 500u) << "scrolled as far as the columns go";
    // The date header now starts at 450 - 150 = 300.
    HeadlessDriver::ClickAt(browser.window, {320, Header() / 2});
    HeadlessDriver::RunUntilIdle();
    GridBrowserPropertyID property = 0;
    GetGridBrowserSortProperty(browser.control, &property);
    EXPECT_EQ(property, GridBrowserPropertyID(kGridBrowserDateProperty));
    SetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, 228);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(left, 0u) << "narrower columns take the scroll back";
}

TEST_F(ListTest, DraggingTheThumbScrollsInProportion) {
    for (int i = 0; i < 275; ++i)
        source.Add(FakeSource::kRoot, "more " + std::to_string(1000 + i));
    SetGridBrowserTarget(browser.control, 0);
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    HeadlessDriver::RunUntilIdle();
    // 280 rows under a 280-point area: the thumb is 20 points tall at the top.
    BGFloat barX = 500 - GridBrowserView::kBarWidth / 2;
    HeadlessDriver::Drag(browser.window, {barX, Header() + 10}, {barX, Header() + 140});
    HeadlessDriver::RunUntilIdle();
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    BGFloat range = 280 * kRow - (300 - Header());
    EXPECT_NEAR(top, range / 2, kRow);
    HeadlessDriver::ClickAt(browser.window, {barX, 295});
    HeadlessDriver::RunUntilIdle();
    uint32_t paged = 0;
    GetGridBrowserScrollPosition(browser.control, &paged, &left);
    EXPECT_NEAR(paged, top + (300 - Header()), 1) << "a click below the thumb pages down";
}

TEST_F(ListTest, ARenamedRowMovesOnlyWhenTheUpdateSorts) {
    source.items[banana].name = "zebra";
    _UpdateGridBrowserItemsNoSort(browser.control, FakeSource::kRoot, 1, &banana, 0, 0);
    EXPECT_EQ(Rows(), (std::vector{apples, banana, cherry, date, elder}));
    UpdateGridBrowserItems(browser.control, FakeSource::kRoot, 1, &banana, 0, 0);
    EXPECT_EQ(Rows(), (std::vector{apples, cherry, date, elder, banana}));
}

TEST_F(ListTest, TheSelectionTurnsGreyWhenTheControlLosesTheFocus) {
    Click(1);
    uint32_t focused = gridtest::PixelAt(browser.window, RowPoint(1, 400));
    ClearKeyboardFocus(browser.window);
    HeadlessDriver::RunUntilIdle();
    uint32_t unfocused = gridtest::PixelAt(browser.window, RowPoint(1, 400));
    EXPECT_NE(focused, unfocused);
    int red = int(unfocused >> 16 & 0xFF), blue = int(unfocused & 0xFF);
    EXPECT_LT(std::abs(blue - red), 30) << "a grey, not the accent";
    EXPECT_LT(red, 250) << "still marked";
}

// A list of 20,000 rows: only the rows on screen are asked for, at the top and after a jump,
// and the one sort asks the comparison a bounded number of times.
TEST(ListVirtualTest, OnlyVisibleRowsAreAskedForTheirCells) {
    BrowserWindow browser(kGridBrowserListView);
    FakeSource source;
    std::vector<GridBrowserItemID> ids;
    for (int i = 0; i < 20000; ++i)
        ids.push_back(source.Add(FakeSource::kRoot, "file " + std::to_string(100000 + i)));
    std::reverse(ids.begin(), ids.end());
    source.Attach(browser.control);
    source.AddFileColumns();
    source.fillOnOpen = false;
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    AddGridBrowserItems(browser.control, FakeSource::kRoot, uint32_t(ids.size()), ids.data(), 0);
    EXPECT_LT(source.compares, 20000 * 15 * 2);
    HeadlessDriver::RunUntilIdle();

    size_t visible = size_t((300 - Header()) / kRow) + 2;
    std::set<GridBrowserItemID> first(source.cellsAsked.begin(), source.cellsAsked.end());
    EXPECT_LE(first.size(), visible);
    EXPECT_GE(first.size(), visible - 3);
    EXPECT_TRUE(first.contains(source.Find("file 100000")));

    source.cellsAsked.clear();
    SetGridBrowserScrollPosition(browser.control, uint32_t(kRow * 10000), 0);
    HeadlessDriver::RunUntilIdle();
    std::set<GridBrowserItemID> later(source.cellsAsked.begin(), source.cellsAsked.end());
    EXPECT_LE(later.size(), visible);
    EXPECT_TRUE(later.contains(source.Find("file 110000")));
    EXPECT_FALSE(later.contains(source.Find("file 100000")));
}

TEST_F(ListTest, TheWheelAndThePageKeysScrollLongLists) {
    for (int i = 0; i < 100; ++i)
        source.Add(FakeSource::kRoot, "more " + std::to_string(100 + i));
    SetGridBrowserTarget(browser.control, 0);
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    HeadlessDriver::Scroll(browser.window, RowPoint(2), -3);
    HeadlessDriver::RunUntilIdle();
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_EQ(top, uint32_t(3 * kRow));

    SetGridBrowserScrollPosition(browser.control, 0, 0);
    Key(kVK_PageDown);
    Key(kVK_PageDown);
    GetGridBrowserScrollPosition(browser.control, &top, &left);
    EXPECT_GT(top, 0u) << "the selection moved out of sight and was revealed";
    std::vector<GridBrowserItemID> selected = Selected();
    ASSERT_EQ(selected.size(), 1u);
    auto rows = Rows();
    auto index = size_t(std::find(rows.begin(), rows.end(), selected[0]) - rows.begin());
    EXPECT_GE(index * kRow, top);
    EXPECT_LE((index + 1) * kRow, top + 300 - Header());
}

// The brightness of the darkest pixel in a box, 0 black to 255 white.
int Darkest(WindowRef window, BGRect box) {
    int darkest = 255;
    for (BGFloat y = box.origin.y; y < BGRectGetMaxY(box); ++y)
        for (BGFloat x = box.origin.x; x < BGRectGetMaxX(box); ++x) {
            uint32_t pixel = gridtest::PixelAt(window, {x, y});
            int gray = (int(pixel >> 16 & 0xFF) + int(pixel >> 8 & 0xFF) + int(pixel & 0xFF)) / 3;
            darkest = std::min(darkest, gray);
        }
    return darkest;
}

TEST_F(ListTest, ASelectedRowIsFilledWithTheAccentAndADimmedRowIsPaler) {
    uint32_t before = gridtest::PixelAt(browser.window, RowPoint(1, 400));
    Click(1);
    uint32_t selected = gridtest::PixelAt(browser.window, RowPoint(1, 400));
    uint32_t neighbour = gridtest::PixelAt(browser.window, RowPoint(2, 400));
    EXPECT_NE(selected, before);
    EXPECT_EQ(neighbour, before);
    int blue = int(selected & 0xFF), red = int(selected >> 16 & 0xFF);
    EXPECT_GT(blue, red + 40) << "the accent, not a grey";

    BGRect dateText = {{235, Header() + kRow * 3 + 3}, {150, kRow - 6}};
    int active = Darkest(browser.window, dateText);
    source.items[date].active = false;
    _UpdateGridBrowserItemsNoSort(browser.control, FakeSource::kRoot, 1, &date, 0, 0);
    HeadlessDriver::RunUntilIdle();
    int dimmed = Darkest(browser.window, dateText);
    EXPECT_GT(dimmed, active + 60);
}

TEST_F(ListTest, SnapshotsShowAnOpenDisclosureAndASelection) {
    GridBrowserItemID longName =
        source.Add(apples, "a-report-with-a-name-far-too-long-for-its-column-2026.pdf");
    source.items[source.Add(FakeSource::kRoot, "locked")].active = false;
    for (int i = 0; i < 4; ++i)
        source.Add(FakeSource::kRoot, "notes " + std::to_string(i + 1) + ".txt");
    std::vector selection = {seed, longName, cherry};
    for (double scale : {1.0, 2.0}) {
        HeadlessDriver::SetScale(scale);
        BrowserWindow shown(kGridBrowserListView, 460, 220);
        FakeSource other;
        other.items = source.items;
        other.Attach(shown.control);
        other.AddFileColumns();
        GridBrowserChangeAttributes(shown.control, kGridBrowserAttributeStripedRows, 0);
        SetGridBrowserTarget(shown.control, FakeSource::kRoot);
        OpenGridBrowserContainer(shown.control, apples);
        SetKeyboardFocus(shown.window, shown.control, kControlFocusNextPart);
        SetGridBrowserSelectedItems(shown.control, uint32_t(selection.size()), selection.data(),
                                    kGridBrowserItemsAssign);
        std::filesystem::path png =
            std::filesystem::path(KEL_TEST_BINARY_DIR) /
            (scale == 1 ? "gridbrowser-list@1x.png" : "gridbrowser-list@2x.png");
        ASSERT_EQ(HeadlessDriver::WritePNG(shown.window, png), noErr);
        EXPECT_GT(std::filesystem::file_size(png), 2000u);
    }
    HeadlessDriver::SetScale(1);
}

} // namespace
