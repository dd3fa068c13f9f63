// The pointer's shape as it moves over a window's views, and the busy shape that moving does
// not undo.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "tests/support/MakeControl.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using keltest::MakeControl;

namespace {

class PointerCursorTest : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    ControlRef field = nullptr;
    // A field at the top; below it two panes side by side, the divider at x 200 to 205.
    void SetUp() override {
        Rect bounds = {100, 100, 400, 600};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        field = MakeControl(window, kControlKindEditUnicodeText, BGRectMake(20, 10, 300, 22));
        ControlRef splitter =
            MakeControl(window, kControlKindSplitter, BGRectMake(0, 50, 500, 250));
        MakeControl(window, kControlKindUserPane, BGRectZero, splitter);
        MakeControl(window, kControlKindUserPane, BGRectZero, splitter);
        BTViewSetValue(splitter, 200);
        ShowWindow(window);
        SetThemeCursor(kThemeArrowCursor);
    }
    void TearDown() override {
        SetThemeCursor(kThemeArrowCursor);
        DisposeWindow(window);
    }
    uint32_t CursorAt(BGPoint local) {
        HeadlessDriver::MoveTo(window, local);
        HeadlessDriver::RunUntilIdle();
        return HeadlessDriver::Cursor();
    }
};

TEST_F(PointerCursorTest, TheShapeFollowsTheViewUnderThePointer) {
    EXPECT_EQ(CursorAt({100, 20}), uint32_t(kThemeIBeamCursor));
    EXPECT_EQ(CursorAt({202, 150}), uint32_t(kThemeResizeLeftRightCursor));
    EXPECT_EQ(CursorAt({100, 150}), uint32_t(kThemeArrowCursor));
    // A disabled field takes no text: no I-beam.
    DisableControl(field);
    EXPECT_EQ(CursorAt({100, 20}), uint32_t(kThemeArrowCursor));
}

TEST_F(PointerCursorTest, ABusyShapeStaysUntilTheApplicationChangesIt) {
    SetThemeCursor(kThemeWatchCursor);
    EXPECT_EQ(CursorAt({100, 20}), uint32_t(kThemeWatchCursor));
    EXPECT_EQ(CursorAt({202, 150}), uint32_t(kThemeWatchCursor));
    SetThemeCursor(kThemeArrowCursor);
    EXPECT_EQ(CursorAt({100, 20}), uint32_t(kThemeIBeamCursor));
}

} // namespace
