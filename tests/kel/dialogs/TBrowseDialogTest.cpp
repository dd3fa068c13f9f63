// A browse dialog from start to end: where it opens, the three ways it can run, and the reply of
// an accepted choice, on real temporary folders.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("browse");
        WriteFile(tree / "alpha.txt", "a");
        WriteFile(tree / "beta.txt", "b");
        std::filesystem::create_directories(tree / "gamma" / "Thing.app");
        UseListView(true);
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogTest, AClickedRowIsTheReplyOfTheDefaultButton) {
    BrowseDialogRun run(tree, kKelModalityAppModal);
    const uint32_t action = run.RunModal([&] {
        ClickListRow(*run.dialog, 1);
        EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"beta.txt"});
        ClickItem(*run.dialog, kBrowseDefaultButton);
    });
    EXPECT_EQ(action, uint32_t(kKelUserActionOpen));
    StatusCode status = 0;
    EXPECT_EQ(run.ReplyPaths(&status), std::vector<std::string>{(tree / "beta.txt").string()});
    EXPECT_EQ(status, noErr);
}

TEST_F(TBrowseDialogTest, AFileAsTheLocationOpensItsFolderWithTheFileSelected) {
    BrowseDialogRun run(tree / "beta.txt", kKelModalityModeless);
    // Before the run there is no browser: the selection is what the client named.
    EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"beta.txt"});
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(TargetName(*run.dialog), tree.filename().string());
    EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"beta.txt"});
}

TEST_F(TBrowseDialogTest, ALocationThatCannotBeEnteredFallsBackToItsNearestFolder) {
    // A package is a file to the open dialog: the dialog shows the folder that holds it.
    BrowseDialogRun run(tree / "gamma" / "Thing.app", kKelModalityAppModal);
    EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"Thing.app"});
    run.RunModal([&] {
        EXPECT_EQ(TargetName(*run.dialog), "gamma");
        ClickItem(*run.dialog, kBrowseCancelButton);
    });
}

TEST_F(TBrowseDialogTest, WithoutALocationItOpensInTheDocumentsFolder) {
    BrowseDialogRun run({}, kKelModalityAppModal);
    run.RunModal([&] {
        EXPECT_EQ(TargetName(*run.dialog), "Documents");
        ClickItem(*run.dialog, kBrowseCancelButton);
    });
}

TEST_F(TBrowseDialogTest, AModelessDialogReturnsAtOnceAndEndsFromTheClientsLoop) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    EXPECT_EQ(KelDialogRun(run.dialog), noErr);
    WindowRef window = KelDialogGetWindow(run.dialog);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_TRUE(run.dialog->IsRunning());
    ClickListRow(*run.dialog, 0);
    ClickItem(*run.dialog, kBrowseDefaultButton);
    EXPECT_FALSE(run.dialog->IsRunning());
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(run.ReplyPaths(), std::vector<std::string>{(tree / "alpha.txt").string()});
}

TEST_F(TBrowseDialogTest, ASheetShowsOnItsParentAndLeavesIt) {
    Rect bounds{40, 40, 700, 900};
    WindowRef parent = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &parent), noErr);
    ShowWindow(parent);
    BrowseDialogRun run(tree, kKelModalitySheet, OnParent(parent));
    EXPECT_EQ(KelDialogRun(run.dialog), noErr);
    WindowRef sheet = KelDialogGetWindow(run.dialog);
    WindowRef shownOn = nullptr;
    EXPECT_EQ(GetSheetWindowParent(sheet, &shownOn), noErr);
    EXPECT_EQ(shownOn, parent);
    HeadlessDriver::PressKey(kVK_Escape);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(KelDialogGetUserAction(run.dialog), uint32_t(kKelUserActionCancel));
    EXPECT_FALSE(IsWindowVisible(sheet));
    DisposeWindow(parent);
}

} // namespace
