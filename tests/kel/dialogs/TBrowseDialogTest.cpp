// A browse dialog from start to end: where it opens, how it is accepted and cancelled, and what
// the client hears on the way, on real temporary folders.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("browse");
        WriteFile(tree / "alpha.txt", "a");
        WriteFile(tree / "beta.txt", "b");
        std::filesystem::create_directory(tree / "gamma");
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

} // namespace
