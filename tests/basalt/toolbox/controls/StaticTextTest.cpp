// Static text wraps when its box has room for more than one line, as alert messages need.

#include "basalt/graphics/BGCairo.h"
#include "basalt/toolbox/controls/Displays.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace basalt::toolbox;

namespace {

constexpr BGFloat kWidth = 400;
const std::u16string kLongText =
    u"3 Ledger documents have unsaved changes. Review them before quitting?";

BGFloat WrappedHeight(const std::u16string& text, BTThemeFontID font) {
    StringHolder string(MakeBCString(text));
    BTThemeTextInfo info{};
    info.fontID = font;
    BGFloat height = 0;
    BTThemeGetTextDimensions(string.get(), kWidth, &info, nullptr, &height, nullptr);
    return height;
}

// Rows of the surface between first and last (exclusive) that hold any ink.
int InkedRows(cairo_surface_t* surface, int first, int last) {
    cairo_surface_flush(surface);
    const unsigned char* pixels = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    int rows = 0;
    for (int y = first; y < last; ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(pixels + y * stride);
        for (int x = 0; x < cairo_image_surface_get_width(surface); ++x)
            if ((row[x] >> 24) != 0) {
                ++rows;
                break;
            }
    }
    return rows;
}

} // namespace

TEST(StaticText, BoxExactlyTwoWrappedLinesTallShowsBothLines) {
    const BGFloat height = WrappedHeight(kLongText, kBTThemeFontEmphasized);
    ASSERT_GT(height, WrappedHeight(u"x", kBTThemeFontEmphasized)) << "the text must wrap";
    const int pixelHeight = int(std::ceil(height));

    StaticText text;
    text.font = kBTThemeFontEmphasized;
    text.SetText(kLongText);
    text.SetFrame(BGRectMake(0, 0, kWidth, height));
    cairo_surface_t* surface =
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(kWidth), pixelHeight);
    BGContextRef context = basalt::graphics::CreateContextForSurface(surface, pixelHeight, 1);
    text.Draw(context);
    BGContextRelease(context);

    // Truncated to one line, one half of the box would stay empty.
    EXPECT_GT(InkedRows(surface, 0, pixelHeight / 2), 0);
    EXPECT_GT(InkedRows(surface, pixelHeight / 2, pixelHeight), 0);
    cairo_surface_destroy(surface);
}
