// The keyboard commands of a browse dialog, pressed as a user would on a real folder tree.

#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

// Key codes of the keyboard's letters and digits used here.
constexpr uint16_t kKeyH = 0x04;
constexpr uint16_t kKeyG = 0x05;
constexpr uint16_t kKeyTwo = 0x13;
constexpr uint16_t kKeyThree = 0x14;
constexpr uint16_t kKeyO = 0x1F;
constexpr uint16_t kKeyLeftBracket = 0x21;
constexpr uint16_t kKeyRightBracket = 0x1E;

class TBrowseDialogKeysTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("keys");
        std::filesystem::create_directories(tree / "inner" / "deeper");
        std::filesystem::create_directories(tree / "other");
        WriteFile(tree / "note.txt", "n");
        std::filesystem::create_directories(ScratchHome() / "Desktop");
        UseListView(true);
    }

    // Runs a modeless dialog on the tree and hands it to keys.
    void WithDialog(const std::function<void(TBrowseDialog&)>& keys) {
        WithModelessDialog(tree, keys);
    }

    static void Press(uint16_t keyCode, uint32_t modifiers, char16_t character = 0) {
        HeadlessDriver::PressKey(keyCode, modifiers, character);
        HeadlessDriver::RunUntilIdle();
    }

    // Command-shift-G, with text typed into the Go To window and then the key that ends it.
    static void GoTo(TBrowseDialog& dialog, const std::string& text, uint16_t endKey = kVK_Return) {
        WhenWindowShowsOver(dialog.GetWindow(), [text, endKey](WindowRef goTo) {
            HeadlessDriver::TypeText(text);
            HeadlessDriver::PressKey(endKey);
            HeadlessDriver::RunUntilIdle();
            // A path the window refused must not leave the test hanging.
            QuitAppModalLoopForWindow(goTo);
        });
        Press(kKeyG, cmdKey | shiftKey, u'G');
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogKeysTest, CommandDownAndReturnGoIntoOneSelectedFolderInTheList) {
    WithDialog([&](TBrowseDialog& dialog) {
        ClickListRow(dialog, 0); // inner
        Press(kVK_DownArrow, cmdKey);
        EXPECT_EQ(TargetName(dialog), "inner");
        ClickListRow(dialog, 0); // deeper: a folder the open dialog can't choose
        Press(kVK_Return, 0);
        EXPECT_EQ(TargetName(dialog), "deeper");
        EXPECT_TRUE(dialog.IsRunning());
    });
}

TEST_F(TBrowseDialogKeysTest, CommandDownWithTwoRowsSelectedStaysWhereItIs) {
    WithDialog([&](TBrowseDialog& dialog) {
        ClickListRow(dialog, 0);
        ClickListRow(dialog, 2, cmdKey);
        ASSERT_EQ(SelectedNames(dialog).size(), 2u);
        Press(kVK_DownArrow, cmdKey);
        EXPECT_EQ(TargetName(dialog), tree.filename().string());
    });
}

TEST_F(TBrowseDialogKeysTest, InColumnsCommandOpenDoesNothingAndReturnPressesTheDefaultButton) {
    UseListView(false);
    WithDialog([&](TBrowseDialog& dialog) {
        ASSERT_TRUE(dialog.Browser()->SetSelection(NodeList(NodeOf(tree / "note.txt")), 1) ==
                    noErr);
        HeadlessDriver::RunUntilIdle();
        Press(kKeyO, cmdKey, u'o');
        EXPECT_TRUE(dialog.IsRunning());
        EXPECT_EQ(TargetName(dialog), tree.filename().string());
        Press(kVK_Return, 0);
        EXPECT_FALSE(dialog.IsRunning());
        EXPECT_EQ(dialog.UserAction(), uint32_t(kKelUserActionOpen));
    });
}

TEST_F(TBrowseDialogKeysTest, CommandUpGoesToTheParentWithTheFolderComeFromSelected) {
    WithDialog([&](TBrowseDialog& dialog) {
        ClickListRow(dialog, 0);
        Press(kVK_DownArrow, cmdKey);
        ASSERT_EQ(TargetName(dialog), "inner");
        Press(kVK_UpArrow, cmdKey);
        EXPECT_EQ(TargetName(dialog), tree.filename().string());
        EXPECT_EQ(SelectedNames(dialog), std::vector<std::string>{"inner"});
    });
}

TEST_F(TBrowseDialogKeysTest, ShiftedCommandsGoToTheComputerHomeAndDesktop) {
    WithDialog([&](TBrowseDialog& dialog) {
        Press(kVK_ANSI_C, cmdKey | shiftKey, u'C');
        TKelNode target;
        dialog.Target(target);
        EXPECT_TRUE(target.IsRoot());
        Press(kKeyH, cmdKey | shiftKey, u'H');
        EXPECT_EQ(TargetName(dialog), ScratchHome().filename().string());
        Press(kVK_ANSI_D, cmdKey, u'd');
        EXPECT_EQ(TargetName(dialog), "Desktop");
        EXPECT_TRUE(dialog.IsLocationDesktop());
    });
}

TEST_F(TBrowseDialogKeysTest, CommandShiftGGoesToATypedFolderAndSelectsATypedFile) {
    WithDialog([&](TBrowseDialog& dialog) {
        GoTo(dialog, (tree / "inner" / "deeper").string());
        EXPECT_EQ(TargetName(dialog), "deeper");
        GoTo(dialog, (tree / "note.txt").string());
        EXPECT_EQ(TargetName(dialog), tree.filename().string());
        EXPECT_EQ(SelectedNames(dialog), std::vector<std::string>{"note.txt"});
        GoTo(dialog, "~/Desktop");
        EXPECT_EQ(TargetName(dialog), "Desktop");
        GoTo(dialog, (tree / "other").string(), kVK_Escape);
        EXPECT_EQ(TargetName(dialog), "Desktop");
        EXPECT_TRUE(dialog.IsRunning());
    });
}

TEST_F(TBrowseDialogKeysTest, CommandTwoAndThreeSwitchTheViewAndRememberIt) {
    WithDialog([&](TBrowseDialog& dialog) {
        TKelPrefs prefs;
        Press(kKeyThree, cmdKey, u'3');
        EXPECT_EQ(dialog.Browser()->ViewStyle(), kColumnViewStyle);
        EXPECT_EQ(prefs.GetView(BCSTR("KelPanelFileListModeForOpenMode")), TKelPrefs::kColumnView);
        EXPECT_EQ(GetControl32BitValue(ControlOf(dialog, kBrowseViewStyle)), 2);
        Press(kKeyTwo, cmdKey, u'2');
        EXPECT_EQ(dialog.Browser()->ViewStyle(), kListViewStyle);
        EXPECT_EQ(prefs.GetView(BCSTR("KelPanelFileListModeForOpenMode")), TKelPrefs::kListView);
        EXPECT_EQ(GetControl32BitValue(ControlOf(dialog, kBrowseViewStyle)), 1);
    });
}

TEST_F(TBrowseDialogKeysTest, BracketsWalkTheHistoryAndMarkTheSearchTextStale) {
    WithDialog([&](TBrowseDialog& dialog) {
        ClickListRow(dialog, 0);
        Press(kVK_DownArrow, cmdKey);
        ASSERT_EQ(TargetName(dialog), "inner");
        EXPECT_FALSE(dialog.SearchTextStale());
        Press(kKeyLeftBracket, cmdKey, u'[');
        EXPECT_EQ(TargetName(dialog), tree.filename().string());
        EXPECT_TRUE(dialog.SearchTextStale());
        Press(kKeyRightBracket, cmdKey, u']');
        EXPECT_EQ(TargetName(dialog), "inner");
    });
}

TEST_F(TBrowseDialogKeysTest, EscapeAndTheCloseBoxCancel) {
    for (bool closeBox : {false, true}) {
        BrowseDialogRun run(tree, kKelModalityModeless);
        ASSERT_EQ(KelDialogRun(run.dialog), noErr);
        if (closeBox) {
            EventRef close = nullptr;
            CreateEvent(nullptr, kEventClassWindow, kEventWindowClose, 0, 0, &close);
            WindowRef window = KelDialogGetWindow(run.dialog);
            SetEventParameter(close, kEventParamDirectObject, typeWindowRef, sizeof window,
                              &window);
            SendEventToEventTarget(close, GetWindowEventTarget(window));
            ReleaseEvent(close);
        } else {
            Press(kVK_Escape, 0);
        }
        EXPECT_EQ(KelDialogGetUserAction(run.dialog), uint32_t(kKelUserActionCancel));
        const std::vector<long> ending = {kKelCBCancel, kKelCBUserAction, kKelCBTerminate};
        ASSERT_GE(run.recorder.selectors.size(), ending.size());
        EXPECT_TRUE(std::equal(ending.rbegin(), ending.rend(), run.recorder.selectors.rbegin()));
    }
}

} // namespace
