// The client's custom area: its size agreed at start-up, and the mouse downs that reach the
// client there and only there.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogCustomAreaTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        UseListView(true);
        tree = MakeScratchFolder("custom");
        WriteFile(tree / "file.txt", "f");
    }

    // A client that asks once for an area of that height, takes the dialog's corrections, and
    // counts the mouse downs it is sent.
    void AskFor(BrowseDialogRun& run, int16_t height) {
        run.recorder.onEvent = [this, height, asked = false](long selector,
                                                             KelCBRec* record) mutable {
            if (selector == kKelCBCustomize && !asked) {
                asked = true;
                Rect custom = record->customRect;
                custom.right = int16_t(custom.left + 300);
                custom.bottom = int16_t(custom.top + height);
                record->customRect = custom;
            } else if (selector == kKelCBEvent && record->eventData != nullptr &&
                       static_cast<EventRecord*>(record->eventData)->what == mouseDown) {
                ++mouseDowns;
            }
        };
    }

    std::filesystem::path tree;
    int mouseDowns = 0;
};

TEST_F(TBrowseDialogCustomAreaTest, AMouseDownInTheAreaReachesTheClientAndOneElsewhereDoesNot) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    AskFor(run, 60);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    const Rect custom = run.dialog->Client().record.customRect;
    ASSERT_EQ(RectHeight(custom), 60);
    ClickListRow(*run.dialog, 0);
    EXPECT_EQ(mouseDowns, 0);
    HeadlessDriver::ClickAt(run.dialog->GetWindow(),
                            BGPoint{custom.left + 10.0, custom.top + 10.0});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(mouseDowns, 1);
    EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"file.txt"});
}

TEST_F(TBrowseDialogCustomAreaTest, AnAreaFollowsTheWindowWhenItGrows) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    AskFor(run, 50);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    const Rect before = run.dialog->Client().record.customRect;
    TRect bounds;
    run.dialog->GetBounds(bounds);
    HeadlessDriver::ResizeTo(run.dialog->GetWindow(), RectWidth(bounds),
                             int16_t(RectHeight(bounds) + 100));
    HeadlessDriver::RunUntilIdle();
    const Rect after = run.dialog->Client().record.customRect;
    EXPECT_EQ(after.top - before.top, 100);
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(RectHeight(after), RectHeight(before));
}

} // namespace
