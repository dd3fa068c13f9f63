// The accept flow and what the client hears, in order: a choice that the dialog's filter allows
// ends the dialog, one it doesn't leaves it open without a word; the buttons follow the state.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <iterator>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogAcceptTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("accept");
        std::filesystem::create_directory(tree / "folder");
        WriteFile(tree / "one.txt", "1");
        WriteFile(tree / "two.txt", "2");
        UseListView(true);
    }

    std::filesystem::path tree;
};

// The selectors after the start, without the preview notices that follow each selection.
std::vector<long> AfterStart(const std::vector<long>& selectors) {
    auto start = std::find(selectors.begin(), selectors.end(), long(kKelCBStart));
    std::vector<long> after;
    std::copy_if(start == selectors.end() ? start : start + 1, selectors.end(),
                 std::back_inserter(after),
                 [](long selector) { return selector != kKelCBAdjustPreview; });
    return after;
}

TEST_F(TBrowseDialogAcceptTest, TheClientHearsStartLocationSelectionAcceptAndTheEndInOrder) {
    BrowseDialogRun run(tree, kKelModalityAppModal);
    std::vector<long> selectionCounts;
    bool started = false;
    run.recorder.onEvent = [&](long selector, KelCBRec* record) {
        started = started || selector == kKelCBStart;
        if (started && selector == kKelCBSelectEntry) {
            long count = 0;
            BECountItems(static_cast<BEDescList*>(record->eventData), &count);
            selectionCounts.push_back(count);
        }
    };
    run.RunModal([&] {
        ClickListRow(*run.dialog, 2);
        ClickListRow(*run.dialog, 1, cmdKey);
        ClickItem(*run.dialog, kBrowseDefaultButton);
    });
    // The first location is told while the window is made, before the start.
    const std::vector<long>& heard = run.recorder.selectors;
    const auto opened = std::find(heard.begin(), heard.end(), long(kKelCBOpenSelection));
    const auto start = std::find(heard.begin(), heard.end(), long(kKelCBStart));
    ASSERT_LT(opened + 1, start);
    EXPECT_EQ(*(opened + 1), long(kKelCBNewLocation));
    EXPECT_EQ(AfterStart(heard),
              (std::vector<long>{kKelCBSelectEntry, kKelCBSelectEntry, kKelCBAccept,
                                 kKelCBUserAction, kKelCBTerminate}));
    EXPECT_EQ(selectionCounts, (std::vector<long>{1, 2}));
    // The reply lists the choice by name, whatever order it was clicked in.
    EXPECT_EQ(run.ReplyPaths(),
              (std::vector<std::string>{(tree / "one.txt").string(), (tree / "two.txt").string()}));
}

TEST_F(TBrowseDialogAcceptTest, AChoiceTheFilterRefusesLeavesTheDialogOpenWithoutAWord) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    HeadlessDriver::ResetBeepCount();
    ClickListRow(*run.dialog, 0); // a folder: the open dialog doesn't choose folders
    ASSERT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"folder"});
    EXPECT_FALSE(run.dialog->CanChoose());
    EXPECT_FALSE(run.dialog->TryAcceptDialog(0));
    ClickItem(*run.dialog, kBrowseDefaultButton);
    EXPECT_TRUE(run.dialog->IsRunning());
    EXPECT_EQ(HeadlessDriver::BeepCount(), 0);
    EXPECT_EQ(std::count(run.recorder.selectors.begin(), run.recorder.selectors.end(),
                         long(kKelCBAccept)),
              0);
    ClickItem(*run.dialog, kBrowseCancelButton);
    StatusCode status = noErr;
    EXPECT_TRUE(run.ReplyPaths(&status).empty());
    EXPECT_EQ(status, userCanceledErr);
}

TEST_F(TBrowseDialogAcceptTest, NewFolderFollowsTheClientsRefusalAndTheTargetsRights) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ControlRef newFolder = ControlOf(*run.dialog, kBrowseNewFolder);
    EXPECT_TRUE(IsControlEnabled(newFolder));
    run.dialog->SetKelState(kActionNewFolderRefused);
    EXPECT_FALSE(IsControlEnabled(newFolder));
    run.dialog->SetKelState(0);
    EXPECT_TRUE(IsControlEnabled(newFolder));
    // The computer itself takes no new folders.
    run.dialog->SetTargetCommand(TKelNode(TKelNode::GetRootNodeRef(), true), TKelNode());
    EXPECT_FALSE(IsControlEnabled(newFolder));
    EXPECT_TRUE(run.dialog->IsTargetLocked());
}

TEST_F(TBrowseDialogAcceptTest, AFolderWithoutWriteRightsIsLocked) {
    const std::filesystem::path locked = tree / "locked";
    std::filesystem::create_directory(locked);
    std::filesystem::create_directory(tree / "open");
    std::filesystem::permissions(locked, std::filesystem::perms::owner_read |
                                             std::filesystem::perms::owner_exec);
    const int result = RunUnprivileged(tree, [&] {
        BrowseDialogRun run(locked, kKelModalityModeless);
        if (KelDialogRun(run.dialog) != noErr) {
            return 2;
        }
        const bool disabled = !IsControlEnabled(ControlOf(*run.dialog, kBrowseNewFolder));
        run.dialog->SetTargetCommand(NodeOf(tree / "open"), TKelNode());
        const bool enabledAgain = IsControlEnabled(ControlOf(*run.dialog, kBrowseNewFolder));
        std::fprintf(stderr, "new folder disabled in locked: %d, enabled in open: %d\n", disabled,
                     enabledAgain);
        return disabled && enabledAgain ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
}

TEST_F(TBrowseDialogAcceptTest, BackIsOnFromTheSecondPlaceAndForwardOnlyBeforeTheLast) {
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ControlRef history = ControlOf(*run.dialog, kBrowseBackForward);
    auto enabled = [&](int16_t segment) {
        Boolean on = false;
        GetControlData(history, segment, kControlSegmentEnabledTag, sizeof on, &on, nullptr);
        return bool(on);
    };
    run.dialog->NodeBrowserControlBackForwardSnapshotChanged(1, 2);
    EXPECT_FALSE(enabled(1));
    EXPECT_TRUE(enabled(2));
    run.dialog->NodeBrowserControlBackForwardSnapshotChanged(2, 2);
    EXPECT_TRUE(enabled(1));
    EXPECT_FALSE(enabled(2));
    // A disabled segment takes no click.
    HeadlessDriver::Click(KelDialogGetWindow(run.dialog), ControlID{kKelControlSignature, 20}, 0,
                          2);
    HeadlessDriver::RunUntilIdle();
    EXPECT_FALSE(run.dialog->SearchTextStale());
}

TEST_F(TBrowseDialogAcceptTest, ATargetChangeTellsTheClientWhetherItIsTheDesktop) {
    std::filesystem::create_directories(ScratchHome() / "Desktop");
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    run.recorder.selectors.clear();
    ASSERT_TRUE(run.dialog->GotoDesktop());
    EXPECT_NE(std::find(run.recorder.selectors.begin(), run.recorder.selectors.end(),
                        long(kKelCBShowDesktop)),
              run.recorder.selectors.end());
    run.recorder.selectors.clear();
    run.dialog->SetTargetCommand(NodeOf(tree), TKelNode());
    EXPECT_NE(std::find(run.recorder.selectors.begin(), run.recorder.selectors.end(),
                        long(kKelCBNewLocation)),
              run.recorder.selectors.end());
}

} // namespace
