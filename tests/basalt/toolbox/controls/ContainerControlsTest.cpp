// Controls that hold other views: the splitter, the scroll view with its protocol, and the
// tracking areas of the views inside.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "tests/support/MakeControl.h"

#include <gtest/gtest.h>
#include <string>

using basalt::headless::HeadlessDriver;
using keltest::MakeControl;
using namespace basalt::toolbox;

namespace {

// A content view with a 1000-point tall image that follows the origin it is told.
struct Content {
    BGPoint origin{};
    std::string log;
    BGSize image = {200, 1000};
};

StatusCode Scrollable(EventHandlerCallRef, EventRef event, void* data) {
    auto* content = static_cast<Content*>(data);
    if (GetEventKind(event) == kEventScrollableGetInfo) {
        BGSize view = {200, 100}, line = {10, 20};
        SetParam(event, kEventParamImageSize, typeBTSize, content->image);
        SetParam(event, kEventParamViewSize, typeBTSize, view);
        SetParam(event, kEventParamLineSize, typeBTSize, line);
        SetParam(event, kEventParamOrigin, typeBTPoint, content->origin);
    } else {
        GetParam(event, kEventParamOrigin, typeBTPoint, &content->origin);
    }
    return noErr;
}

StatusCode Log(EventHandlerCallRef, EventRef event, void* data) {
    auto* log = static_cast<std::string*>(data);
    *log +=
        std::to_string(GetEventClass(event) == kEventClassSplitter ? -1 : int(GetEventKind(event)));
    *log += " ";
    return eventNotHandledErr;
}

class ContainerTest : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    void SetUp() override {
        Rect bounds = {100, 100, 400, 600};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        ShowWindow(window);
    }
    void TearDown() override { DisposeWindow(window); }
};

} // namespace

TEST_F(ContainerTest, DraggingTheSplitterResizesBothSides) {
    ControlRef splitter = MakeControl(window, kControlKindSplitter, BGRectMake(0, 0, 500, 300));
    ControlRef left = MakeControl(window, kControlKindUserPane, BGRectZero, splitter);
    ControlRef right = MakeControl(window, kControlKindUserPane, BGRectZero, splitter);
    BTViewSetValue(splitter, 150);
    std::string log;
    const EventTypeSpec moved = {kEventClassSplitter, kEventSplitterMoved};
    InstallEventHandler(GetWindowEventTarget(window), Log, 1, &moved, &log, nullptr);

    HeadlessDriver::Drag(window, {152, 100}, {302, 120});
    HeadlessDriver::RunUntilIdle();
    BGRect leftFrame{}, rightFrame{};
    BTViewGetFrame(left, &leftFrame);
    BTViewGetFrame(right, &rightFrame);
    // The divider's middle follows the mouse: 302 - 5 / 2, in whole points.
    EXPECT_EQ(leftFrame.size.width, 299);
    EXPECT_EQ(rightFrame.origin.x, 299 + 5);
    EXPECT_EQ(rightFrame.size.width, 500 - 304);
    EXPECT_EQ(log, "-1 ");
}

TEST_F(ContainerTest, TheScrollViewDrivesItsContentThroughTheProtocol) {
    ControlRef scroll = nullptr;
    ASSERT_EQ(BTScrollViewCreate(kBTScrollViewOptionsVertScroll, &scroll), noErr);
    ControlRef root = BTViewGetRoot(window);
    BTViewAddSubview(root, scroll);
    BGRect frame = BGRectMake(10, 10, 211, 100);
    BTViewSetFrame(scroll, &frame);
    ControlRef content =
        MakeControl(window, kControlKindUserPane, BGRectMake(0, 0, 200, 100), scroll);
    Content state;
    const EventTypeSpec protocol[] = {{kEventClassScrollable, kEventScrollableGetInfo},
                                      {kEventClassScrollable, kEventScrollableScrollTo}};
    InstallEventHandler(GetControlEventTarget(content), Scrollable, 2, protocol, &state, nullptr);

    EXPECT_EQ(BTScrollViewGoTo(scroll, kBTScrollViewPageDown), noErr);
    EXPECT_EQ(state.origin.y, 100);
    BTScrollViewGoTo(scroll, kBTScrollViewScrollToBottom);
    EXPECT_EQ(state.origin.y, 900);
    BTScrollViewGoTo(scroll, kBTScrollViewPageDown);
    EXPECT_EQ(state.origin.y, 900);
    BTScrollViewGoTo(scroll, kBTScrollViewScrollToTop);
    EXPECT_EQ(state.origin.y, 0);
    EXPECT_EQ(BTScrollViewGoTo(scroll, 99), paramErr);

    // Three lines down with the wheel.
    HeadlessDriver::Scroll(window, {50, 50}, -3);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(state.origin.y, 60);
}

TEST_F(ContainerTest, ASidewaysWheelScrollsTheScrollViewSideways) {
    ControlRef scroll = nullptr;
    BTScrollViewCreate(kBTScrollViewOptionsVertScroll, &scroll);
    BTViewAddSubview(BTViewGetRoot(window), scroll);
    BGRect frame = BGRectMake(10, 10, 211, 100);
    BTViewSetFrame(scroll, &frame);
    ControlRef content =
        MakeControl(window, kControlKindUserPane, BGRectMake(0, 0, 200, 100), scroll);
    Content state;
    state.image = {600, 1000};
    const EventTypeSpec protocol[] = {{kEventClassScrollable, kEventScrollableGetInfo},
                                      {kEventClassScrollable, kEventScrollableScrollTo}};
    InstallEventHandler(GetControlEventTarget(content), Scrollable, 2, protocol, &state, nullptr);

    EventHolder wheel(kEventClassMouse, kEventMouseWheelMoved);
    BGPoint global = {100 + 50, 100 + 50};
    int32_t lines = -2;
    EventMouseWheelAxis axis = kEventMouseWheelAxisX;
    SetParam(wheel.get(), kEventParamMouseLocation, typeBTPoint, global);
    SetParam(wheel.get(), kEventParamWindowRef, typeWindowRef, window);
    SetParam(wheel.get(), kEventParamMouseWheelDelta, typeSInt32, lines);
    SetParam(wheel.get(), kEventParamMouseWheelAxis, typeMouseWheelAxis, axis);
    PostEventToQueue(GetMainEventQueue(), wheel.get(), kEventPriorityStandard);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(state.origin.x, 20);
    EXPECT_EQ(state.origin.y, 0);
}

TEST_F(ContainerTest, TrackingAreasReportTheMouseEnteringAndLeaving) {
    ControlRef pane = MakeControl(window, kControlKindUserPane, BGRectMake(100, 100, 100, 50));
    BGRect inner = BGRectMake(10, 10, 20, 20);
    BTShapeRef shape = BTShapeCreateWithRect(&inner);
    BTViewTrackingAreaRef area = nullptr;
    ASSERT_EQ(BTViewNewTrackingArea(pane, shape, 42, &area), noErr);
    BTShapeRelease(shape);
    std::string log;
    const EventTypeSpec tracking[] = {{kEventClassControl, kEventControlTrackingAreaEntered},
                                      {kEventClassControl, kEventControlTrackingAreaExited}};
    InstallEventHandler(GetControlEventTarget(pane), Log, 2, tracking, &log, nullptr);

    HeadlessDriver::MoveTo(window, {5, 5});
    HeadlessDriver::MoveTo(window, {115, 115});
    HeadlessDriver::MoveTo(window, {120, 120});
    HeadlessDriver::MoveTo(window, {150, 140});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(log, "23 24 ");
    BTViewTrackingAreaID id = 0;
    BTViewGetTrackingAreaID(area, &id);
    EXPECT_EQ(id, 42u);

    BTViewDisposeTrackingArea(area);
    HeadlessDriver::MoveTo(window, {115, 115});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(log, "23 24 ");
}

TEST_F(ContainerTest, AnAreaWithoutAShapeFollowsTheViewsSize) {
    ControlRef pane = MakeControl(window, kControlKindUserPane, BGRectMake(100, 100, 0, 0));
    BTViewTrackingAreaRef area = nullptr;
    ASSERT_EQ(BTViewNewTrackingArea(pane, nullptr, 7, &area), noErr);
    BGRect grown = BGRectMake(100, 100, 60, 30);
    BTViewSetFrame(pane, &grown);
    std::string log;
    const EventTypeSpec tracking[] = {{kEventClassControl, kEventControlTrackingAreaEntered},
                                      {kEventClassControl, kEventControlTrackingAreaExited}};
    InstallEventHandler(GetControlEventTarget(pane), Log, 2, tracking, &log, nullptr);
    HeadlessDriver::MoveTo(window, {150, 120});
    HeadlessDriver::MoveTo(window, {170, 120});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(log, "23 24 ");
    BTViewDisposeTrackingArea(area);
}
