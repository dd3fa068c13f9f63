// Windows under dispatch: handlers that dispose of their window, modal loops that shut other
// windows out, activation and focus.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

WindowRef MakeWindow(int16_t left, WindowClass windowClass = kDocumentWindowClass) {
    Rect bounds = {100, left, 300, int16_t(left + 300)};
    WindowRef window = nullptr;
    CreateNewWindow(windowClass, kWindowCloseBoxAttribute, &bounds, &window);
    ShowWindow(window);
    return window;
}

ControlRef MakeButton(WindowRef window, const char16_t* title) {
    Rect bounds = {20, 20, 44, 120};
    StringHolder text(MakeBCString(title));
    ControlRef button = nullptr;
    BTCreateControl(window, &bounds, kControlKindPushButton, text.get(), &button);
    return button;
}

StatusCode DisposeOnHit(EventHandlerCallRef call, EventRef event, void* data) {
    DisposeWindow(static_cast<WindowRef>(data));
    return CallNextEventHandler(call, event);
}

StatusCode QuitOnHit(EventHandlerCallRef, EventRef, void* data) {
    QuitAppModalLoopForWindow(static_cast<WindowRef>(data));
    return noErr;
}

StatusCode CountActivation(EventHandlerCallRef, EventRef event, void* data) {
    auto* counts = static_cast<std::pair<int, int>*>(data);
    (GetEventKind(event) == kEventWindowActivated ? counts->first : counts->second)++;
    return noErr;
}

} // namespace

TEST(Window, AHandlerMayDisposeOfItsWindowDuringTheClick) {
    WindowRef window = MakeWindow(100);
    ControlRef button = MakeButton(window, u"Close");
    const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
    InstallEventHandler(GetControlEventTarget(button), DisposeOnHit, 1, &hit, window, nullptr);
    HeadlessDriver::Click(button);
    HeadlessDriver::RunUntilIdle();
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST(Window, AModalLoopShutsOtherWindowsOutUntilItIsQuit) {
    WindowRef behind = MakeWindow(50);
    ControlRef behindButton = MakeButton(behind, u"Behind");
    WindowRef modal = MakeWindow(500, kMovableModalWindowClass);
    ControlRef done = MakeButton(modal, u"Done");
    const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
    InstallEventHandler(GetControlEventTarget(done), QuitOnHit, 1, &hit, modal, nullptr);
    int behindHits = 0;
    InstallEventHandler(
        GetControlEventTarget(behindButton),
        [](EventHandlerCallRef, EventRef, void* data) -> StatusCode {
            ++*static_cast<int*>(data);
            return noErr;
        },
        1, &hit, &behindHits, nullptr);
    HeadlessDriver::ResetBeepCount();
    HeadlessDriver::Soon([=] {
        HeadlessDriver::Click(behindButton);
        HeadlessDriver::Click(done);
    });
    EXPECT_EQ(RunAppModalLoopForWindow(modal), noErr);
    EXPECT_EQ(behindHits, 0);
    EXPECT_EQ(HeadlessDriver::BeepCount(), 1);

    // Once the loop is over the other window takes clicks again.
    HeadlessDriver::Click(behindButton);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(behindHits, 1);
    DisposeWindow(modal);
    DisposeWindow(behind);
}

TEST(Window, ClickingABackWindowActivatesIt) {
    WindowRef first = MakeWindow(50);
    WindowRef second = MakeWindow(500);
    std::pair<int, int> counts;
    const EventTypeSpec activation[] = {{kEventClassWindow, kEventWindowActivated},
                                        {kEventClassWindow, kEventWindowDeactivated}};
    InstallEventHandler(GetWindowEventTarget(first), CountActivation, 2, activation, &counts,
                        nullptr);
    EXPECT_TRUE(IsWindowActive(second));
    HeadlessDriver::ClickAt(first, {150, 100});
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(IsWindowActive(first));
    EXPECT_EQ(FrontWindow(), first);
    EXPECT_EQ(counts, std::make_pair(1, 0));
    DisposeWindow(first);
    DisposeWindow(second);
}

TEST(Window, NoWindowIsActiveWhileTheDesktopGivesTheKeyboardElsewhere) {
    WindowRef window = MakeWindow(50);
    std::pair<int, int> counts;
    const EventTypeSpec activation[] = {{kEventClassWindow, kEventWindowActivated},
                                        {kEventClassWindow, kEventWindowDeactivated}};
    InstallEventHandler(GetWindowEventTarget(window), CountActivation, 2, activation, &counts,
                        nullptr);
    ASSERT_TRUE(IsWindowActive(window));
    windows::SetApplicationActive(false);
    EXPECT_FALSE(IsWindowActive(window));
    // A window brought forward meanwhile stays inactive until the keyboard comes back.
    WindowRef other = MakeWindow(500);
    EXPECT_FALSE(IsWindowActive(other));
    windows::SetApplicationActive(true);
    EXPECT_TRUE(IsWindowActive(other));
    EXPECT_EQ(counts, std::make_pair(0, 1));
    DisposeWindow(other);
    DisposeWindow(window);
}

TEST(Window, FocusLeavesAViewThatHidesOrGoes) {
    WindowRef window = MakeWindow(100);
    Rect bounds = {60, 20, 84, 200};
    ControlRef field = nullptr;
    BTCreateControl(window, &bounds, kControlKindEditUnicodeText, nullptr, &field);
    ControlRef button = MakeButton(window, u"Push");
    EXPECT_EQ(SetKeyboardFocus(window, button, kControlEditTextPart), errControlHiddenOrDisabled);
    ASSERT_EQ(SetKeyboardFocus(window, field, kControlEditTextPart), noErr);
    HideControl(field);
    ControlRef focus = field;
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, nullptr);
    ShowControl(field);
    SetKeyboardFocus(window, field, kControlEditTextPart);
    DisposeControl(field);
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, nullptr);
    DisposeWindow(window);
}

TEST(Window, PointsConvertBetweenViewWindowAndScreen) {
    WindowRef window = MakeWindow(100);
    ControlRef button = MakeButton(window, u"Here");
    BGPoint point = {5, 6};
    ASSERT_EQ(BTPointConvert(&point, kBTCoordSpaceView, button, kBTCoordSpaceScreenPixel, nullptr),
              noErr);
    EXPECT_EQ(point.x, 100 + 20 + 5);
    EXPECT_EQ(point.y, 100 + 20 + 6);
    ASSERT_EQ(
        BTPointConvert(&point, kBTCoordSpaceScreenPixel, nullptr, kBTCoordSpaceWindow, window),
        noErr);
    EXPECT_EQ(point.x, 25);
    EXPECT_EQ(point.y, 26);
    EXPECT_EQ(BTPointConvert(&point, kBTCoordSpaceView, nullptr, kBTCoordSpaceWindow, window),
              paramErr);
    DisposeWindow(window);
}

TEST(Window, UserResizingStopsAtTheMinimumTheHandlersGive) {
    WindowRef window = MakeWindow(100);
    ChangeWindowAttributes(window, kWindowResizableAttribute, 0);
    const EventTypeSpec minimum = {kEventClassWindow, kEventWindowGetMinimumSize};
    InstallEventHandler(
        GetWindowEventTarget(window),
        [](EventHandlerCallRef, EventRef event, void*) -> StatusCode {
            Point size = {150, 250}; // height, width
            SetParam(event, kEventParamDimensions, typeQDPoint, size);
            return noErr;
        },
        1, &minimum, nullptr, nullptr);
    HeadlessDriver::ResizeTo(window, 400, 300);
    HeadlessDriver::RunUntilIdle();
    Rect bounds{};
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 400);
    EXPECT_EQ(bounds.bottom - bounds.top, 300);
    HeadlessDriver::ResizeTo(window, 100, 100);
    HeadlessDriver::RunUntilIdle();
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 250);
    EXPECT_EQ(bounds.bottom - bounds.top, 150);

    ChangeWindowAttributes(window, 0, kWindowResizableAttribute);
    HeadlessDriver::ResizeTo(window, 500, 500);
    HeadlessDriver::RunUntilIdle();
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 250);
    DisposeWindow(window);
}

TEST(Window, TheApplicationLoopRunsUntilItIsQuit) {
    int ticks = 0;
    EventLoopTimerRef timer = nullptr;
    InstallEventLoopTimer(
        GetMainEventLoop(), 0, 0.001,
        [](EventLoopTimerRef, void* data) {
            if (++*static_cast<int*>(data) == 3)
                QuitApplicationEventLoop();
        },
        &ticks, &timer);
    RunApplicationEventLoop();
    EXPECT_EQ(ticks, 3);
    RemoveEventLoopTimer(timer);
}

extern "C" int BasaltToolboxHeaderCompilesAsC(void);

TEST(Window, TheHeaderServesPlainC) {
    EXPECT_EQ(BasaltToolboxHeaderCompilesAsC(), 1);
}

TEST(Window, PlacementRegionsAndProperties) {
    WindowRef window = MakeWindow(100);
    ASSERT_EQ(RepositionWindow(window, nullptr, kWindowCenterOnMainScreen), noErr);
    Rect content{}, structure{};
    GetWindowBounds(window, kWindowContentRgn, &content);
    GetWindowBounds(window, kWindowStructureRgn, &structure);
    EXPECT_EQ(content.left, (1440 - 300) / 2);
    EXPECT_EQ(content.top, (900 - 200) / 2);
    EXPECT_EQ(structure.top, content.top - kBTWindowTitleBarHeight);

    RgnHandle region = NewRgn();
    GetWindowRegion(window, kWindowTitleBarRgn, region);
    Rect title{};
    GetRegionBounds(region, &title);
    EXPECT_EQ(title.bottom, content.top);
    EXPECT_EQ(title.top, structure.top);
    DisposeRgn(region);

    uint32_t dialogAddress = 0xCAFE;
    SetWindowProperty(window, FourCC("kels"), FourCC("askd"), sizeof dialogAddress, &dialogAddress);
    uint32_t read = 0;
    size_t size = 0;
    ASSERT_EQ(GetWindowProperty(window, FourCC("kels"), FourCC("askd"), sizeof read, &size, &read),
              noErr);
    EXPECT_EQ(read, 0xCAFEu);
    EXPECT_EQ(size, 4u);
    DisposeWindow(window);
    EXPECT_EQ(GetWindowProperty(window, FourCC("kels"), FourCC("askd"), sizeof read, &size, &read),
              errInvalidWindowRef);
}

TEST(Window, ASheetHangsFromItsParentsTopAndAParentHoldsOneAtATime) {
    WindowRef parent = MakeWindow(100);
    Rect sheetBounds = {0, 0, 100, 200};
    WindowRef sheet = nullptr, second = nullptr;
    CreateNewWindow(kSheetWindowClass, 0, &sheetBounds, &sheet);
    CreateNewWindow(kSheetWindowClass, 0, &sheetBounds, &second);
    ASSERT_EQ(ShowSheetWindow(sheet, parent), noErr);
    Rect host{}, hung{};
    GetWindowBounds(parent, kWindowContentRgn, &host);
    GetWindowBounds(sheet, kWindowContentRgn, &hung);
    EXPECT_EQ(hung.top, host.top);
    EXPECT_EQ(hung.left, host.left + (300 - 200) / 2);
    EXPECT_EQ(ShowSheetWindow(second, parent), paramErr);
    WindowRef found = nullptr;
    GetSheetWindowParent(sheet, &found);
    EXPECT_EQ(found, parent);
    HideSheetWindow(sheet);
    EXPECT_EQ(ShowSheetWindow(second, parent), noErr);
    DisposeWindow(parent); // takes its sheet along
    EXPECT_FALSE(IsValidWindowPtr(second));
    DisposeWindow(sheet);
}

TEST(Window, ZoomingGoesToTheIdealSizeOnTheDisplayAndBack) {
    WindowRef window = MakeWindow(1000);
    const EventTypeSpec ideal = {kEventClassWindow, kEventWindowGetIdealSize};
    InstallEventHandler(
        GetWindowEventTarget(window),
        [](EventHandlerCallRef, EventRef event, void*) -> StatusCode {
            Point size = {600, 800}; // height, width
            SetParam(event, kEventParamDimensions, typeQDPoint, size);
            return noErr;
        },
        1, &ideal, nullptr, nullptr);
    Point used{0, 0};
    ASSERT_EQ(ZoomWindowIdeal(window, inZoomOut, &used), noErr);
    EXPECT_EQ(used.h, 800);
    Rect bounds{};
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 800);
    EXPECT_EQ(bounds.bottom - bounds.top, 600);
    EXPECT_LE(bounds.right, 1440);
    ZoomWindowIdeal(window, inZoomIn, nullptr);
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.left, 1000);
    EXPECT_EQ(bounds.right - bounds.left, 300);
    DisposeWindow(window);
}

namespace {

StatusCode CountInto(EventHandlerCallRef, EventRef, void* data) {
    ++*static_cast<int*>(data);
    return noErr;
}

void PostToTarget(EventTargetRef target) {
    EventRef event = nullptr;
    CreateEvent(nullptr, 0x6B656C73 /* "kels" */, 32768, 0, 0, &event);
    SetEventParameter(event, kEventParamPostTarget, typeEventTargetRef, sizeof target, &target);
    PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
    ReleaseEvent(event);
}

} // namespace

TEST(PostTargetTest, PostedEventsGoToTheirTargetWhileItLives) {
    const EventTypeSpec wakeUp = {0x6B656C73 /* "kels" */, 32768};
    int atControl = 0, atApplication = 0;
    EventHandlerRef applicationHandler = nullptr;
    InstallEventHandler(GetApplicationEventTarget(), CountInto, 1, &wakeUp, &atApplication,
                        &applicationHandler);
    WindowRef window = MakeWindow(10);
    ControlRef button = MakeButton(window, u"Wake");
    InstallEventHandler(GetControlEventTarget(button), CountInto, 1, &wakeUp, &atControl, nullptr);

    PostToTarget(GetControlEventTarget(button));
    RunCurrentEventLoop(0.05);
    EXPECT_EQ(atControl, 1);
    EXPECT_EQ(atApplication, 0);

    PostToTarget(GetControlEventTarget(button));
    DisposeWindow(window);
    RunCurrentEventLoop(0.05);
    EXPECT_EQ(atControl, 1) << "a target that went away is not called";
    EXPECT_EQ(atApplication, 1);
    RemoveEventHandler(applicationHandler);
}
