// The preview column of column view, a custom cell of property 10 that the data source draws
// and tracks: where it is, that drawing stays inside it, and that a source may follow the mouse
// in it to the release and have it drawn again while it does.

#include "FakeSource.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <gtest/gtest.h>

using basalt::gridbrowser::GridBrowserView;
using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

constexpr BGFloat kWidth = 170;

// What the preview's own callbacks saw; one test at a time uses it.
struct PreviewLog {
    int draws = 0;
    Rect drawn{};
    bool hadContext = false;
    Rect tracked{};
    Point start{};
    std::vector<MouseTrackingResult> followed;
    int drawsWhileTracking = 0;
};
PreviewLog gLog;

// Paints far past its cell, to show that the control keeps it inside.
void PaintEverywhere(ControlRef control, GridBrowserItemID, GridBrowserPropertyID property,
                     GridBrowserItemState, const Rect* rect, short, bool) {
    ++gLog.draws;
    gLog.drawn = *rect;
    BGContextRef context = nullptr;
    gLog.hadContext = property == kGridBrowserColumnViewPreviewProperty &&
                      GetGridBrowserDrawContext(control, &context) == noErr;
    if (!gLog.hadContext)
        return;
    BGContextSetRGBFillColor(context, 1, 0, 0, 1);
    BGContextFillRect(context, BGRectMake(-1000, -1000, 3000, 3000));
}

// Follows the mouse as a button in the preview would, asking for a redraw at every step.
long FollowToRelease(ControlRef control, GridBrowserItemID, GridBrowserPropertyID, const Rect* rect,
                     Point start, unsigned short) {
    gLog.tracked = *rect;
    gLog.start = start;
    int before = gLog.draws;
    MouseTrackingResult result = kMouseTrackingMouseDown;
    while (result != kMouseTrackingMouseUp) {
        Point point{};
        if (TrackMouseLocation(GetWindowPort(GetControlOwner(control)), &point, &result) != noErr)
            break;
        gLog.followed.push_back(result);
        Draw1Control(control);
    }
    gLog.drawsWhileTracking = gLog.draws - before;
    return -1;
}

class PreviewTest : public ::testing::Test {
protected:
    BrowserWindow browser{kGridBrowserColumnView, 600, 300};
    FakeSource source;
    GridBrowserItemID docs = 0, notes = 0;

    void SetUp() override {
        gLog = {};
        docs = source.Add(FakeSource::kRoot, "Documents", true);
        notes = source.Add(docs, "notes.txt");
        source.Attach(browser.control);
        GridBrowserCustomCallbacks custom;
        InitGridBrowserCustomCallbacks(&custom);
        custom.drawItemCallback = PaintEverywhere;
        custom.trackingCallback = FollowToRelease;
        SetGridBrowserCustomCallbacks(browser.control, &custom);
        std::vector path = {FakeSource::kRoot, docs, notes};
        SetGridBrowserColumnViewPath(browser.control, 3, path.data());
        HeadlessDriver::RunUntilIdle();
    }
};

TEST_F(PreviewTest, TheSourceDrawsTheSlotAndNothingElse) {
    ASSERT_GT(gLog.draws, 0);
    EXPECT_TRUE(gLog.hadContext);
    EXPECT_EQ(gLog.drawn.left, 2 * kWidth);
    EXPECT_EQ(gLog.drawn.right, 600);
    EXPECT_EQ(gLog.drawn.top, 0);
    EXPECT_EQ(gLog.drawn.bottom, 300);
    EXPECT_EQ(gridtest::PixelAt(browser.window, {450, 150}), 0xFFFF0000u);
    EXPECT_NE(gridtest::PixelAt(browser.window, {250, 150}), 0xFFFF0000u);
    EXPECT_NE(gridtest::PixelAt(browser.window, {50, 150}), 0xFFFF0000u);
    BGContextRef context = nullptr;
    EXPECT_NE(GetGridBrowserDrawContext(browser.control, &context), noErr)
        << "only while the callback draws";

    // Scrolled sideways, the slot moves with the columns and is still drawn whole.
    Rect narrow = {0, 0, 300, 400};
    SetControlBounds(browser.control, &narrow);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(gLog.drawn.left, 400 - kWidth);
    EXPECT_EQ(gLog.drawn.right, 400);
    EXPECT_EQ(gridtest::PixelAt(browser.window, {300, 150}), 0xFFFF0000u);

    gLog.draws = 0;
    std::vector<GridBrowserItemID> folder = {FakeSource::kRoot, docs};
    SetGridBrowserColumnViewPath(browser.control, 2, folder.data());
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(gLog.draws, 0) << "a folder has its column, not a preview";
}

TEST_F(PreviewTest, APressInTheSlotIsFollowedByTheSourceToTheRelease) {
    gridtest::PostMouse(browser.window, kEventMouseDown, {450, 120});
    gridtest::PostMouse(browser.window, kEventMouseDragged, {460, 130});
    gridtest::PostMouse(browser.window, kEventMouseUp, {460, 130});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(gLog.start.h, 450);
    EXPECT_EQ(gLog.start.v, 120);
    EXPECT_EQ(gLog.tracked.left, 2 * kWidth);
    EXPECT_EQ(gLog.followed, (std::vector<MouseTrackingResult>{kMouseTrackingMouseDragged,
                                                               kMouseTrackingMouseUp}));
    EXPECT_GE(gLog.drawsWhileTracking, 2) << "drawn again at every step";
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, notes)) << "the selection stays";
}

} // namespace
