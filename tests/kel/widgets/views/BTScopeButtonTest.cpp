// The scope button's look follows its hilite, its value and the mouse; clicking it reports a hit
// and leaves the value to its dialog.

#include "kel/widgets/views/BTScopeButton.h"

#include "basalt/backend/headless/HeadlessDriver.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using basalt::headless::HeadlessDriver;

namespace {

class BTScopeButtonTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(_BTScopeButtonRegisterClass(), noErr);
        const Rect content{100, 100, 200, 400};
        ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
        ShowWindow(window);
        BTObjectRef object = nullptr;
        ASSERT_EQ(BTObjectCreate(BTScopeButton::ClassID(), nullptr, &object), noErr);
        view = reinterpret_cast<ControlRef>(object);
        button = static_cast<BTScopeButton*>(BTObjectDynamicCast(object, BTScopeButton::ClassID()));
        ASSERT_NE(button, nullptr);
        ControlRef root = nullptr;
        GetRootControl(window, &root);
        BTViewAddSubview(root, view);
        BGRect frame = BGRectMake(20, 20, 90, 20);
        BTViewSetFrame(view, &frame);
        BCStringRef title = BCStringCreateWithCString(nullptr, "Computer", kBCStringEncodingUTF8);
        BTViewSetText(view, title);
        BCRelease(title);
        HeadlessDriver::RunUntilIdle();
    }
    void TearDown() override {
        DisposeWindow(window);
        HeadlessDriver::RunUntilIdle();
    }

    // The grey of the pixel at a point of the button drawn alone, 0 black to 255 white, or -1
    // where nothing was drawn.
    int DrawnGrey(BGPoint point) {
        constexpr size_t kWidth = 90, kHeight = 20;
        std::vector<uint32_t> pixels(kWidth * kHeight, 0);
        BGColorSpaceRef space = BGColorSpaceCreateDisplayRGB();
        BGContextRef context = BGBitmapContextCreate(pixels.data(), kWidth, kHeight, 8, kWidth * 4,
                                                     space, kBGImageAlphaPremultipliedFirst);
        BGColorSpaceRelease(space);
        BGContextTranslateCTM(context, 0, kHeight);
        BGContextScaleCTM(context, 1, -1);
        EventRef draw = nullptr;
        CreateEvent(nullptr, kEventClassControl, kEventControlDraw, 0, 0, &draw);
        SetEventParameter(draw, kEventParamCGContextRef, typeBGContextRef, sizeof context,
                          &context);
        SendEventToEventTargetWithOptions(draw, GetControlEventTarget(view),
                                          kEventTargetDontPropagate);
        ReleaseEvent(draw);
        BGContextRelease(context);
        uint32_t pixel = pixels[size_t(point.y) * kWidth + size_t(point.x)];
        if ((pixel >> 24) == 0)
            return -1;
        return int(pixel & 0xFF);
    }

    static StatusCode RecordHit(EventHandlerCallRef, EventRef event, void* data) {
        ControlPartCode part = 0;
        GetEventParameter(event, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part,
                          nullptr, &part);
        static_cast<std::vector<int>*>(data)->push_back(part);
        return eventNotHandledErr;
    }

    WindowRef window = nullptr;
    ControlRef view = nullptr;
    BTScopeButton* button = nullptr;
};

} // namespace

TEST_F(BTScopeButtonTest, PressedBeatsSelectedBeatsHovered) {
    EXPECT_EQ(button->State(), kScopeIdle);
    EXPECT_EQ(BTViewGetMaximum(view), 1);
    HeadlessDriver::MoveTo(window, {40, 30});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(button->State(), kScopeHovered);
    BTViewSetValue(view, 1);
    EXPECT_EQ(button->State(), kScopeSelected) << "hovering a selected button keeps it selected";
    BTViewSetValue(view, 0);
    HiliteControl(view, 11);
    EXPECT_EQ(button->State(), kScopePressed);
    HiliteControl(view, 0);
    HeadlessDriver::MoveTo(window, {200, 80});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(button->State(), kScopeIdle);
}

TEST_F(BTScopeButtonTest, HoverComesOnlyToAnActiveButtonAndStaysUntilTheMouseLeaves) {
    DeactivateControl(view);
    HeadlessDriver::MoveTo(window, {40, 30});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(button->State(), kScopeIdle);
    HeadlessDriver::MoveTo(window, {200, 80});
    HeadlessDriver::RunUntilIdle();
    EXPECT_FALSE(BTViewGetNeedsDisplay(view)) << "leaving without a hover redraws nothing";

    ActivateControl(view);
    HeadlessDriver::MoveTo(window, {40, 30});
    HeadlessDriver::RunUntilIdle();
    DeactivateControl(view);
    EXPECT_EQ(button->State(), kScopeHovered);
    HeadlessDriver::MoveTo(window, {200, 80});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(button->State(), kScopeIdle);
}

TEST_F(BTScopeButtonTest, AClickReportsItsPartAndLeavesTheValueToTheDialog) {
    std::vector<int> hits;
    const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
    InstallEventHandler(GetControlEventTarget(view), RecordHit, 1, &hit, &hits, nullptr);
    HeadlessDriver::Click(view);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(hits, std::vector<int>{11});
    EXPECT_EQ(BTViewGetValue(view), 0);
    EXPECT_NE(button->State(), kScopePressed) << "released, it no longer looks pressed";
}

TEST_F(BTScopeButtonTest, ItsBestSizeIsTheTextBetweenTheEndPieces) {
    BGRect best{};
    float baseline = 0;
    ASSERT_EQ(BTViewGetOptimalBounds(view, &best, &baseline), noErr);
    BGFloat plain = 0, emphasised = 0;
    BTThemeTextInfo info = {0, kBTThemeStateActive, kBTThemeFontScope, 0, 1, 0, 2, 1, false};
    BCStringRef title = BTViewCopyText(view);
    BTThemeGetTextDimensions(title, 0, &info, &plain, nullptr, nullptr);
    info.fontID = kBTThemeFontScopeEmphasized;
    BTThemeGetTextDimensions(title, 0, &info, &emphasised, nullptr, nullptr);
    BCRelease(title);
    ASSERT_GT(emphasised, plain);
    EXPECT_EQ(best.size.width, 20 + std::ceil(emphasised)) << "selected, the text still fits";
    EXPECT_EQ(best.size.height, 20);
}

TEST_F(BTScopeButtonTest, OnlyPressedSelectedOrHoveredButtonsDrawTheirPill) {
    const BGPoint leftPiece = {5, 10};
    EXPECT_EQ(DrawnGrey(leftPiece), -1) << "idle: text alone";
    BTViewSetValue(view, 1);
    int selected = DrawnGrey(leftPiece);
    EXPECT_GE(selected, 0);
    EXPECT_LT(selected, 200) << "a pill dark enough for white text";

    // In a frame narrower than its text the pill still ends inside the frame.
    BGRect narrow = BGRectMake(20, 20, 40, 20);
    BTViewSetFrame(view, &narrow);
    EXPECT_GE(DrawnGrey({35, 10}), 0) << "the right end piece is drawn";
    EXPECT_EQ(DrawnGrey({45, 10}), -1) << "and nothing beyond the frame";
}
