// Pictures for people to look at, at 1x and 2x, written next to the test program: the save
// dialog collapsed and disclosed, and the alert that asks before a file is replaced.

#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr WindowRegionCode kStructure = 32;

class KelSaveDocumentDialogSnapshotTest : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("Letters");
        fs::create_directory(tree / "Drafts");
        for (const char* name : {"council.txt", "landlord.txt", "thank you.txt"}) {
            WriteFile(tree / name, "contents");
        }
        // The save dialog keeps its own view: the pictures show the list whatever ran before.
        TKelPrefs prefs;
        prefs.SetView(TKelPrefs::kListView, BCSTR("KelPanelFileListModeForSaveMode"));
        HeadlessDriver::SetScale(GetParam());
    }
    void TearDown() override { HeadlessDriver::SetScale(1); }

    // Writes the window and checks that the picture covers it at the scale.
    void Snapshot(WindowRef window, const std::string& name) {
        const fs::path png =
            fs::path(KEL_TEST_BINARY_DIR) / (name + "-" + std::to_string(GetParam()) + "x.png");
        ASSERT_EQ(HeadlessDriver::WritePNG(window, png), noErr);
        Rect bounds{};
        GetWindowBounds(window, kStructure, &bounds);
        cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
        EXPECT_EQ(cairo_image_surface_get_width(image), (bounds.right - bounds.left) * GetParam());
        EXPECT_EQ(cairo_image_surface_get_height(image), (bounds.bottom - bounds.top) * GetParam());
        cairo_surface_destroy(image);
    }

    fs::path tree;
};

TEST_P(KelSaveDocumentDialogSnapshotTest, CollapsedThenDisclosed) {
    RememberSaveForm(true, false);
    SaveRun run(tree, {"letter to the bank.txt"});
    run.RunModal([&] {
        Snapshot(run.Save().GetWindow(), "save-collapsed");
        ClickItem(run.Save(), kBrowseDisclosure);
        HeadlessDriver::RunUntilIdle();
        Snapshot(run.Save().GetWindow(), "save-disclosed");
        ClickItem(run.Save(), kBrowseCancelButton);
    });
}

TEST_P(KelSaveDocumentDialogSnapshotTest, TheReplaceAlert) {
    RememberSaveForm(true, true);
    SaveRun run(tree, {"landlord.txt"});
    run.RunModal([&] {
        WhenAlertShows(run, [&](WindowRef alert) {
            HeadlessDriver::RunUntilIdle();
            Snapshot(alert, "save-replace-alert");
            HeadlessDriver::PressKey(kVK_Return);
        });
        ClickItem(run.Save(), kBrowseDefaultButton);
        ClickItem(run.Save(), kBrowseCancelButton);
    });
}

INSTANTIATE_TEST_SUITE_P(Scales, KelSaveDocumentDialogSnapshotTest, ::testing::Values(1, 2),
                         [](const auto& info) { return std::to_string(info.param) + "x"; });

} // namespace
