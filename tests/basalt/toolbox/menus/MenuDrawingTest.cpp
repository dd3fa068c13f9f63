// How an open menu looks: highlighted, disabled, checked and separator rows, and the arrow
// bands of a long menu, read back from the pixels.

#include "basalt/toolbox/menus/MenuDrawing.h"

#include "ImageMenuWindow.h"
#include "MenuFixture.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace basalt::toolbox::menus;
using namespace menutest;

namespace {

constexpr uint32_t kAccent = 0x3A6EA5;
constexpr uint32_t kWhite = 0xFFFFFF;

struct Drawn {
    MenuLayout layout;
    std::unique_ptr<ImageMenuWindow> window;
    BGFloat width() const { return layout.Width(); }
};

Drawn Draw(TestMenu& menu, MenuItemIndex highlighted, BGFloat height = 0, BGFloat scroll = 0,
           double scale = 1) {
    Drawn drawn{MenuLayout::Measure(menu.get()), nullptr};
    MenuAppearance appearance;
    appearance.frame = {drawn.layout.Width(), height > 0 ? height : drawn.layout.Height()};
    appearance.scroll = scroll;
    appearance.maxScroll = drawn.layout.Height() - appearance.frame.height;
    appearance.highlighted = highlighted;
    drawn.window = std::make_unique<ImageMenuWindow>(
        Rect{0, 0, int16_t(appearance.frame.height), int16_t(appearance.frame.width)}, scale);
    BGContextRef context = CreateFlippedContext(*drawn.window, appearance.frame.height);
    DrawMenu(context, menu.get(), drawn.layout, appearance);
    BGContextRelease(context);
    return drawn;
}

// The darkest pixel of the band of a row between two x positions.
int DarkestIn(Drawn& drawn, MenuItemIndex item, BGFloat fromX, BGFloat toX) {
    BGRect row = drawn.layout.Row(item);
    int darkest = 0;
    for (BGFloat y = row.origin.y + 1; y < BGRectGetMaxY(row) - 1; ++y)
        for (BGFloat x = fromX; x < toX; ++x)
            darkest = std::max(darkest, Darkness(drawn.window->Pixel(x, y)));
    return darkest;
}

TEST(MenuDrawing, TheHighlightedRowTakesTheAccentAndTheOthersStayPlain) {
    TestMenu menu;
    Drawn drawn = Draw(menu, 2);
    BGFloat right = drawn.width() - 4;
    EXPECT_EQ(drawn.window->Pixel(right, BGRectGetMidY(drawn.layout.Row(2))), kAccent);
    EXPECT_EQ(drawn.window->Pixel(right, BGRectGetMidY(drawn.layout.Row(1))), kWhite);
    EXPECT_GT(DarkestIn(drawn, 4, 10, drawn.width() - 10), 0); // the separator's line
}

TEST(MenuDrawing, DisabledTextIsDimmedAndOnlyCheckedRowsHaveAMark) {
    TestMenu menu;
    Drawn drawn = Draw(menu, 0);
    BGFloat text = MenuMetrics::kMarkColumn, end = drawn.width() - MenuMetrics::kTrailing;
    EXPECT_LT(DarkestIn(drawn, 3, text, end) + 100, DarkestIn(drawn, 2, text, end));
    EXPECT_GT(DarkestIn(drawn, 5, 2, MenuMetrics::kMarkColumn), 300);
    EXPECT_EQ(DarkestIn(drawn, 6, 2, MenuMetrics::kMarkColumn), 0);
}

TEST(MenuDrawing, ALongMenuCoversCutRowsWithArrowBandsAtTheEndsThatHaveMore) {
    TestMenu menu(54);
    MenuLayout layout = MenuLayout::Measure(menu.get());
    // Scrolled so that item 10's row lies half under the upper band.
    BGFloat scroll = layout.Row(10).origin.y - MenuMetrics::kArrowBand / 2;
    Drawn middle = Draw(menu, 10, 400, scroll);
    BGFloat right = middle.width() - 4;
    EXPECT_EQ(middle.window->Pixel(right, 2), kWhite);
    EXPECT_EQ(middle.window->Pixel(right, MenuMetrics::kArrowBand + 2), kAccent);
    EXPECT_GT(Darkness(middle.window->Pixel(middle.width() / 2, MenuMetrics::kArrowBand / 2)), 300);
    EXPECT_GT(Darkness(middle.window->Pixel(middle.width() / 2, 400 - MenuMetrics::kArrowBand / 2)),
              300);
    // At the top there is no upper band: the highlighted first row shows to the edge.
    Drawn top = Draw(menu, 1, 400, 0);
    EXPECT_EQ(top.window->Pixel(right, MenuMetrics::kPadding + 2), kAccent);
}

TEST(MenuDrawing, AtTwiceTheScaleTheMenuIsDrawnTwiceAsLarge) {
    TestMenu menu;
    SetItemCmd(menu.ref(), 1, 'K');
    Drawn twice = Draw(menu, 5, 0, 0, 2);
    EXPECT_EQ(cairo_image_surface_get_width(twice.window->Surface()),
              int(std::lround(twice.width() * 2)));
    EXPECT_EQ(twice.window->Pixel(twice.width() - 4, BGRectGetMidY(twice.layout.Row(5))), kAccent);
    const auto kept = std::filesystem::path(KEL_TEST_BINARY_DIR) / "artifacts";
    std::filesystem::create_directories(kept);
    cairo_surface_write_to_png(twice.window->Surface(), (kept / "popup-menu@2x.png").c_str());
}

} // namespace
