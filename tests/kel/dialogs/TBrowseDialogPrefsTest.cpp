// What a browse dialog remembers for its client: the folder of an accepted choice, the window's
// size and place, and that a cancel leaves the remembered folder alone.

#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogPrefsTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("prefs");
        std::filesystem::create_directories(tree / "kept");
        WriteFile(tree / "kept" / "file.txt", "f");
        std::filesystem::create_directories(tree / "elsewhere");
        WriteFile(tree / "elsewhere" / "other.txt", "o");
        UseListView(true);
        ForgetDialogPrefs();
    }

    // Opens a dialog where the client named nothing, and ends it by accepting or cancelling.
    void RunAndEnd(bool accept, const std::function<void(TBrowseDialog&)>& before = {}) {
        BrowseDialogRun run({}, kKelModalityModeless);
        ASSERT_EQ(KelDialogRun(run.dialog), noErr);
        HeadlessDriver::RunUntilIdle();
        if (before) {
            before(*run.dialog);
        }
        if (accept) {
            ClickListRow(*run.dialog, 0);
            ClickItem(*run.dialog, kBrowseDefaultButton);
        } else {
            ClickItem(*run.dialog, kBrowseCancelButton);
        }
        ASSERT_FALSE(run.dialog->IsRunning());
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogPrefsTest, TheFolderOfAnAcceptedChoiceIsWhereTheNextDialogOpens) {
    RunAndEnd(true, [&](TBrowseDialog& dialog) {
        dialog.SetTargetCommand(NodeOf(tree / "kept"), TKelNode());
    });
    RunAndEnd(false, [&](TBrowseDialog& dialog) {
        EXPECT_EQ(TargetName(dialog), "kept");
        dialog.SetTargetCommand(NodeOf(tree / "elsewhere"), TKelNode());
    });
    // The cancel didn't move it.
    BrowseDialogRun run({}, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(TargetName(*run.dialog), "kept");
}

TEST_F(TBrowseDialogPrefsTest, TheWindowComesBackAtItsSizeAndPlace) {
    RunAndEnd(false, [&](TBrowseDialog& dialog) {
        WindowRef window = dialog.GetWindow();
        HeadlessDriver::ResizeTo(window, 800, 600);
        HeadlessDriver::RunUntilIdle();
        MoveWindow(window, 70, 90, false);
    });
    BrowseDialogRun run({}, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    TRect bounds;
    run.dialog->GetBounds(bounds);
    EXPECT_EQ(RectWidth(bounds), 800);
    EXPECT_EQ(RectHeight(bounds), 600);
    const Point place = run.dialog->GetLocation();
    EXPECT_EQ(place.h, 70);
    EXPECT_EQ(place.v, 90);
}

TEST_F(TBrowseDialogPrefsTest, AStoredSizeSmallerThanTheWindowIsIgnored) {
    TKelPrefs prefs;
    prefs.SetClientKeys(TStringRef(BCSTR("GetFile")), TStringRef(BCSTR("0")));
    prefs.SetDialogSizePref(Rect{0, 0, 200, 300});
    BrowseDialogRun run({}, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    TRect bounds;
    run.dialog->GetBounds(bounds);
    EXPECT_EQ(RectWidth(bounds), 720);
    EXPECT_GE(RectHeight(bounds), run.dialog->MinimumSize().v);
}

} // namespace
