// The save dialog's name on real temporary folders: what the field shows, how the extension is
// hidden and shown, the limits, and what the reply names.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class KelSaveDocumentDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("save");
        WriteFile(tree / "notes.txt", "old notes");
        fs::create_directory(tree / "Archive");
        RememberSaveForm(true, true);
    }

    fs::path tree;
};

TEST_F(KelSaveDocumentDialogTest, SmokeAcceptsATypedName) {
    SaveRun run(tree, {"Report.txt"});
    std::string shown;
    const uint32_t action = run.RunModal([&] {
        shown = run.FieldText();
        HeadlessDriver::TypeText("Plan");
        ClickItem(run.Save(), kBrowseDefaultButton);
    });
    EXPECT_EQ(shown, "Report");
    EXPECT_EQ(action, uint32_t(kKelUserActionSaveAs));
    const SaveReply reply = ReplyOf(run);
    EXPECT_EQ(reply.status, noErr);
    EXPECT_EQ(reply.folder, tree.string());
    EXPECT_EQ(reply.name, "Plan.txt");
}

} // namespace
