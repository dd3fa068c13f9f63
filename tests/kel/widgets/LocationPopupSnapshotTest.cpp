// Pictures of both popups open over an open dialog, at 1x and 2x, written next to the test
// program for people to look at. Each must show its menu: the picture differs from the one
// taken once the menu has closed over a good part of the menu's rows.

#include "tests/kel/widgets/LocationPopupTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class LocationPopupSnapshotTest : public LocationPopupTest,
                                  public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        LocationPopupTest::SetUp();
        HeadlessDriver::SetScale(GetParam());
    }
    void TearDown() override {
        LocationPopupTest::TearDown();
        HeadlessDriver::SetScale(1);
    }

    fs::path Png(const std::string& name) const {
        return fs::path(KEL_TEST_BINARY_DIR) / (name + "-" + std::to_string(GetParam()) + "x.png");
    }

    // Pictures the dialog with the popup open and again once it has closed; the number of
    // pixels that differ, in points.
    double Snapshot(int16_t control, const std::string& name) {
        const fs::path open = Png(name);
        const fs::path closed = Png(name + "-closed");
        Pick(control, 0,
             [&] { EXPECT_EQ(HeadlessDriver::WritePNG(run->dialog->GetWindow(), open), noErr); });
        EXPECT_EQ(HeadlessDriver::WritePNG(run->dialog->GetWindow(), closed), noErr);
        return ChangedArea(open, closed);
    }

    double ChangedArea(const fs::path& a, const fs::path& b) const {
        cairo_surface_t* first = cairo_image_surface_create_from_png(a.c_str());
        cairo_surface_t* second = cairo_image_surface_create_from_png(b.c_str());
        const int width =
            std::min(cairo_image_surface_get_width(first), cairo_image_surface_get_width(second));
        const int height =
            std::min(cairo_image_surface_get_height(first), cairo_image_surface_get_height(second));
        const auto* one = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(first));
        const auto* two = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(second));
        const int strideOne = cairo_image_surface_get_stride(first) / 4;
        const int strideTwo = cairo_image_surface_get_stride(second) / 4;
        long changed = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                changed += one[y * strideOne + x] != two[y * strideTwo + x];
            }
        }
        cairo_surface_destroy(first);
        cairo_surface_destroy(second);
        const int scale = GetParam();
        return double(changed) / (scale * scale);
    }
};

TEST_P(LocationPopupSnapshotTest, BothPopupsShowTheirMenusOverTheDialog) {
    AddBookmark(MakeScratchFolder("projects"), "Projects");
    fs::create_directories(tree / "Reports 2026");
    SetRecents({tree / "Reports 2026", home / "Documents"});
    Open(tree / "Outer" / "Inner");
    // A menu of some ten rows of 22 points and 150 wide at the least changes far more than
    // the popup button it opens from.
    EXPECT_GT(Snapshot(kBrowsePathPopup, "path-popup"), 10 * 22 * 100);
    ShowWherePopup();
    EXPECT_GT(Snapshot(kBrowseWherePopup, "where-popup"), 10 * 22 * 100);
}

INSTANTIATE_TEST_SUITE_P(Scales, LocationPopupSnapshotTest, ::testing::Values(1, 2));

} // namespace
