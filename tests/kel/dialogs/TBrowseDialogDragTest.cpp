// Files dragged onto a browse dialog from another program.

#include "basalt/toolbox/drag/Drag.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using basalt::toolbox::drag::DeliverFileDrop;
using namespace keltest;

namespace {

std::string FileURL(const std::filesystem::path& path) {
    return "file://" + path.string();
}

class TBrowseDialogDragTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("drag");
        std::filesystem::create_directories(tree / "start");
        std::filesystem::create_directories(tree / "there" / "inside");
        WriteFile(tree / "there" / "picked.txt", "p");
        WriteFile(tree / "there" / "second.txt", "s");
        UseListView(true);
    }

    std::filesystem::path tree;
};

TEST_F(TBrowseDialogDragTest, ADroppedFileShowsItsFolderWithTheFileSelected) {
    BrowseDialogRun run(tree / "start", kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(DeliverFileDrop(run.dialog->GetWindow(), Point{200, 300},
                              {FileURL(tree / "there" / "picked.txt")}),
              noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TargetName(*run.dialog), "there");
    EXPECT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"picked.txt"});
}

TEST_F(TBrowseDialogDragTest, ADroppedFolderBecomesTheTarget) {
    BrowseDialogRun run(tree / "start", kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(DeliverFileDrop(run.dialog->GetWindow(), Point{200, 300},
                              {FileURL(tree / "there" / "inside")}),
              noErr);
    EXPECT_EQ(TargetName(*run.dialog), "inside");
}

TEST_F(TBrowseDialogDragTest, TwoFilesOrOneTheClientRefusesAreNotTaken) {
    WriteFile(tree / "there" / "refused.txt", "r");
    BrowseDialogRun run(tree / "start", kKelModalityModeless, Allowing([](const std::string& path) {
                            return path.find("refused") == std::string::npos;
                        }));
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(DeliverFileDrop(
                  run.dialog->GetWindow(), Point{200, 300},
                  {FileURL(tree / "there" / "picked.txt"), FileURL(tree / "there" / "second.txt")}),
              dragNotAcceptedErr);
    TKelNode refused = NodeOf(tree / "there" / "refused.txt");
    EXPECT_FALSE(run.dialog->CanReceiveDrop(refused));
    EXPECT_EQ(DeliverFileDrop(run.dialog->GetWindow(), Point{200, 300},
                              {FileURL(tree / "there" / "refused.txt")}),
              dragNotAcceptedErr);
    EXPECT_EQ(TargetName(*run.dialog), "start");
}

} // namespace
