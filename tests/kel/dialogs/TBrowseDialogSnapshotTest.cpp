// Pictures of a whole open dialog for people to look at, at 1x and 2x, written next to the test
// program: list view with a selection and a message, and column view two levels deep.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class TBrowseDialogSnapshotTest : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("Samples");
        for (const char* name : {"Drafts", "Photos", "Projects"}) {
            fs::create_directory(tree / name);
        }
        for (const char* name : {"Budget 2026.ods", "Holiday plan.txt", "Notes.md", "photo.png",
                                 "Report final final.pdf"}) {
            WriteFile(tree / name, "contents");
        }
        WriteFile(tree / "Projects" / "plan.txt", "text");
        HeadlessDriver::SetScale(GetParam());
    }
    void TearDown() override { HeadlessDriver::SetScale(1); }

    fs::path Png(const std::string& name) const {
        return fs::path(KEL_TEST_BINARY_DIR) / (name + "-" + std::to_string(GetParam()) + "x.png");
    }

    // The share of dark pixels in a control's middle, as the picture shows it.
    double InkIn(const fs::path& png, TBrowseDialog& dialog, int16_t item) const {
        cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
        ControlRef control = ControlOf(dialog, item);
        BGRect frame = BGRectZero;
        BTViewGetBounds(control, &frame);
        BTViewConvertRect(&frame, control, nullptr);
        const int scale = GetParam();
        const int stride = cairo_image_surface_get_stride(image) / 4;
        const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image));
        // The picture includes the title bar above the content.
        const int top = (int(frame.origin.y) + kBTWindowTitleBarHeight) * scale;
        int dark = 0, all = 0;
        for (int y = top + 6 * scale; y < top + int(frame.size.height - 6) * scale; ++y) {
            for (int x = int(frame.origin.x) * scale; x < int(BGRectGetMaxX(frame)) * scale; ++x) {
                const uint32_t pixel = pixels[y * stride + x];
                dark += ((pixel >> 8) & 0xFF) < 0x80;
                ++all;
            }
        }
        cairo_surface_destroy(image);
        return all == 0 ? 0 : double(dark) / all;
    }

    fs::path tree;
};

TEST_P(TBrowseDialogSnapshotTest, ListViewWithAMessageAndASelection) {
    UseListView(true);
    BrowseDialogRun run(tree, kKelModalityModeless,
                        Adjusting([](KelDialogCreationOptions& options) {
                            options.message = BCSTR("Choose the documents to open.");
                        }));
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    ClickListRow(*run.dialog, 2);
    ASSERT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"Holiday plan.txt"});
    const fs::path png = Png("open-dialog-list");
    ASSERT_EQ(HeadlessDriver::WritePNG(run.dialog->GetWindow(), png), noErr);
    // The view buttons' glyphs are drawn, not left blank (back and forward are dimmed here).
    EXPECT_GT(InkIn(png, *run.dialog, kBrowseViewStyle), 0.01);
}

TEST_P(TBrowseDialogSnapshotTest, ColumnViewTwoLevelsDeep) {
    UseListView(false);
    BrowseDialogRun run(tree / "Projects" / "plan.txt", kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(SelectedNames(*run.dialog), std::vector<std::string>{"plan.txt"});
    ASSERT_EQ(HeadlessDriver::WritePNG(run.dialog->GetWindow(), Png("open-dialog-columns")), noErr);
}

// The Go To window opened over the dialog with command-shift-G, a completion offered after a
// pause and standing selected; then the message for a path that leads nowhere.
TEST_P(TBrowseDialogSnapshotTest, GoToWindowWithACompletion) {
    UseListView(true);
    BrowseDialogRun run(tree, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(HeadlessDriver::WritePNG(run.dialog->GetWindow(), Png("goto-under")), noErr);
    bool offered = false;
    StatusCode written = -1;
    WhenWindowShowsOver(run.dialog->GetWindow(), [&](WindowRef goTo) {
        HeadlessDriver::TypeText((tree / "Pro").string());
        offered = RunUntil([&] {
            BGRect box = BGRectZero;
            return HeadlessDriver::FindShownText(goTo, (tree / "Projects/").string(),
                                                 BGRectMake(0, 0, 1000, 1000), &box);
        });
        written = HeadlessDriver::WritePNG(goTo, Png("goto-completion"));
        HeadlessDriver::TypeText("nowhere");
        HeadlessDriver::PressKey(kVK_Return);
        HeadlessDriver::RunUntilIdle();
        HeadlessDriver::WritePNG(goTo, Png("goto-unknown"));
        HeadlessDriver::PressKey(kVK_Escape);
        HeadlessDriver::RunUntilIdle();
        QuitAppModalLoopForWindow(goTo);
    });
    HeadlessDriver::PressKey(0x05 /* G */, cmdKey | shiftKey, u'G');
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(offered);
    EXPECT_EQ(written, noErr);
}

INSTANTIATE_TEST_SUITE_P(Scales, TBrowseDialogSnapshotTest, ::testing::Values(1, 2));

} // namespace
