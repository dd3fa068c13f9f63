// Plotting icons: the theme picture nearest the device size, or the drawn shape, with the
// disabled, selected and label looks.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/IconRefObject.h"
#include "basalt/graphics/ThemePalette.h"
#include "basalt/graphics/UprightBox.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace basalt::graphics;

constexpr double kDisabledAlpha = 0.4;
constexpr double kSelectedShade = 0.35;
constexpr double kLabelTint = 0.4;

// The size of side user units in device pixels, so 2x contexts get sharp pictures.
int PixelSize(cairo_t* cr, double side) {
    double dx = side, dy = 0;
    cairo_user_to_device_distance(cr, &dx, &dy);
    return std::clamp(static_cast<int>(std::ceil(std::hypot(dx, dy))), 1, 512);
}

void PaintPicture(cairo_t* cr, cairo_surface_t* picture, BGRect square) {
    const int width = cairo_image_surface_get_width(picture);
    const int height = cairo_image_surface_get_height(picture);
    // Pictures keep their proportions and are centred in the square.
    const double scale = square.size.width / std::max(width, height);
    cairo_save(cr);
    cairo_translate(cr, square.origin.x + (square.size.width - width * scale) / 2,
                    square.origin.y + (square.size.height - height * scale) / 2);
    cairo_scale(cr, scale, scale);
    cairo_set_source_surface(cr, picture, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_restore(cr);
}

// Colours the icon's own pixels only (the atop operator keeps its outline).
void Tint(cairo_t* cr, double red, double green, double blue, double amount) {
    cairo_set_operator(cr, CAIRO_OPERATOR_ATOP);
    cairo_set_source_rgba(cr, red, green, blue, amount);
    cairo_paint(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
}

} // namespace

extern "C" StatusCode PlotIconRefInContext(BGContextRef context, const BGRect* rect,
                                           BTIconAlignment align, BTIconTransform transform,
                                           const BTRGBColor* labelColor, BTPlotIconFlags flags,
                                           IconRef icon) {
    (void)align;
    (void)flags;
    if (context == nullptr || !context->Valid() || rect == nullptr || icon == nullptr ||
        BGRectIsNull(*rect))
        return paramErr;
    const BGRect box = BGRectStandardize(*rect);
    const double side = std::min(box.size.width, box.size.height);
    if (side <= 0)
        return noErr;
    const BGRect square = BGRectMake(box.origin.x + (box.size.width - side) / 2,
                                     box.origin.y + (box.size.height - side) / 2, side, side);
    cairo_t* cr = context->cr;
    cairo_surface_t* picture = icon->PictureFor(PixelSize(cr, side));
    cairo_save(cr);
    MakeUpright(cr, square);
    // Clipped first, so the group the looks are composed in is only as big as the icon.
    cairo_rectangle(cr, square.origin.x, square.origin.y, side, side);
    cairo_clip(cr);
    cairo_push_group(cr);
    if (picture != nullptr)
        PaintPicture(cr, picture, square);
    else
        DrawIconShape(cr, icon->fallback, square);
    if (labelColor != nullptr)
        Tint(cr, labelColor->red / 65535.0, labelColor->green / 65535.0, labelColor->blue / 65535.0,
             kLabelTint);
    if (transform & kBTIconTransformSelected)
        Tint(cr, 0, 0, 0, kSelectedShade);
    cairo_pop_group_to_source(cr);
    const bool disabled = (transform & 0xFF) == kBTIconTransformDisabled;
    cairo_paint_with_alpha(cr, context->state.alpha * (disabled ? kDisabledAlpha : 1));
    cairo_restore(cr);
    return noErr;
}
