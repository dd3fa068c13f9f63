#include "basalt/graphics/ThemeCanvas.h"

#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/UprightBox.h"

#include <algorithm>
#include <cmath>

namespace basalt::graphics {

bool IsUnavailable(BTThemeDrawState state) {
    return state == kBTThemeStateUnavailable || state == kBTThemeStateUnavailableInactive;
}

bool IsInactive(BTThemeDrawState state) {
    return state == kBTThemeStateInactive || state == kBTThemeStateUnavailableInactive;
}

ThemeCanvas::ThemeCanvas(BGContextRef context, BGRect bounds, BTThemeDrawState state)
    : cr_(context->cr), bounds_(BGRectStandardize(bounds)),
      alpha_(context->state.alpha * (IsUnavailable(state) ? kUnavailableAlpha : 1)) {
    cairo_save(cr_);
    MakeUpright(cr_, bounds_);
    cairo_new_path(cr_);
    cairo_set_line_join(cr_, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cr_, CAIRO_LINE_CAP_ROUND);
}

ThemeCanvas::~ThemeCanvas() {
    cairo_restore(cr_);
}

void ThemeCanvas::RoundedRect(BGRect rect, double radius) const {
    const double r =
        std::max(0.0, std::min(radius, std::min(rect.size.width, rect.size.height) / 2));
    const double x0 = rect.origin.x, y0 = rect.origin.y;
    const double x1 = x0 + rect.size.width, y1 = y0 + rect.size.height;
    cairo_new_sub_path(cr_);
    cairo_arc(cr_, x1 - r, y0 + r, r, -M_PI / 2, 0);
    cairo_arc(cr_, x1 - r, y1 - r, r, 0, M_PI / 2);
    cairo_arc(cr_, x0 + r, y1 - r, r, M_PI / 2, M_PI);
    cairo_arc(cr_, x0 + r, y0 + r, r, M_PI, 3 * M_PI / 2);
    cairo_close_path(cr_);
}

void ThemeCanvas::Fill(BGRect rect, double radius, const ThemeColor& color) const {
    if (BGRectIsEmpty(rect))
        return;
    RoundedRect(rect, radius);
    SetSource(cr_, color, alpha_);
    cairo_fill(cr_);
}

void ThemeCanvas::Outline(BGRect rect, double radius, const ThemeColor& color) const {
    const BGRect inner = BGRectInset(rect, 0.5, 0.5);
    if (BGRectIsNull(inner))
        return;
    RoundedRect(inner, std::max(0.0, radius - 0.5));
    SetSource(cr_, color, alpha_);
    cairo_set_line_width(cr_, 1);
    cairo_stroke(cr_);
}

void ThemeCanvas::FocusRing(BGRect rect, double radius) const {
    const BGRect ring = BGRectInset(rect, -1.5, -1.5);
    RoundedRect(ring, radius + 1.5);
    SetSource(cr_, kPalette.focusRing, alpha_);
    cairo_set_line_width(cr_, 3);
    cairo_stroke(cr_);
}

void ThemeCanvas::InnerFocusRing(BGRect rect, double radius) const {
    constexpr double kWidth = 3;
    const BGRect ring = BGRectInset(rect, kWidth / 2, kWidth / 2);
    if (BGRectIsNull(ring))
        return;
    RoundedRect(ring, std::max(0.0, radius - kWidth / 2));
    SetSource(cr_, kPalette.focusRing, alpha_);
    cairo_set_line_width(cr_, kWidth);
    cairo_stroke(cr_);
}

void ThemeCanvas::Line(BGPoint from, BGPoint to, const ThemeColor& color, double width) const {
    cairo_move_to(cr_, from.x, from.y);
    cairo_line_to(cr_, to.x, to.y);
    SetSource(cr_, color, alpha_);
    cairo_set_line_width(cr_, width);
    cairo_set_line_cap(cr_, CAIRO_LINE_CAP_BUTT);
    cairo_stroke(cr_);
    cairo_set_line_cap(cr_, CAIRO_LINE_CAP_ROUND);
}

void ThemeCanvas::FillPath(const ThemeColor& color) const {
    SetSource(cr_, color, alpha_);
    cairo_fill(cr_);
}

void ThemeCanvas::StrokePath(const ThemeColor& color, double width) const {
    SetSource(cr_, color, alpha_);
    cairo_set_line_width(cr_, width);
    cairo_stroke(cr_);
}

void ThemeCanvas::Chevron(double x, double y, double size, int pointing,
                          const ThemeColor& color) const {
    const double h = size / 2, q = size / 4;
    if (pointing == 2) {
        cairo_move_to(cr_, x - q, y - h);
        cairo_line_to(cr_, x + q, y);
        cairo_line_to(cr_, x - q, y + h);
    } else {
        cairo_move_to(cr_, x - h, y - q * pointing);
        cairo_line_to(cr_, x, y + q * pointing);
        cairo_line_to(cr_, x + h, y - q * pointing);
    }
    StrokePath(color, 1.5);
}

} // namespace basalt::graphics
