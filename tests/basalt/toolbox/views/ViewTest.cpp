// The view tree: what is hit where, layout bindings, conversions and notifications.

#include "basalt/toolbox/views/View.h"

#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <gtest/gtest.h>
#include <string>

using namespace basalt::toolbox;

namespace {

class ViewTest : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    ControlRef root = nullptr;
    void SetUp() override {
        Rect bounds = {0, 0, 200, 300};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        GetRootControl(window, &root);
    }
    void TearDown() override { DisposeWindow(window); }
    ControlRef Make(OSType kind, BGRect frame, ControlRef parent = nullptr,
                    const char16_t* title = u"") {
        Rect bounds = {0, 0, 1, 1};
        StringHolder text(MakeBCString(title));
        ControlRef control = nullptr;
        BTCreateControl(window, &bounds, kind, text.get(), &control);
        if (parent != nullptr)
            BTViewAddSubview(parent, control);
        BTViewSetFrame(control, &frame);
        return control;
    }
    ControlRef HitAt(BGPoint point) {
        View* hit = View::From(root)->HitView(point);
        return hit != nullptr ? hit->Ref() : nullptr;
    }
};

StatusCode Log(EventHandlerCallRef, EventRef event, void* data) {
    *static_cast<std::string*>(data) += std::to_string(GetEventKind(event)) + " ";
    return eventNotHandledErr;
}

} // namespace

TEST_F(ViewTest, TheFrontmostVisibleViewIsHitAndZOrderChangesThat) {
    ControlRef back = Make(kControlKindUserPane, BGRectMake(10, 10, 100, 100));
    ControlRef front = Make(kControlKindUserPane, BGRectMake(50, 50, 100, 100));
    EXPECT_EQ(HitAt({60, 60}), front);
    EXPECT_EQ(HitAt({20, 20}), back);
    BTViewSetZOrder(back, 1, nullptr);
    EXPECT_EQ(HitAt({60, 60}), back);
    HideControl(back);
    EXPECT_EQ(HitAt({60, 60}), front);
    EXPECT_EQ(HitAt({20, 20}), root);
    EXPECT_EQ(BTViewSetZOrder(root, 1, nullptr), paramErr);
}

TEST_F(ViewTest, ASideBoundToAnotherViewFollowsThatViewsEdge) {
    ControlRef message = Make(kControlKindStaticText, BGRectMake(20, 10, 300, 20));
    ControlRef row = Make(kControlKindUserPane, BGRectMake(20, 40, 300, 24));
    ControlRef pane = Make(kControlKindUserPane, BGRectMake(20, 70, 300, 200));
    BTLayoutInfo info{};
    info.binding.top = {message, kBTLayoutBindMax, 0};
    BTViewSetLayoutInfo(row, &info);
    info = {};
    info.binding.top = {row, kBTLayoutBindMax, 0};
    info.binding.bottom.kind = kBTLayoutBindMax;
    BTViewSetLayoutInfo(pane, &info);

    // The row moves up with the message's bottom and keeps its size; the pane's top follows the
    // row while its bottom stays with the superview, so it grows.
    BTViewMoveBy(message, 0, -30);
    BGRect frame{};
    BTViewGetFrame(row, &frame);
    EXPECT_EQ(frame.origin.y, 10);
    EXPECT_EQ(frame.size.height, 24);
    BTViewGetFrame(pane, &frame);
    EXPECT_EQ(frame.origin.y, 40);
    EXPECT_EQ(frame.size.height, 230);

    // A side bound to a view is left alone when the superview resizes.
    BGRect window{};
    BTViewGetFrame(root, &window);
    window.size.height += 50;
    BTViewSetFrame(root, &window);
    BTViewGetFrame(row, &frame);
    EXPECT_EQ(frame.origin.y, 10);
}

TEST_F(ViewTest, BindingsFollowTheSuperviewUnlessLayoutIsSuspended) {
    ControlRef box = Make(kControlKindGroupBox, BGRectMake(0, 0, 300, 200));
    ControlRef stretch = Make(kControlKindUserPane, BGRectMake(10, 10, 280, 20), box);
    ControlRef corner = Make(kControlKindPushButton, BGRectMake(200, 170, 90, 20), box);
    BTLayoutInfo info{};
    info.binding.left.kind = kBTLayoutBindMin;
    info.binding.right.kind = kBTLayoutBindMax;
    BTViewSetLayoutInfo(stretch, &info);
    info = {};
    info.binding.right.kind = kBTLayoutBindMax;
    info.binding.bottom.kind = kBTLayoutBindMax;
    BTViewSetLayoutInfo(corner, &info);

    BGRect bigger = BGRectMake(0, 0, 400, 250);
    BTViewSetFrame(box, &bigger);
    BGRect frame{};
    BTViewGetFrame(stretch, &frame);
    EXPECT_EQ(frame.size.width, 380);
    EXPECT_EQ(frame.origin.x, 10);
    BTViewGetFrame(corner, &frame);
    EXPECT_EQ(frame.origin.x, 300);
    EXPECT_EQ(frame.origin.y, 220);
    EXPECT_EQ(frame.size.width, 90);

    BTViewSuspendLayout(box);
    EXPECT_FALSE(BTViewIsLayoutActive(box));
    BGRect smaller = BGRectMake(0, 0, 300, 200);
    BTViewSetFrame(box, &smaller);
    BTViewGetFrame(stretch, &frame);
    EXPECT_EQ(frame.size.width, 380);
    BTViewResumeLayout(box);
    EXPECT_TRUE(BTViewIsLayoutActive(box));
}

TEST_F(ViewTest, RectanglesConvertThroughBoundsOrigins) {
    ControlRef outer = Make(kControlKindUserPane, BGRectMake(20, 30, 200, 100));
    ControlRef inner = Make(kControlKindUserPane, BGRectMake(5, 5, 50, 50), outer);
    BTViewSetBoundsOrigin(outer, 0, 40); // scrolled down by 40
    BGRect rect = BGRectMake(1, 2, 3, 4);
    BTViewConvertRect(&rect, inner, nullptr);
    EXPECT_EQ(rect.origin.x, 20 + 5 + 1);
    EXPECT_EQ(rect.origin.y, 30 + 5 - 40 + 2);
    BTViewConvertRect(&rect, nullptr, inner);
    EXPECT_EQ(rect.origin.x, 1);
    EXPECT_EQ(rect.origin.y, 2);
    Rect bounds{};
    GetControlBounds(inner, &bounds);
    EXPECT_EQ(bounds.left, 25);
    EXPECT_EQ(bounds.top, -5);
}

TEST_F(ViewTest, StateChangesNotifyTheViewOnceEach) {
    ControlRef check = Make(kControlKindCheckBox, BGRectMake(10, 10, 100, 20));
    std::string log;
    const EventTypeSpec changes[] = {{kEventClassControl, kEventControlValueFieldChanged},
                                     {kEventClassControl, kEventControlTitleChanged},
                                     {kEventClassControl, kEventControlEnabledStateChanged},
                                     {kEventClassControl, kEventControlVisibilityChanged},
                                     {kEventClassControl, kEventControlHiliteChanged},
                                     {kEventClassControl, kEventControlBoundsChanged}};
    InstallEventHandler(GetControlEventTarget(check), Log, 6, changes, &log, nullptr);
    SetControlValue(check, 1);
    SetControlValue(check, 1);
    SetControlValue(check, 5); // above the maximum: pinned to 1, no change
    StringHolder title(MakeBCString(u"Hide"));
    SetControlTitleWithBCString(check, title.get());
    DisableControl(check);
    HideControl(check);
    HiliteControl(check, kControlCheckBoxPart);
    BTViewMoveBy(check, 1, 0);
    EXPECT_EQ(log, "151 158 161 157 160 154 ");
    EXPECT_EQ(GetControlValue(check), 1);
}

// 255 is the inactive state: any other hilite value brings the control back to life.
TEST_F(ViewTest, HiliteAfterTheInactiveStateReactivates) {
    ShowWindow(window);
    SelectWindow(window);
    ControlRef button = Make(kControlKindPushButton, BGRectMake(10, 10, 80, 20), nullptr, u"OK");
    std::string log;
    const EventTypeSpec changes[] = {{kEventClassControl, kEventControlActivate},
                                     {kEventClassControl, kEventControlDeactivate}};
    InstallEventHandler(GetControlEventTarget(button), Log, 2, changes, &log, nullptr);
    HiliteControl(button, kControlInactivePart);
    EXPECT_FALSE(IsControlActive(button));
    EXPECT_EQ(GetControlHilite(button), kControlInactivePart);
    HiliteControl(button, kControlNoPart);
    EXPECT_TRUE(IsControlActive(button));
    EXPECT_EQ(GetControlHilite(button), kControlNoPart);
    HiliteControl(button, kControlInactivePart);
    HiliteControl(button, kControlButtonPart);
    EXPECT_TRUE(IsControlActive(button));
    EXPECT_EQ(GetControlHilite(button), kControlButtonPart);
    EXPECT_EQ(log, std::to_string(kEventControlDeactivate) + " " +
                       std::to_string(kEventControlActivate) + " " +
                       std::to_string(kEventControlDeactivate) + " " +
                       std::to_string(kEventControlActivate) + " ");
}

TEST_F(ViewTest, OptimalBoundsFitTheTitle) {
    ControlRef shortButton = Make(kControlKindPushButton, BGRectMake(0, 0, 10, 10), nullptr, u"OK");
    ControlRef longButton = Make(kControlKindPushButton, BGRectMake(0, 0, 10, 10), nullptr,
                                 u"Replace All Documents in This Folder");
    BGRect shortBounds{}, longBounds{};
    ASSERT_EQ(BTViewGetOptimalBounds(shortButton, &shortBounds, nullptr), noErr);
    BTViewGetOptimalBounds(longButton, &longBounds, nullptr);
    int32_t minimum = 0;
    GetThemeMetric(kBTThemeMetricPushButtonMinWidth, &minimum);
    EXPECT_EQ(shortBounds.size.width, minimum);
    EXPECT_GT(longBounds.size.width, 150);
    EXPECT_EQ(shortBounds.size.height, longBounds.size.height);
}

TEST_F(ViewTest, PropertiesAndDataBelongToTheirCreatorAndTag) {
    ControlRef pane = Make(kControlKindUserPane, BGRectMake(0, 0, 10, 10));
    int32_t gap = 12;
    SetControlProperty(pane, FourCC("kels"), FourCC("extr"), sizeof gap, &gap);
    int32_t read = 0;
    size_t size = 0;
    ASSERT_EQ(GetControlProperty(pane, FourCC("kels"), FourCC("extr"), sizeof read, &size, &read),
              noErr);
    EXPECT_EQ(read, 12);
    EXPECT_EQ(GetControlProperty(pane, FourCC("velm"), FourCC("extr"), sizeof read, &size, &read),
              errDataNotSupported);
    EXPECT_EQ(RemoveControlProperty(pane, FourCC("kels"), FourCC("extr")), noErr);
    EXPECT_EQ(RemoveControlProperty(pane, FourCC("kels"), FourCC("extr")), errDataNotSupported);

    ControlKind kind{};
    ASSERT_EQ(GetControlData(pane, 0, kControlKindTag, sizeof kind, &kind, &size), noErr);
    EXPECT_EQ(kind.kind, uint32_t(kControlKindUserPane));
    EXPECT_EQ(GetControlData(pane, 0, FourCC("none"), sizeof read, &read, &size),
              errDataNotSupported);
}

TEST_F(ViewTest, AHiddenViewWaitingToDrawDoesNotMakeTheWindowDrawAgain) {
    ControlRef shown = Make(kControlKindUserPane, BGRectMake(10, 10, 50, 50));
    ControlRef hidden = Make(kControlKindUserPane, BGRectMake(70, 10, 50, 50));
    HideControl(hidden);
    BTViewSetNeedsDisplay(hidden, true);
    std::string draws;
    const EventTypeSpec drawEvent = {kEventClassControl, kEventControlDraw};
    InstallEventHandler(GetControlEventTarget(shown), Log, 1, &drawEvent, &draws, nullptr);
    ShowWindow(window);
    BTWindowFlush(window);
    ASSERT_EQ(draws, "4 ");
    BTWindowFlush(window);
    EXPECT_EQ(draws, "4 ") << "nothing changed since the last drawing";
    ShowControl(hidden);
    BTWindowFlush(window);
    EXPECT_EQ(draws, "4 4 ") << "showing a view draws its window";
}

TEST_F(ViewTest, AViewThatChangesDrawsAgainWithoutViewsElsewhere) {
    ControlRef changing = Make(kControlKindUserPane, BGRectMake(10, 10, 50, 50));
    ControlRef elsewhere = Make(kControlKindUserPane, BGRectMake(100, 10, 50, 50));
    std::string changingDraws, elsewhereDraws;
    const EventTypeSpec drawEvent = {kEventClassControl, kEventControlDraw};
    InstallEventHandler(GetControlEventTarget(changing), Log, 1, &drawEvent, &changingDraws,
                        nullptr);
    InstallEventHandler(GetControlEventTarget(elsewhere), Log, 1, &drawEvent, &elsewhereDraws,
                        nullptr);
    ShowWindow(window);
    BTWindowFlush(window);
    ASSERT_EQ(elsewhereDraws, "4 ");
    BTViewSetNeedsDisplay(changing, true);
    BTWindowFlush(window);
    EXPECT_EQ(changingDraws, "4 4 ");
    EXPECT_EQ(elsewhereDraws, "4 ") << "nothing changed where it lies";
}
