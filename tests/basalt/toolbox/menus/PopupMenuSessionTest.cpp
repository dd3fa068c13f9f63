// A popup menu run in a window of its own from the main queue, as a display backend runs it.

#include "basalt/toolbox/menus/PopupMenuSession.h"

#include "ImageMenuWindow.h"
#include "MenuFixture.h"
#include "basalt/toolbox/menus/MenuLayout.h"

#include <gtest/gtest.h>

using namespace basalt::toolbox::menus;
using namespace menutest;

namespace {

constexpr Rect kScreen = {0, 0, 800, 1280};
constexpr Point kWhere = {300, 200};
constexpr EventClass kOtherClass = FourCC("tst1");

class Session : public ::testing::Test {
protected:
    void TearDown() override { FlushEventQueue(GetMainEventQueue()); }

    MenuItemIndex Run(MenuItemIndex current) {
        return RunPopupMenu(menu.get(), kWhere, current, kScreen, [this](const Rect& frame) {
            auto made = std::make_unique<ImageMenuWindow>(frame);
            window = made->record;
            return made;
        });
    }
    // Posts what the user does before the menu runs: it finds it queued.
    static void Post(EventHolder event) {
        PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
    }
    // The middle of an item's row while the menu is open at kWhere with `current`.
    BGPoint At(MenuItemIndex item, MenuItemIndex current) {
        MenuLayout layout = MenuLayout::Measure(menu.get());
        return {kWhere.h + 30.0,
                kWhere.v + BGRectGetMidY(layout.Row(item)) - layout.Row(current).origin.y};
    }

    TestMenu menu;
    std::shared_ptr<ImageMenuWindow::Record> window; // of the last menu run
};

TEST_F(Session, KeysChooseAnItemAndTheWindowIsShownDrawnAndHidden) {
    Post(KeyEvent(0x7D));
    Post(KeyEvent(0x24));
    EXPECT_EQ(Run(2), 5);
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->visible);
    EXPECT_EQ(window->presents, 2); // opened, then the highlight moved
    EXPECT_EQ(window->frame.top, kWhere.v - MenuMetrics::kPadding - MenuMetrics::kRowHeight);
}

TEST_F(Session, OtherEventsAreDispatchedWhileTheMenuIsOpen) {
    int others = 0;
    const EventTypeSpec spec = {kOtherClass, 1};
    EventHandlerRef handler = nullptr;
    InstallEventHandler(
        GetApplicationEventTarget(),
        [](EventHandlerCallRef, EventRef, void* count) -> StatusCode {
            ++*static_cast<int*>(count);
            return noErr;
        },
        1, &spec, &others, &handler);
    Post(MouseEvent(kEventMouseUp, At(1, 1))); // the release of the opening click
    Post(EventHolder(kOtherClass, 1));
    Post(MouseEvent(kEventMouseDown, At(6, 1)));
    Post(MouseEvent(kEventMouseUp, At(6, 1), GetCurrentEventTime() + 1));
    EXPECT_EQ(Run(1), 6);
    EXPECT_EQ(others, 1);
    RemoveEventHandler(handler);
}

TEST_F(Session, APressOutsideDismissesAndTheEventsAfterItStayQueued) {
    Post(MouseEvent(kEventMouseDown, {5, 5}));
    Post(KeyEvent(0x24));
    EXPECT_EQ(Run(1), 0);
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 1);
}

TEST_F(Session, AMenuWithoutAWindowChoosesNothing) {
    Post(KeyEvent(0x24));
    EXPECT_EQ(RunPopupMenu(menu.get(), kWhere, 1, kScreen, [](const Rect&) { return nullptr; }), 0);
}

} // namespace
