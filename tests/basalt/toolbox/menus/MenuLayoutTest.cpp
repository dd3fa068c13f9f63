// Where a popup menu's rows are and where the menu goes on a screen.

#include "basalt/toolbox/menus/MenuLayout.h"

#include "MenuFixture.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace basalt::toolbox::menus;
using menutest::TestMenu;

namespace {

constexpr Rect kScreen = {0, 0, 800, 1280};

TEST(MenuLayout, RowsStackWithThinSeparatorsAndNoneForHiddenItems) {
    TestMenu menu;
    ChangeMenuItemAttributes(menu.ref(), 2, kMenuItemAttrHidden, 0);
    MenuLayout layout = MenuLayout::Measure(menu.get());
    EXPECT_EQ(layout.Row(1).origin.y, MenuMetrics::kPadding);
    EXPECT_TRUE(BGRectIsEmpty(layout.Row(2)));
    EXPECT_EQ(layout.Row(3).origin.y, MenuMetrics::kPadding + MenuMetrics::kRowHeight);
    EXPECT_EQ(layout.Row(4).size.height, MenuMetrics::kSeparatorHeight);
    EXPECT_EQ(layout.Height(), 2 * MenuMetrics::kPadding + 4 * MenuMetrics::kRowHeight +
                                   MenuMetrics::kSeparatorHeight);
    EXPECT_EQ(layout.ItemAt(layout.Row(5).origin.y + 1), 5);
    EXPECT_EQ(layout.ItemAt(1), 0); // the padding
    EXPECT_EQ(layout.ItemAt(layout.Height()), 0);
    EXPECT_TRUE(BGRectIsEmpty(layout.Row(99)));
}

TEST(MenuLayout, CommandKeysGetAColumnOfTheirOwn) {
    TestMenu menu;
    MenuLayout plain = MenuLayout::Measure(menu.get());
    EXPECT_EQ(plain.KeyColumn(), 0);
    SetItemCmd(menu.ref(), 1, 'K');
    SetMenuItemModifiers(menu.ref(), 1, kMenuShiftModifier);
    MenuLayout keyed = MenuLayout::Measure(menu.get());
    EXPECT_GT(keyed.KeyColumn(), 0);
    EXPECT_GT(keyed.Width(), plain.Width());
    EXPECT_EQ(CommandKeyLabel(menu.get().items[0]), u"Ctrl+Shift+K");
}

TEST(MenuPlacement, TheCurrentItemOpensOverThePoint) {
    TestMenu menu;
    MenuLayout layout = MenuLayout::Measure(menu.get());
    MenuPlacement placed = PlaceMenu(layout, {300, 200}, 5, kScreen);
    EXPECT_EQ(placed.frame.top + layout.Row(5).origin.y, 300);
    EXPECT_EQ(placed.frame.left, 200);
    EXPECT_EQ(placed.frame.bottom - placed.frame.top, int(layout.Height()));
    EXPECT_EQ(placed.scroll, 0);
    EXPECT_EQ(placed.maxScroll, 0);
    // Without a current item the first row is at the point.
    EXPECT_EQ(PlaceMenu(layout, {300, 200}, 0, kScreen).frame.top + MenuMetrics::kPadding, 300);
}

TEST(MenuPlacement, AMenuThatFitsIsMovedOntoTheScreenWhole) {
    TestMenu menu;
    MenuLayout layout = MenuLayout::Measure(menu.get());
    Rect second = {0, 1280, 800, 2560}; // a monitor to the right of the first
    MenuPlacement low = PlaceMenu(layout, {790, 2550}, 1, second);
    EXPECT_EQ(low.frame.bottom, 800);
    EXPECT_EQ(low.frame.right, 2560);
    MenuPlacement high = PlaceMenu(layout, {2, 1200}, 6, second);
    EXPECT_EQ(high.frame.top, 0);
    EXPECT_EQ(high.frame.left, 1280);
    EXPECT_EQ(high.scroll, 0);
}

TEST(MenuPlacement, ATallMenuFillsTheScreenAndScrollsTheCurrentItemToThePoint) {
    TestMenu menu(54); // items 7 to 60
    MenuLayout layout = MenuLayout::Measure(menu.get());
    ASSERT_GT(layout.Height(), 800);
    MenuPlacement placed = PlaceMenu(layout, {400, 200}, 40, kScreen);
    EXPECT_EQ(placed.frame.top, 0);
    EXPECT_EQ(placed.frame.bottom, 800);
    EXPECT_EQ(placed.maxScroll, std::ceil(layout.Height()) - 800);
    EXPECT_EQ(layout.Row(40).origin.y - placed.scroll, 400);
    // Near the ends the scroll stops at what there is.
    EXPECT_EQ(PlaceMenu(layout, {400, 200}, 1, kScreen).scroll, 0);
    EXPECT_EQ(PlaceMenu(layout, {20, 200}, 60, kScreen).scroll, placed.maxScroll);
}

} // namespace
