// What the user's presses, drags, keys and wheel do to an open popup menu.

#include "basalt/toolbox/menus/MenuTracker.h"

#include "MenuFixture.h"

#include <gtest/gtest.h>
#include <memory>

using namespace basalt::toolbox::menus;
using namespace menutest;

namespace {

constexpr Rect kScreen = {0, 0, 800, 1280};
constexpr Point kWhere = {300, 200};

class Tracking : public ::testing::Test {
protected:
    void Open(MenuItemIndex current, std::optional<BGPoint> pointer = std::nullopt,
              int extraItems = 0) {
        menu = std::make_unique<TestMenu>(extraItems);
        layout = MenuLayout::Measure(menu->get());
        placement = PlaceMenu(layout, kWhere, current, kScreen);
        tracker =
            std::make_unique<MenuTracker>(menu->get(), layout, placement, current, 10.0, pointer);
    }
    // The middle of an item's row on the screen, as the open menu is scrolled now.
    BGPoint At(MenuItemIndex item) const {
        BGRect row = layout.Row(item);
        return {placement.frame.left + 30.0,
                placement.frame.top + BGRectGetMidY(row) - tracker->Scroll()};
    }
    void Feed(EventHolder event) { tracker->Handle(event.get()); }

    std::unique_ptr<TestMenu> menu;
    MenuLayout layout;
    MenuPlacement placement;
    std::unique_ptr<MenuTracker> tracker;
};

TEST_F(Tracking, AQuickStillClickLeavesTheMenuOpenForASecondClick) {
    Open(1, BGPoint{230, 311});
    EXPECT_EQ(tracker->Highlighted(), 1);
    Feed(MouseEvent(kEventMouseUp, {231, 311}, 10.1));
    EXPECT_FALSE(tracker->Done());
    Feed(MouseEvent(kEventMouseMoved, At(5)));
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(MouseEvent(kEventMouseDown, At(5)));
    EXPECT_FALSE(tracker->Done());
    Feed(MouseEvent(kEventMouseUp, At(5), 11));
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 5);
}

TEST_F(Tracking, ADragFromThePressChoosesWhereTheButtonComesUp) {
    Open(1, BGPoint{230, 311});
    Feed(MouseEvent(kEventMouseDragged, At(2)));
    Feed(MouseEvent(kEventMouseUp, At(2), 10.1)); // quick, but the pointer moved
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 2);
}

TEST_F(Tracking, AHeldPressChoosesTheItemUnderThePointerOnRelease) {
    Open(5, BGPoint{230, 311}); // the current row is the one at the point the menu opened at
    Feed(MouseEvent(kEventMouseUp, At(5), 10 + MenuTracker::kClickTime + 0.1));
    EXPECT_EQ(tracker->Choice(), 5);
}

TEST_F(Tracking, ADragReleasedOnADisabledItemOrOutsideChoosesNothing) {
    for (bool outside : {false, true}) {
        Open(1, BGPoint{230, 311});
        BGPoint where = outside ? BGPoint{900, 700} : At(3);
        Feed(MouseEvent(kEventMouseDragged, where));
        EXPECT_EQ(tracker->Highlighted(), 0);
        Feed(MouseEvent(kEventMouseUp, where, 12));
        EXPECT_TRUE(tracker->Done());
        EXPECT_EQ(tracker->Choice(), 0);
    }
}

TEST_F(Tracking, InClickModeDisabledItemsAndSeparatorsKeepTheMenuOpen) {
    Open(1);
    Feed(MouseEvent(kEventMouseUp, {230, 311}, 10.1));
    for (MenuItemIndex item : {3, 4}) {
        Feed(MouseEvent(kEventMouseDown, At(item)));
        Feed(MouseEvent(kEventMouseUp, At(item), 11));
        EXPECT_FALSE(tracker->Done()) << "item " << item;
    }
    Feed(MouseEvent(kEventMouseDown, {10, 10}));
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 0);
}

TEST_F(Tracking, ArrowsSkipWhatCannotBeChosenAndStopAtTheEnds) {
    Open(2);
    ChangeMenuItemAttributes(menu->ref(), 6, kMenuItemAttrSectionHeader, 0);
    Feed(KeyEvent(0x7D)); // down: past Gamma and the separator
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(KeyEvent(0x7D)); // Epsilon is a header now: nowhere to go
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(KeyEvent(0x73)); // home
    EXPECT_EQ(tracker->Highlighted(), 1);
    Feed(KeyEvent(0x7E)); // up at the top
    EXPECT_EQ(tracker->Highlighted(), 1);
    Feed(KeyEvent(0x77)); // end
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(KeyEvent(0x24)); // return
    EXPECT_EQ(tracker->Choice(), 5);
}

TEST_F(Tracking, FromNoHighlightArrowsStartAtTheEndsAndReturnDismisses) {
    Open(3); // disabled: nothing highlighted
    EXPECT_EQ(tracker->Highlighted(), 0);
    Feed(KeyEvent(0x7E));
    EXPECT_EQ(tracker->Highlighted(), 6);
    Open(3);
    Feed(KeyEvent(0x7D));
    EXPECT_EQ(tracker->Highlighted(), 1);
    Open(3);
    Feed(KeyEvent(0x4C)); // enter
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 0);
    Open(1);
    Feed(KeyEvent(0x35)); // escape
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 0);
}

TEST_F(Tracking, TypingSelectsByPrefixAndAPauseStartsAfresh) {
    Open(1);
    Feed(KeyEvent(0, u'e', 20));
    EXPECT_EQ(tracker->Highlighted(), 6);
    Feed(KeyEvent(0, u'g', 20.2)); // "eg" matches nothing: the highlight stays
    EXPECT_EQ(tracker->Highlighted(), 6);
    Feed(KeyEvent(0, u'D', 22)); // after a pause, case aside
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(KeyEvent(0, u'g', 24)); // Gamma cannot be chosen
    EXPECT_EQ(tracker->Highlighted(), 5);
    Feed(KeyEvent(0, u'a', 26, cmdKey)); // a command key is not typing
    EXPECT_EQ(tracker->Highlighted(), 5);
}

TEST_F(Tracking, KeysScrollALongMenuToKeepTheHighlightClearOfTheArrows) {
    Open(30, std::nullopt, 54);
    ASSERT_GT(placement.maxScroll, 0);
    Feed(KeyEvent(0x77));
    EXPECT_EQ(tracker->Highlighted(), 60);
    EXPECT_EQ(tracker->Scroll(), placement.maxScroll);
    EXPECT_FALSE(tracker->CanScrollDown());
    Feed(KeyEvent(0x73));
    EXPECT_EQ(tracker->Scroll(), 0);
    for (int i = 0; i < 40; ++i)
        Feed(KeyEvent(0x7D));
    BGFloat height = placement.frame.bottom - placement.frame.top;
    EXPECT_EQ(BGRectGetMaxY(layout.Row(tracker->Highlighted())) - tracker->Scroll(),
              height - MenuMetrics::kArrowBand);
}

TEST_F(Tracking, TheWheelAndTheArrowBandsScrollWithinBounds) {
    Open(30, std::nullopt, 54);
    BGFloat start = tracker->Scroll();
    Feed(WheelEvent(At(30), -2, kEventMouseWheelAxisX)); // sideways: nothing to scroll
    EXPECT_EQ(tracker->Scroll(), start);
    Feed(WheelEvent(At(30), -2)); // two notches down
    EXPECT_EQ(tracker->Scroll(), start + 2 * MenuMetrics::kRowHeight);
    Feed(WheelEvent(At(30), 1000));
    EXPECT_EQ(tracker->Scroll(), 0);
    EXPECT_FALSE(tracker->CanScrollUp());
    // Resting on the lower band scrolls on each tick until the end.
    BGPoint band = {placement.frame.left + 30.0, placement.frame.bottom - 2.0};
    Feed(MouseEvent(kEventMouseMoved, band));
    EXPECT_EQ(tracker->Autoscroll(), 1);
    EXPECT_EQ(tracker->Highlighted(), 0);
    EXPECT_TRUE(tracker->Tick());
    EXPECT_EQ(tracker->Scroll(), MenuTracker::kScrollStep);
    while (tracker->Tick()) {
    }
    EXPECT_EQ(tracker->Scroll(), placement.maxScroll);
    EXPECT_EQ(tracker->Autoscroll(), 0); // the band went away under the pointer
}

TEST_F(Tracking, ADisabledMenuChoosesNothing) {
    Open(1);
    DisableMenuItem(menu->ref(), 0);
    Feed(KeyEvent(0x24));
    EXPECT_TRUE(tracker->Done());
    EXPECT_EQ(tracker->Choice(), 0);
}

} // namespace
