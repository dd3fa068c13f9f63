// Controls that hold other views: the splitter, the scroll view with its protocol, and the
// tracking areas of the views inside.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "tests/support/MakeControl.h"

#include <gtest/gtest.h>
#include <optional>
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

// A wheel event at a point of the window's content (which starts at 100, 100), with the exact
// amount when a smooth device sends it.
void PostWheel(WindowRef window, BGPoint local, int32_t lines, EventMouseWheelAxis axis,
               std::optional<double> exact = std::nullopt) {
    EventHolder wheel(kEventClassMouse, kEventMouseWheelMoved);
    BGPoint global = {100 + local.x, 100 + local.y};
    SetParam(wheel.get(), kEventParamMouseLocation, typeBTPoint, global);
    SetParam(wheel.get(), kEventParamWindowRef, typeWindowRef, window);
    SetParam(wheel.get(), kEventParamMouseWheelDelta, typeSInt32, lines);
    SetParam(wheel.get(), kEventParamMouseWheelAxis, typeMouseWheelAxis, axis);
    if (exact)
        SetParam(wheel.get(), kEventParamMouseWheelSmoothDelta, typeIEEE64BitFloatingPoint, *exact);
    PostEventToQueue(GetMainEventQueue(), wheel.get(), kEventPriorityStandard);
    HeadlessDriver::RunUntilIdle();
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

    // A scroll view at 10, 10 over a content view that follows the protocol with the state.
    ControlRef MakeScrollView(Content& state) {
        ControlRef scroll = nullptr;
        EXPECT_EQ(BTScrollViewCreate(kBTScrollViewOptionsVertScroll, &scroll), noErr);
        BTViewAddSubview(BTViewGetRoot(window), scroll);
        BGRect frame = BGRectMake(10, 10, 211, 100);
        BTViewSetFrame(scroll, &frame);
        ControlRef content =
            MakeControl(window, kControlKindUserPane, BGRectMake(0, 0, 200, 100), scroll);
        const EventTypeSpec protocol[] = {{kEventClassScrollable, kEventScrollableGetInfo},
                                          {kEventClassScrollable, kEventScrollableScrollTo}};
        InstallEventHandler(GetControlEventTarget(content), Scrollable, 2, protocol, &state,
                            nullptr);
        return scroll;
    }
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
    Content state;
    ControlRef scroll = MakeScrollView(state);

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
    Content state;
    state.image = {600, 1000};
    MakeScrollView(state);

    PostWheel(window, {50, 50}, -2, kEventMouseWheelAxisX);
    EXPECT_EQ(state.origin.x, 20);
    EXPECT_EQ(state.origin.y, 0);
}

TEST_F(ContainerTest, ASmoothWheelScrollsByItsExactAmount) {
    Content state;
    MakeScrollView(state);

    // A quarter of a 20-point line, though no whole line has gone by yet.
    PostWheel(window, {50, 50}, 0, kEventMouseWheelAxisY, -0.25);
    EXPECT_EQ(state.origin.y, 5);
    // The exact amount, not the whole lines the same stroke made.
    PostWheel(window, {50, 50}, -1, kEventMouseWheelAxisY, -1.5);
    EXPECT_EQ(state.origin.y, 35);
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
