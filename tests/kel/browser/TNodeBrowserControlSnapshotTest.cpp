// Pictures of the browser for people to look at, at 1x and 2x, written next to the test
// program: list view with an opened disclosure and a selection, column view three levels deep.

#include "BrowserWindow.h"

#include <cairo.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;

namespace keltest {
namespace {

struct Picture {
    explicit Picture(const fs::path& png)
        : image(cairo_image_surface_create_from_png(png.c_str())) {
        cairo_surface_flush(image);
    }
    ~Picture() { cairo_surface_destroy(image); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    int Width() const { return cairo_image_surface_get_width(image); }
    int Height() const { return cairo_image_surface_get_height(image); }
    uint32_t At(int x, int y) const {
        const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image));
        return pixels[y * (cairo_image_surface_get_stride(image) / 4) + x];
    }
    // The lines (y) in which the two pictures differ within columns [left, right).
    std::vector<int> LinesDifferingFrom(const Picture& other, int left, int right) const {
        std::vector<int> lines;
        for (int y = 0; y < Height(); ++y) {
            for (int x = left; x < right; ++x) {
                if (At(x, y) != other.At(x, y)) {
                    lines.push_back(y);
                    break;
                }
            }
        }
        return lines;
    }

    cairo_surface_t* image;
};

class TNodeBrowserControlSnapshotTest : public BrowserWindow,
                                        public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        HeadlessDriver::SetScale(GetParam());
        BrowserWindow::SetUp();
        HeadlessDriver::SetScale(1);
        for (const char* name : {"Applications", "Music", "Pictures", "Projects"}) {
            fs::create_directory(tree / name);
        }
        for (const char* name : {"Budget 2026.ods", "Holiday plan.txt", "Notes.md", "photo.png",
                                 "Report final final.pdf", "song.mp3"}) {
            WriteFile(tree / name, "contents");
        }
        fs::create_directories(tree / "Projects" / "kelpick" / "src");
        for (const char* name : {"README.md", "CMakeLists.txt", "main.cpp", "picker.cpp"}) {
            WriteFile(tree / "Projects" / "kelpick" / "src" / name, "code");
        }
        WriteFile(tree / "Projects" / "kelpick" / "LICENSE", "text");
        WriteFile(tree / "Projects" / "plan.txt", "text");
    }

    fs::path Png(const std::string& name) const {
        return fs::path(KEL_TEST_BINARY_DIR) / (name + "-" + std::to_string(GetParam()) + "x.png");
    }
    void Select(const fs::path& path) {
        TKelNodeArray one;
        one.push_back(At(path));
        ASSERT_EQ(browser->SetSelection(one, kGridBrowserItemsAssign), noErr);
        HeadlessDriver::RunUntilIdle();
    }
};

TEST_P(TNodeBrowserControlSnapshotTest, ListViewWithAnOpenedFolderAndASelection) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    ASSERT_EQ(OpenGridBrowserContainer(control, At(tree / "Projects").AsItemID()), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(Rows(tree, true).size(), 12u);
    ASSERT_EQ(HeadlessDriver::WritePNG(window, Png("browser-list-unselected")), noErr);
    Select(tree / "Projects" / "plan.txt");
    ASSERT_EQ(HeadlessDriver::WritePNG(window, Png("browser-list")), noErr);

    Picture before(Png("browser-list-unselected"));
    Picture after(Png("browser-list"));
    ASSERT_EQ(after.Width(), bounds.right * GetParam());
    uint16_t rowHeight = 0;
    GetGridBrowserTableViewRowHeight(control, &rowHeight);
    // The selection highlights one row across the window, and nothing else changes.
    const std::vector<int> changed = before.LinesDifferingFrom(after, 0, after.Width());
    ASSERT_FALSE(changed.empty());
    const int span = changed.back() - changed.front() + 1;
    EXPECT_GE(span, rowHeight * GetParam() / 2);
    EXPECT_LE(span, rowHeight * GetParam() * 2);
    fs::remove(Png("browser-list-unselected"));
}

TEST_P(TNodeBrowserControlSnapshotTest, ColumnViewThreeLevelsDeep) {
    MakeBrowser(kColumnViewStyle);
    ASSERT_EQ(browser->SetTarget(At(tree / "Projects"), At(tree), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(HeadlessDriver::WritePNG(window, Png("browser-column-two")), noErr);
    ASSERT_EQ(browser->SetTarget(At(tree / "Projects" / "kelpick"), TKelNode(), TKelNode()), noErr);
    Select(tree / "Projects" / "kelpick" / "src");
    ASSERT_EQ(HeadlessDriver::WritePNG(window, Png("browser-column")), noErr);

    uint16_t width = 0;
    GetGridBrowserTableViewColumnWidth(control, &width);
    Picture two(Png("browser-column-two"));
    Picture three(Png("browser-column"));
    // The third column shows what the second level holds.
    const int left = (bounds.left + 2 * width + 10) * GetParam();
    const int right = (bounds.left + 3 * width - 10) * GetParam();
    ASSERT_LT(right, three.Width());
    EXPECT_FALSE(two.LinesDifferingFrom(three, left, right).empty());
    fs::remove(Png("browser-column-two"));
}

INSTANTIATE_TEST_SUITE_P(Scales, TNodeBrowserControlSnapshotTest, ::testing::Values(1, 2),
                         [](const auto& info) { return std::to_string(info.param) + "x"; });

} // namespace
} // namespace keltest
