// Making folders from a browse dialog on real temporary folders: the new folder dialog, whose
// accept asks the name and makes the folder, and the client's new folder message.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr int16_t kNameCreate = 2;
constexpr int16_t kNameCancel = 1;

std::vector<uint8_t> PascalName(const std::string& name) {
    std::vector<uint8_t> text(name.size() + 1);
    text[0] = static_cast<uint8_t>(name.size());
    std::copy(name.begin(), name.end(), text.begin() + 1);
    return text;
}

class TBrowseDialogNewFolderTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("new-folder");
        std::filesystem::create_directory(tree / "Taken");
        UseListView(true);
    }

    void CreateNewFolderDialog(PublicDialog& run) {
        const KelDialogCreationOptions options = Options();
        ASSERT_EQ(
            KelCreateNewFolderDialog(&options, EventRecorder::Record, &run.recorder, &run.dialog),
            noErr);
        run.StartIn(tree);
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogNewFolderTest, AcceptingAsksTheNameMakesTheFolderAndRepliesWithIt) {
    PublicDialog run;
    CreateNewFolderDialog(run);
    const uint32_t action = run.RunModal([&] {
        WindowRef window = run.Dialog().GetWindow();
        WhenInFront(window, [](WindowRef names) {
            HeadlessDriver::TypeText("Plans");
            HeadlessDriver::Click(names, "kels", kNameCreate);
        });
        ClickItem(run.Dialog(), kBrowseDefaultButton);
    });
    EXPECT_EQ(action, uint32_t(kKelUserActionNewFolder));
    EXPECT_TRUE(std::filesystem::is_directory(tree / "Plans"));
    StatusCode status = 0;
    EXPECT_EQ(run.ReplyPaths(&status), std::vector<std::string>{(tree / "Plans").string()});
    EXPECT_EQ(status, noErr);
}

TEST_F(TBrowseDialogNewFolderTest, CancellingTheNameLeavesTheDialogUpAndMakesNothing) {
    PublicDialog run;
    CreateNewFolderDialog(run);
    bool stayed = false;
    const uint32_t action = run.RunModal([&] {
        WindowRef window = run.Dialog().GetWindow();
        WhenInFront(window, [&, window](WindowRef names) {
            HeadlessDriver::Click(names, "kels", kNameCancel);
            When([window] { return FrontWindow() == window; },
                 [&] {
                     stayed = run.Dialog().IsRunning();
                     ClickItem(run.Dialog(), kBrowseCancelButton);
                 });
        });
        ClickItem(run.Dialog(), kBrowseDefaultButton);
    });
    EXPECT_TRUE(stayed);
    EXPECT_EQ(action, uint32_t(kKelUserActionCancel));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(tree), {}), 1);
    StatusCode status = 0;
    EXPECT_TRUE(run.ReplyPaths(&status).empty());
    EXPECT_EQ(status, userCanceledErr);
}

TEST_F(TBrowseDialogNewFolderTest, TheClientsMessageMakesTheFolderAndMovesIntoIt) {
    PublicDialog run;
    const KelDialogCreationOptions options = Options();
    ASSERT_EQ(KelCreateGetFileDialog(&options, nullptr, EventRecorder::Record, nullptr, nullptr,
                                     &run.recorder, &run.dialog),
              noErr);
    run.StartIn(tree);
    StatusCode made = 1;
    StatusCode taken = 0;
    StatusCode missing = 0;
    std::string target;
    run.RunModal([&] {
        std::vector<uint8_t> name = PascalName("Letters");
        made = KelCustomControl(run.dialog, 14, name.data());
        target = TargetName(run.Dialog());
        // Back up, where the name is now taken.
        EXPECT_EQ(KelCustomControl(run.dialog, 27, nullptr), noErr);
        taken = KelCustomControl(run.dialog, 14, name.data());
        missing = KelCustomControl(run.dialog, 14, nullptr);
        ClickItem(run.Dialog(), kBrowseCancelButton);
    });
    EXPECT_EQ(made, noErr);
    EXPECT_EQ(target, "Letters");
    EXPECT_TRUE(std::filesystem::is_directory(tree / "Letters"));
    EXPECT_NE(taken, noErr);
    EXPECT_EQ(missing, paramErr);
}

TEST_F(TBrowseDialogNewFolderTest, AFolderThatCantBeWrittenTurnsCreateOffAndRefusesTheMessage) {
    const std::filesystem::path locked = tree / "Taken";
    ::chmod(locked.c_str(), 0555);
    // Root writes anywhere: the check runs as an ordinary user.
    const int failures = RunUnprivileged(locked, [&] {
        int failed = 0;
        PublicDialog run;
        const KelDialogCreationOptions options = Options();
        if (KelCreateNewFolderDialog(&options, EventRecorder::Record, &run.recorder, &run.dialog) !=
            noErr) {
            return 64;
        }
        BEDesc desc = DescOf(locked);
        KelCustomControl(run.dialog, 8, &desc);
        BEDisposeDesc(&desc);
        run.RunModal([&] {
            KelGetFileDialog& dialog = run.Dialog();
            failed |= dialog.CanChoose() ? 1 : 0;
            failed |= IsControlEnabled(dialog.GetControlFromLayout(kBrowseDefaultButton)) ? 2 : 0;
            WindowRef window = dialog.GetWindow();
            bool alerted = false;
            WhenInFront(window, [&](WindowRef) {
                alerted = true;
                HeadlessDriver::PressKey(kVK_Return);
            });
            std::vector<uint8_t> name = PascalName("Inside");
            KelCustomControl(run.dialog, 14, name.data());
            failed |= alerted ? 0 : 4;
            ClickItem(dialog, kBrowseCancelButton);
        });
        failed |= std::filesystem::exists(locked / "Inside") ? 8 : 0;
        return failed;
    });
    ::chmod(locked.c_str(), 0755);
    EXPECT_EQ(failures, 0);
}

} // namespace
