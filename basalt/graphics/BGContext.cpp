// Drawing contexts over Cairo: state, matrix, clipping, colours, paths and fills.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGContextObject.h"

#include <cmath>

using basalt::graphics::ReleaseObject;
using basalt::graphics::RetainObject;

OpaqueBGContext::OpaqueBGContext(cairo_surface_t* target, const cairo_matrix_t& base)
    : cr(cairo_create(target)), baseMatrix(base) {
    cairo_set_matrix(cr, &baseMatrix);
    deviceScale = std::sqrt(std::fabs(base.xx * base.yy - base.xy * base.yx));
}

OpaqueBGContext::~OpaqueBGContext() {
    cairo_destroy(cr);
}

namespace {

void UseColor(cairo_t* cr, const BGColor& color, double alpha) {
    cairo_set_source_rgba(cr, color.red, color.green, color.blue, color.alpha * alpha);
}

bool Usable(BGContextRef context) {
    return context != nullptr && context->Valid();
}

cairo_matrix_t ToCairo(const BGAffineTransform& t) {
    return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

void AddRectPath(cairo_t* cr, BGRect rect) {
    rect = BGRectStandardize(rect);
    cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

void AddEllipsePath(cairo_t* cr, BGRect rect) {
    rect = BGRectStandardize(rect);
    if (rect.size.width <= 0 || rect.size.height <= 0)
        return;
    cairo_save(cr);
    cairo_translate(cr, BGRectGetMidX(rect), BGRectGetMidY(rect));
    cairo_scale(cr, rect.size.width / 2, rect.size.height / 2);
    cairo_new_sub_path(cr);
    cairo_arc(cr, 0, 0, 1, 0, 2 * M_PI);
    cairo_close_path(cr);
    cairo_restore(cr);
}

} // namespace

void OpaqueBGContext::UseFill() {
    UseColor(cr, state.fill, state.alpha);
}
void OpaqueBGContext::UseStroke() {
    UseColor(cr, state.stroke, state.alpha);
}

namespace basalt::graphics {

BGContextRef CreateContextForSurface(cairo_surface_t* surface, BGFloat heightInPoints,
                                     BGFloat scale) {
    if (surface == nullptr || cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS || scale <= 0)
        return nullptr;
    const cairo_matrix_t base = {scale, 0, 0, -scale, 0, heightInPoints * scale};
    auto* context = new OpaqueBGContext(surface, base);
    if (!context->Valid()) {
        ReleaseObject(context);
        return nullptr;
    }
    return context;
}

cairo_t* CairoOf(BGContextRef context) {
    return context != nullptr ? context->cr : nullptr;
}

BGFloat DeviceScaleOf(BGContextRef context) {
    return context != nullptr ? context->deviceScale : 1;
}

} // namespace basalt::graphics

extern "C" {

BGContextRef BGContextRetain(BGContextRef context) {
    return RetainObject(context);
}
void BGContextRelease(BGContextRef context) {
    ReleaseObject(context);
}

void BGContextSaveGState(BGContextRef context) {
    if (!Usable(context))
        return;
    cairo_save(context->cr);
    context->saved.push_back(context->state);
}

void BGContextRestoreGState(BGContextRef context) {
    // An unbalanced restore is ignored rather than unwinding past the base state.
    if (!Usable(context) || context->saved.empty())
        return;
    cairo_restore(context->cr);
    context->state = context->saved.back();
    context->saved.pop_back();
}

void BGContextTranslateCTM(BGContextRef context, BGFloat tx, BGFloat ty) {
    if (Usable(context))
        cairo_translate(context->cr, tx, ty);
}

void BGContextScaleCTM(BGContextRef context, BGFloat sx, BGFloat sy) {
    // A zero scale would make Cairo's matrix singular and the context dead for good.
    if (Usable(context) && sx != 0 && sy != 0)
        cairo_scale(context->cr, sx, sy);
}

void BGContextRotateCTM(BGContextRef context, BGFloat angle) {
    if (Usable(context))
        cairo_rotate(context->cr, angle);
}

void BGContextConcatCTM(BGContextRef context, BGAffineTransform transform) {
    if (!Usable(context) || transform.a * transform.d - transform.b * transform.c == 0)
        return;
    const cairo_matrix_t matrix = ToCairo(transform);
    cairo_transform(context->cr, &matrix);
}

BGAffineTransform BGContextGetCTM(BGContextRef context) {
    if (!Usable(context))
        return BGAffineTransformIdentity;
    cairo_matrix_t user;
    cairo_get_matrix(context->cr, &user);
    cairo_matrix_t toBase = context->baseMatrix;
    cairo_matrix_invert(&toBase);
    cairo_matrix_t result;
    cairo_matrix_multiply(&result, &user, &toBase);
    return {result.xx, result.yx, result.xy, result.yy, result.x0, result.y0};
}

void BGContextClipToRect(BGContextRef context, BGRect rect) {
    if (!Usable(context))
        return;
    cairo_new_path(context->cr);
    if (!BGRectIsNull(rect))
        AddRectPath(context->cr, rect);
    cairo_clip(context->cr);
}

void BGContextClip(BGContextRef context) {
    if (!Usable(context))
        return;
    cairo_set_fill_rule(context->cr, CAIRO_FILL_RULE_WINDING);
    cairo_clip(context->cr);
}

BGRect BGContextGetClipBoundingBox(BGContextRef context) {
    if (!Usable(context))
        return BGRectNull;
    double x1, y1, x2, y2;
    cairo_clip_extents(context->cr, &x1, &y1, &x2, &y2);
    return BGRectMake(x1, y1, x2 - x1, y2 - y1);
}

void BGContextSetRGBFillColor(BGContextRef context, BGFloat red, BGFloat green, BGFloat blue,
                              BGFloat alpha) {
    if (context != nullptr)
        context->state.fill = {red, green, blue, alpha};
}

void BGContextSetRGBStrokeColor(BGContextRef context, BGFloat red, BGFloat green, BGFloat blue,
                                BGFloat alpha) {
    if (context != nullptr)
        context->state.stroke = {red, green, blue, alpha};
}

void BGContextSetGrayFillColor(BGContextRef context, BGFloat gray, BGFloat alpha) {
    BGContextSetRGBFillColor(context, gray, gray, gray, alpha);
}

void BGContextSetGrayStrokeColor(BGContextRef context, BGFloat gray, BGFloat alpha) {
    BGContextSetRGBStrokeColor(context, gray, gray, gray, alpha);
}

void BGContextSetAlpha(BGContextRef context, BGFloat alpha) {
    if (context != nullptr)
        context->state.alpha = alpha < 0 ? 0 : (alpha > 1 ? 1 : alpha);
}

void BGContextSetLineWidth(BGContextRef context, BGFloat width) {
    if (Usable(context) && width >= 0)
        cairo_set_line_width(context->cr, width);
}

void BGContextSetShouldAntialias(BGContextRef context, Boolean antialias) {
    if (Usable(context))
        cairo_set_antialias(context->cr,
                            antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}

void BGContextBeginPath(BGContextRef context) {
    if (Usable(context))
        cairo_new_path(context->cr);
}

void BGContextMoveToPoint(BGContextRef context, BGFloat x, BGFloat y) {
    if (Usable(context))
        cairo_move_to(context->cr, x, y);
}

void BGContextAddLineToPoint(BGContextRef context, BGFloat x, BGFloat y) {
    if (Usable(context))
        cairo_line_to(context->cr, x, y);
}

void BGContextAddCurveToPoint(BGContextRef context, BGFloat cp1x, BGFloat cp1y, BGFloat cp2x,
                              BGFloat cp2y, BGFloat x, BGFloat y) {
    if (Usable(context))
        cairo_curve_to(context->cr, cp1x, cp1y, cp2x, cp2y, x, y);
}

void BGContextAddArc(BGContextRef context, BGFloat x, BGFloat y, BGFloat radius, BGFloat startAngle,
                     BGFloat endAngle, int clockwise) {
    if (!Usable(context) || radius < 0)
        return;
    // Cairo's positive angles turn from +x towards +y; in a y-up space that is anticlockwise.
    if (clockwise)
        cairo_arc_negative(context->cr, x, y, radius, startAngle, endAngle);
    else
        cairo_arc(context->cr, x, y, radius, startAngle, endAngle);
}

void BGContextAddRect(BGContextRef context, BGRect rect) {
    if (Usable(context) && !BGRectIsNull(rect))
        AddRectPath(context->cr, rect);
}

void BGContextAddRoundedRect(BGContextRef context, BGRect rect, BGFloat radius) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    rect = BGRectStandardize(rect);
    const double r =
        std::fmax(0, std::fmin(radius, std::fmin(rect.size.width, rect.size.height) / 2));
    const double x0 = rect.origin.x, y0 = rect.origin.y;
    const double x1 = x0 + rect.size.width, y1 = y0 + rect.size.height;
    cairo_t* cr = context->cr;
    cairo_new_sub_path(cr);
    cairo_arc(cr, x1 - r, y0 + r, r, -M_PI / 2, 0);
    cairo_arc(cr, x1 - r, y1 - r, r, 0, M_PI / 2);
    cairo_arc(cr, x0 + r, y1 - r, r, M_PI / 2, M_PI);
    cairo_arc(cr, x0 + r, y0 + r, r, M_PI, 3 * M_PI / 2);
    cairo_close_path(cr);
}

void BGContextAddEllipseInRect(BGContextRef context, BGRect rect) {
    if (Usable(context) && !BGRectIsNull(rect))
        AddEllipsePath(context->cr, rect);
}

void BGContextClosePath(BGContextRef context) {
    if (Usable(context))
        cairo_close_path(context->cr);
}

void BGContextFillPath(BGContextRef context) {
    if (!Usable(context))
        return;
    context->UseFill();
    cairo_set_fill_rule(context->cr, CAIRO_FILL_RULE_WINDING);
    cairo_fill(context->cr);
}

void BGContextEOFillPath(BGContextRef context) {
    if (!Usable(context))
        return;
    context->UseFill();
    cairo_set_fill_rule(context->cr, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(context->cr);
}

void BGContextStrokePath(BGContextRef context) {
    if (!Usable(context))
        return;
    context->UseStroke();
    cairo_stroke(context->cr);
}

void BGContextFillRect(BGContextRef context, BGRect rect) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    cairo_new_path(context->cr);
    AddRectPath(context->cr, rect);
    BGContextFillPath(context);
}

void BGContextStrokeRect(BGContextRef context, BGRect rect) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    cairo_new_path(context->cr);
    AddRectPath(context->cr, rect);
    BGContextStrokePath(context);
}

void BGContextStrokeRectWithWidth(BGContextRef context, BGRect rect, BGFloat width) {
    if (!Usable(context))
        return;
    cairo_save(context->cr);
    BGContextSetLineWidth(context, width);
    BGContextStrokeRect(context, rect);
    cairo_restore(context->cr);
}

void BGContextClearRect(BGContextRef context, BGRect rect) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    cairo_t* cr = context->cr;
    cairo_save(cr);
    cairo_new_path(cr);
    AddRectPath(cr, rect);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_fill(cr);
    cairo_restore(cr);
}

void BGContextFillEllipseInRect(BGContextRef context, BGRect rect) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    cairo_new_path(context->cr);
    AddEllipsePath(context->cr, rect);
    BGContextFillPath(context);
}

void BGContextStrokeEllipseInRect(BGContextRef context, BGRect rect) {
    if (!Usable(context) || BGRectIsNull(rect))
        return;
    cairo_new_path(context->cr);
    AddEllipsePath(context->cr, rect);
    BGContextStrokePath(context);
}

void BGContextStrokeLineSegments(BGContextRef context, const BGPoint* points, size_t count) {
    if (!Usable(context) || points == nullptr)
        return;
    cairo_new_path(context->cr);
    for (size_t i = 0; i + 1 < count; i += 2) {
        cairo_move_to(context->cr, points[i].x, points[i].y);
        cairo_line_to(context->cr, points[i + 1].x, points[i + 1].y);
    }
    BGContextStrokePath(context);
}

} // extern "C"
