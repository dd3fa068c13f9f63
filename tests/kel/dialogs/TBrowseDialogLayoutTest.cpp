// The browse window's geometry: dismiss buttons with long titles, the bottom group and the
// client's custom area, a missing message, and the splitter's limits.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

Rect ContentBounds(TBrowseDialog& dialog) {
    TRect bounds;
    dialog.GetBounds(bounds);
    return bounds;
}

class TBrowseDialogLayoutTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("layout");
        UseListView(true);
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogLayoutTest, LongButtonTitlesShareTheRowInTwoEqualHalves) {
    BCStringRef longText =
        BCSTR("Open the selected documents in a new window of this application, please");
    BrowseDialogRun run(tree, kKelModalityModeless,
                        Adjusting([&](KelDialogCreationOptions& options) {
                            options.actionButtonLabel = longText;
                            options.cancelButtonLabel = longText;
                        }));
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    const BGRect accept = FrameIn(*run.dialog, kBrowseDefaultButton);
    const BGRect cancel = FrameIn(*run.dialog, kBrowseCancelButton);
    const int half = (RectWidth(ContentBounds(*run.dialog)) - 60 - 24) / 2;
    EXPECT_EQ(accept.size.width, half);
    EXPECT_EQ(cancel.size.width, half);
    EXPECT_EQ(BGRectGetMinX(accept) - BGRectGetMaxX(cancel), 12);
}

TEST_F(TBrowseDialogLayoutTest, ShortTitlesKeepTheirBestWidthsAndTheirGap) {
    BrowseDialogRun run(tree, kKelModalityModeless,
                        Adjusting([&](KelDialogCreationOptions& options) {
                            options.actionButtonLabel = BCSTR("Use These Files Together");
                        }));
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ControlRef acceptButton = ControlOf(*run.dialog, kBrowseDefaultButton);
    Rect best{0, 0, 0, 0};
    GetBestControlRect(acceptButton, &best, nullptr);
    const BGRect accept = FrameIn(*run.dialog, kBrowseDefaultButton);
    const BGRect cancel = FrameIn(*run.dialog, kBrowseCancelButton);
    EXPECT_EQ(accept.size.width, RectWidth(best));
    EXPECT_EQ(BGRectGetMinX(accept) - BGRectGetMaxX(cancel), 12);
    EXPECT_GE(BGRectGetMinX(cancel), 24);
}

TEST_F(TBrowseDialogLayoutTest, WithoutACustomAreaTheGroupGoesAndTheBrowserKeepsItsHeight) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ControlRef group = ControlOf(*run.dialog, kBrowseBottomGroup);
    EXPECT_FALSE(IsControlVisible(group));
    // The layout file's window is 540 high, its group 52 with a gap of 8 below it.
    EXPECT_EQ(RectHeight(ContentBounds(*run.dialog)), 540 - 60);
    // The pane keeps the layout's 328, and the 22 of the message row that isn't shown.
    EXPECT_EQ(FrameIn(*run.dialog, kBrowsePane).size.height, 328 + 22);
    const BGRect pane = FrameIn(*run.dialog, kBrowsePane);
    const BGRect cancel = FrameIn(*run.dialog, kBrowseCancelButton);
    EXPECT_LT(BGRectGetMaxY(pane), BGRectGetMinY(cancel));
    EXPECT_EQ(run.dialog->BottomGroupCount(), 0u);
}

TEST_F(TBrowseDialogLayoutTest, AClientAreaIsAgreedRaisedToTheMinimumAndWidensTheWindow) {
    std::vector<Rect> offers;
    BrowseDialogRun run(tree, kKelModalityModeless);
    run.recorder.onEvent = [&](long selector, KelCBRec* record) {
        if (selector != kKelCBCustomize) {
            return;
        }
        Rect custom = record->customRect;
        offers.push_back(custom);
        if (offers.size() == 1) {
            // Wider than the area, and lower than its minimum height.
            custom.right = int16_t(custom.left + 800);
            custom.bottom = int16_t(custom.top + 10);
            record->customRect = custom;
        }
    };
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ASSERT_GE(offers.size(), 3u);
    const Rect agreed = offers.back();
    EXPECT_EQ(RectWidth(agreed), 800);
    EXPECT_EQ(RectHeight(agreed), 40);
    EXPECT_TRUE(IsControlVisible(ControlOf(*run.dialog, kBrowseBottomGroup)));
    const Rect bounds = ContentBounds(*run.dialog);
    EXPECT_EQ(run.dialog->MinimumSize().h, RectWidth(bounds));
    EXPECT_EQ(FrameIn(*run.dialog, kBrowseCustomArea).size.width, 800);
    EXPECT_EQ(FrameIn(*run.dialog, kBrowsePane).size.height, 328 + 22);
}

TEST_F(TBrowseDialogLayoutTest, AMessageTakesTheTopRowAndWithoutOneTheRowsMoveUp) {
    BrowseDialogRun plain(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(plain.dialog), noErr);
    BrowseDialogRun told(tree, kKelModalityModeless,
                         Adjusting([](KelDialogCreationOptions& options) {
                             options.message = BCSTR("Choose the pictures for the album.");
                         }));
    ASSERT_EQ(KelDialogRun(told.dialog), noErr);
    EXPECT_FALSE(IsControlVisible(ControlOf(*plain.dialog, kBrowseMessage)));
    EXPECT_TRUE(IsControlVisible(ControlOf(*told.dialog, kBrowseMessage)));
    // The message's row is 16 high with a gap of 6 below it.
    for (int16_t item : {kBrowseTypePopup, kBrowseTopRow}) {
        EXPECT_EQ(FrameIn(*told.dialog, item).origin.y - FrameIn(*plain.dialog, item).origin.y, 22)
            << item;
    }
    EXPECT_EQ(FrameIn(*plain.dialog, kBrowsePane).size.height -
                  FrameIn(*told.dialog, kBrowsePane).size.height,
              22);
}

TEST_F(TBrowseDialogLayoutTest, TheSplitterLeavesTheBrowserItsMinimumWidth) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ControlRef splitter = ControlOf(*run.dialog, kBrowseSplitter);
    BTViewSetValue(splitter, 5000);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(FrameIn(*run.dialog, kBrowseBrowser).size.width, 120);
    BTViewSetValue(splitter, 200);
    EXPECT_EQ(FrameIn(*run.dialog, kBrowseSidebar).size.width, 200);
}

TEST_F(TBrowseDialogLayoutTest, ResizingKeepsTheTopBlockCentredAndTheSearchFieldAtTheRight) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    WindowRef window = KelDialogGetWindow(run.dialog);
    const Rect before = ContentBounds(*run.dialog);
    HeadlessDriver::ResizeTo(window, int16_t(RectWidth(before) + 200), RectHeight(before));
    HeadlessDriver::RunUntilIdle();
    const Rect after = ContentBounds(*run.dialog);
    ASSERT_EQ(RectWidth(after), RectWidth(before) + 200);
    const BGRect block = FrameIn(*run.dialog, kBrowseTopBlock);
    EXPECT_NEAR(BGRectGetMidX(block), RectWidth(after) / 2.0, 1);
    EXPECT_NEAR(BGRectGetMinX(FrameIn(*run.dialog, kBrowseTypePopup)) - BGRectGetMinX(block), 60,
                1);
    EXPECT_EQ(BGRectGetMaxX(FrameIn(*run.dialog, kBrowseSearchField)), RectWidth(after) - 20);
}

} // namespace
