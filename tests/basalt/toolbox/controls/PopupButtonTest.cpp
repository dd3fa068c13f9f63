// A popup button shows its menu on the press, so a press dragged off the button still picks.

#include "basalt/backend/headless/HeadlessBackend.h"
#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

TEST(PopupButton, ThePressOpensTheMenuAndADragOffTheButtonStillChooses) {
    Rect bounds = {100, 100, 300, 500};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    Rect popupBounds = {20, 20, 42, 220};
    ControlRef popup = nullptr;
    BTCreateControl(window, &popupBounds, kControlKindPopupButton, nullptr, &popup);
    MenuRef menu = nullptr;
    CreateNewMenu(400, 0, &menu);
    for (const char16_t* text : {u"One", u"Two"}) {
        StringHolder item(MakeBCString(text));
        AppendMenuItemTextWithBCString(menu, item.get(), 0, 0, nullptr);
    }
    SetControlData(popup, 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    SetControlValue(popup, 1);

    HeadlessDriver::ChooseMenuItem(2);
    HeadlessDriver::Drag(window, {120, 31}, {300, 150});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(basalt::headless::ActiveHeadlessBackend()->lastMenu, menu);
    EXPECT_EQ(basalt::headless::ActiveHeadlessBackend()->lastMenuLocation.v, 120);
    EXPECT_EQ(GetControlValue(popup), 2);
    ReleaseMenu(menu);
    DisposeWindow(window);
}

} // namespace
