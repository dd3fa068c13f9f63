// An open dialog made by the public create call in each modality: modal inside KelDialogRun,
// modeless and as a sheet driven by the client's own loop after KelDialogRun has returned.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class KelGetFileDialogModalityTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("modality");
        WriteFile(tree / "a.txt", "a");
        WriteFile(tree / "b.txt", "b");
        UseListView(true);
    }

    void Create(PublicDialog& run, const KelDialogCreationOptions& options) {
        ASSERT_EQ(KelCreateGetFileDialog(&options, nullptr, EventRecorder::Record, nullptr, nullptr,
                                         &run.recorder, &run.dialog),
                  noErr);
        run.StartIn(tree);
    }

    static bool Heard(const PublicDialog& run, long selector) {
        const std::vector<long>& heard = run.recorder.selectors;
        return std::find(heard.begin(), heard.end(), selector) != heard.end();
    }

    std::filesystem::path tree;
};

TEST_F(KelGetFileDialogModalityTest, AModelessDialogReturnsAtOnceAndEndsInTheClientsLoop) {
    PublicDialog run;
    Create(run, Options(kKelModalityModeless));
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_TRUE(run.Dialog().IsRunning());
    EXPECT_TRUE(IsWindowVisible(KelDialogGetWindow(run.dialog)));
    ClickListRow(run.Dialog(), 1);
    // Option-accepting hands the client an open of its own and leaves the dialog up.
    HeadlessDriver::Click(run.Dialog().GetWindow(), "kels", kBrowseDefaultButton, optionKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(run.Dialog().IsRunning());
    const std::vector<long>& heard = run.recorder.selectors;
    const auto action = std::find(heard.begin(), heard.end(), kKelCBUserAction);
    ASSERT_NE(action, heard.end());
    EXPECT_EQ(run.recorder.userActions[size_t(action - heard.begin())],
              uint32_t(kKelUserActionOpen));
    EXPECT_FALSE(Heard(run, kKelCBTerminate));
    ClickItem(run.Dialog(), kBrowseDefaultButton);
    EXPECT_FALSE(run.Dialog().IsRunning());
    EXPECT_EQ(KelDialogGetUserAction(run.dialog), uint32_t(kKelUserActionOpen));
    EXPECT_EQ(run.ReplyPaths(), std::vector<std::string>{(tree / "b.txt").string()});
}

TEST_F(KelGetFileDialogModalityTest, ASheetHangsOnItsParentAndEndsInTheClientsLoop) {
    const Rect bounds{100, 100, 700, 900};
    WindowRef parent = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &parent), noErr);
    ShowWindow(parent);
    KelDialogCreationOptions options = Options(kKelModalitySheet);
    options.parentWindow = parent;
    {
        PublicDialog run;
        Create(run, options);
        ASSERT_EQ(KelDialogRun(run.dialog), noErr);
        WindowRef sheet = KelDialogGetWindow(run.dialog);
        ASSERT_NE(sheet, nullptr);
        EXPECT_TRUE(IsWindowVisible(sheet));
        WindowRef sheetParent = nullptr;
        EXPECT_EQ(GetSheetWindowParent(sheet, &sheetParent), noErr);
        EXPECT_EQ(sheetParent, parent);
        ClickItem(run.Dialog(), kBrowseCancelButton);
        EXPECT_FALSE(run.Dialog().IsRunning());
        EXPECT_EQ(KelDialogGetUserAction(run.dialog), uint32_t(kKelUserActionCancel));
        EXPECT_TRUE(Heard(run, kKelCBTerminate));
    }
    DisposeWindow(parent);
}

} // namespace
