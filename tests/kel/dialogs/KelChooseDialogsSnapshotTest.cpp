// Pictures for people to look at, at 1x and 2x, written next to the test program: a choose
// folder dialog with a folder selected, and the window that asks a new folder's name.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr WindowRegionCode kStructure = 32;

// Width and height of a PNG file, in pixels.
std::pair<int, int> PictureSize(const fs::path& png) {
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    const std::pair<int, int> size{cairo_image_surface_get_width(image),
                                   cairo_image_surface_get_height(image)};
    cairo_surface_destroy(image);
    return size;
}

class KelChooseDialogsSnapshotTest : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("Projects");
        for (const char* name : {"Invoices", "Photos 2026", "Recipes", "Travel"}) {
            fs::create_directory(tree / name);
        }
        for (const char* name : {"budget.ods", "letter to the council.txt", "notes.md"}) {
            WriteFile(tree / name, "contents");
        }
        UseListView(true);
        HeadlessDriver::SetScale(GetParam());
    }
    void TearDown() override { HeadlessDriver::SetScale(1); }

    fs::path Png(const std::string& name) const {
        return fs::path(KEL_TEST_BINARY_DIR) / (name + "-" + std::to_string(GetParam()) + "x.png");
    }

    // Writes the window and checks that the picture covers it at the scale.
    void Snapshot(WindowRef window, const std::string& name) {
        ASSERT_EQ(HeadlessDriver::WritePNG(window, Png(name)), noErr);
        Rect bounds{};
        GetWindowBounds(window, kStructure, &bounds);
        EXPECT_EQ(PictureSize(Png(name)),
                  std::make_pair((bounds.right - bounds.left) * GetParam(),
                                 (bounds.bottom - bounds.top) * GetParam()));
    }

    fs::path tree;
};

TEST_P(KelChooseDialogsSnapshotTest, AChooseFolderDialogWithAFolderSelected) {
    PublicDialog run;
    KelDialogCreationOptions options = Options();
    options.message = BCSTR("Choose the folder to keep the project's backups in.");
    ASSERT_EQ(KelCreateChooseFolderDialog(&options, EventRecorder::Record, nullptr, &run.recorder,
                                          &run.dialog),
              noErr);
    run.StartIn(tree);
    run.RunModal([&] {
        ClickListRow(run.Dialog(), 1);
        Snapshot(run.Dialog().GetWindow(), "choose-folder");
        ClickItem(run.Dialog(), kBrowseCancelButton);
    });
}

TEST_P(KelChooseDialogsSnapshotTest, TheNewFolderNameWindow) {
    PublicDialog run;
    const KelDialogCreationOptions options = Options();
    ASSERT_EQ(KelCreateNewFolderDialog(&options, EventRecorder::Record, &run.recorder, &run.dialog),
              noErr);
    run.StartIn(tree);
    run.RunModal([&] {
        WindowRef window = run.Dialog().GetWindow();
        WhenInFront(window, [&, window](WindowRef names) {
            HeadlessDriver::RunUntilIdle();
            Snapshot(names, "new-folder");
            HeadlessDriver::Click(names, "kels", 1);
            When([window] { return FrontWindow() == window; },
                 [&] { ClickItem(run.Dialog(), kBrowseCancelButton); });
        });
        ClickItem(run.Dialog(), kBrowseDefaultButton);
    });
}

INSTANTIATE_TEST_SUITE_P(Scales, KelChooseDialogsSnapshotTest, ::testing::Values(1, 2),
                         [](const auto& info) { return std::to_string(info.param) + "x"; });

} // namespace
