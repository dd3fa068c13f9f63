// Floating geometry of views and contexts. Rectangles with a negative size are standardised
// before use; the null rectangle (infinite origin) stands for "no rectangle at all".

#include <algorithm>
#include <basalt/BasaltGraphics.h>
#include <cmath>
#include <limits>

namespace {

constexpr BGFloat kInfinity = std::numeric_limits<BGFloat>::infinity();

int16_t ClampToShort(BGFloat value) {
    if (std::isnan(value))
        return 0;
    return static_cast<int16_t>(std::clamp(value, -32768.0, 32767.0));
}

} // namespace

extern "C" {

const BGPoint BGPointZero = {0, 0};
const BGSize BGSizeZero = {0, 0};
const BGRect BGRectZero = {{0, 0}, {0, 0}};
const BGRect BGRectNull = {{kInfinity, kInfinity}, {0, 0}};
const BGAffineTransform BGAffineTransformIdentity = {1, 0, 0, 1, 0, 0};

BGPoint BGPointMake(BGFloat x, BGFloat y) {
    return {x, y};
}
BGSize BGSizeMake(BGFloat width, BGFloat height) {
    return {width, height};
}
BGRect BGRectMake(BGFloat x, BGFloat y, BGFloat width, BGFloat height) {
    return {{x, y}, {width, height}};
}

BGRect BGRectStandardize(BGRect r) {
    if (r.size.width < 0) {
        r.origin.x += r.size.width;
        r.size.width = -r.size.width;
    }
    if (r.size.height < 0) {
        r.origin.y += r.size.height;
        r.size.height = -r.size.height;
    }
    return r;
}

BGFloat BGRectGetMinX(BGRect r) {
    return BGRectStandardize(r).origin.x;
}
BGFloat BGRectGetMinY(BGRect r) {
    return BGRectStandardize(r).origin.y;
}
BGFloat BGRectGetWidth(BGRect r) {
    return std::fabs(r.size.width);
}
BGFloat BGRectGetHeight(BGRect r) {
    return std::fabs(r.size.height);
}
BGFloat BGRectGetMaxX(BGRect r) {
    return BGRectGetMinX(r) + BGRectGetWidth(r);
}
BGFloat BGRectGetMaxY(BGRect r) {
    return BGRectGetMinY(r) + BGRectGetHeight(r);
}
BGFloat BGRectGetMidX(BGRect r) {
    return BGRectGetMinX(r) + BGRectGetWidth(r) / 2;
}
BGFloat BGRectGetMidY(BGRect r) {
    return BGRectGetMinY(r) + BGRectGetHeight(r) / 2;
}

Boolean BGRectIsNull(BGRect r) {
    return std::isinf(r.origin.x) || std::isinf(r.origin.y);
}

Boolean BGRectIsEmpty(BGRect r) {
    return BGRectIsNull(r) || r.size.width == 0 || r.size.height == 0;
}

Boolean BGRectEqualToRect(BGRect a, BGRect b) {
    if (BGRectIsNull(a) || BGRectIsNull(b))
        return BGRectIsNull(a) && BGRectIsNull(b);
    a = BGRectStandardize(a);
    b = BGRectStandardize(b);
    return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.size.width == b.size.width &&
           a.size.height == b.size.height;
}

Boolean BGRectContainsPoint(BGRect r, BGPoint p) {
    if (BGRectIsEmpty(r))
        return false;
    return p.x >= BGRectGetMinX(r) && p.x < BGRectGetMaxX(r) && p.y >= BGRectGetMinY(r) &&
           p.y < BGRectGetMaxY(r);
}

Boolean BGRectContainsRect(BGRect outer, BGRect inner) {
    if (BGRectIsEmpty(outer) || BGRectIsNull(inner))
        return false;
    return BGRectGetMinX(inner) >= BGRectGetMinX(outer) &&
           BGRectGetMaxX(inner) <= BGRectGetMaxX(outer) &&
           BGRectGetMinY(inner) >= BGRectGetMinY(outer) &&
           BGRectGetMaxY(inner) <= BGRectGetMaxY(outer);
}

BGRect BGRectIntersection(BGRect a, BGRect b) {
    if (BGRectIsNull(a) || BGRectIsNull(b))
        return BGRectNull;
    const BGFloat minX = std::max(BGRectGetMinX(a), BGRectGetMinX(b));
    const BGFloat minY = std::max(BGRectGetMinY(a), BGRectGetMinY(b));
    const BGFloat maxX = std::min(BGRectGetMaxX(a), BGRectGetMaxX(b));
    const BGFloat maxY = std::min(BGRectGetMaxY(a), BGRectGetMaxY(b));
    if (maxX < minX || maxY < minY)
        return BGRectNull;
    return {{minX, minY}, {maxX - minX, maxY - minY}};
}

Boolean BGRectIntersectsRect(BGRect a, BGRect b) {
    return !BGRectIsEmpty(BGRectIntersection(a, b));
}

BGRect BGRectUnion(BGRect a, BGRect b) {
    if (BGRectIsNull(a))
        return BGRectStandardize(b);
    if (BGRectIsNull(b))
        return BGRectStandardize(a);
    const BGFloat minX = std::min(BGRectGetMinX(a), BGRectGetMinX(b));
    const BGFloat minY = std::min(BGRectGetMinY(a), BGRectGetMinY(b));
    const BGFloat maxX = std::max(BGRectGetMaxX(a), BGRectGetMaxX(b));
    const BGFloat maxY = std::max(BGRectGetMaxY(a), BGRectGetMaxY(b));
    return {{minX, minY}, {maxX - minX, maxY - minY}};
}

BGRect BGRectInset(BGRect r, BGFloat dx, BGFloat dy) {
    if (BGRectIsNull(r))
        return r;
    r = BGRectStandardize(r);
    r.origin.x += dx;
    r.origin.y += dy;
    r.size.width -= 2 * dx;
    r.size.height -= 2 * dy;
    return r.size.width < 0 || r.size.height < 0 ? BGRectNull : r;
}

BGRect BGRectOffset(BGRect r, BGFloat dx, BGFloat dy) {
    r.origin.x += dx;
    r.origin.y += dy;
    return r;
}

BGRect BGRectIntegral(BGRect r) {
    if (BGRectIsNull(r))
        return r;
    const BGFloat minX = std::floor(BGRectGetMinX(r));
    const BGFloat minY = std::floor(BGRectGetMinY(r));
    const BGFloat maxX = std::ceil(BGRectGetMaxX(r));
    const BGFloat maxY = std::ceil(BGRectGetMaxY(r));
    return {{minX, minY}, {maxX - minX, maxY - minY}};
}

BGAffineTransform BGAffineTransformMake(BGFloat a, BGFloat b, BGFloat c, BGFloat d, BGFloat tx,
                                        BGFloat ty) {
    return {a, b, c, d, tx, ty};
}

BGAffineTransform BGAffineTransformMakeTranslation(BGFloat tx, BGFloat ty) {
    return {1, 0, 0, 1, tx, ty};
}

BGAffineTransform BGAffineTransformMakeScale(BGFloat sx, BGFloat sy) {
    return {sx, 0, 0, sy, 0, 0};
}

BGAffineTransform BGAffineTransformMakeRotation(BGFloat angle) {
    const BGFloat c = std::cos(angle);
    const BGFloat s = std::sin(angle);
    return {c, s, -s, c, 0, 0};
}

BGAffineTransform BGAffineTransformConcat(BGAffineTransform t1, BGAffineTransform t2) {
    return {t1.a * t2.a + t1.b * t2.c,           t1.a * t2.b + t1.b * t2.d,
            t1.c * t2.a + t1.d * t2.c,           t1.c * t2.b + t1.d * t2.d,
            t1.tx * t2.a + t1.ty * t2.c + t2.tx, t1.tx * t2.b + t1.ty * t2.d + t2.ty};
}

BGAffineTransform BGAffineTransformInvert(BGAffineTransform t) {
    const BGFloat det = t.a * t.d - t.b * t.c;
    if (det == 0)
        return BGAffineTransformIdentity;
    return {t.d / det,
            -t.b / det,
            -t.c / det,
            t.a / det,
            (t.c * t.ty - t.d * t.tx) / det,
            (t.b * t.tx - t.a * t.ty) / det};
}

BGPoint BGPointApplyAffineTransform(BGPoint p, BGAffineTransform t) {
    return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
}

BGRect BGRectApplyAffineTransform(BGRect r, BGAffineTransform t) {
    if (BGRectIsNull(r))
        return r;
    const BGPoint corners[4] = {
        BGPointApplyAffineTransform({BGRectGetMinX(r), BGRectGetMinY(r)}, t),
        BGPointApplyAffineTransform({BGRectGetMaxX(r), BGRectGetMinY(r)}, t),
        BGPointApplyAffineTransform({BGRectGetMinX(r), BGRectGetMaxY(r)}, t),
        BGPointApplyAffineTransform({BGRectGetMaxX(r), BGRectGetMaxY(r)}, t)};
    BGFloat minX = corners[0].x, maxX = corners[0].x, minY = corners[0].y, maxY = corners[0].y;
    for (const BGPoint& p : corners) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    return {{minX, minY}, {maxX - minX, maxY - minY}};
}

BGRect BGRectFromRect(const Rect* r) {
    if (r == nullptr)
        return BGRectNull;
    return {{static_cast<BGFloat>(r->left), static_cast<BGFloat>(r->top)},
            {static_cast<BGFloat>(r->right - r->left), static_cast<BGFloat>(r->bottom - r->top)}};
}

void BGRectToRect(BGRect r, Rect* out) {
    if (out == nullptr)
        return;
    if (BGRectIsNull(r)) {
        *out = {0, 0, 0, 0};
        return;
    }
    const BGRect whole = BGRectIntegral(r);
    out->left = ClampToShort(BGRectGetMinX(whole));
    out->top = ClampToShort(BGRectGetMinY(whole));
    out->right = ClampToShort(BGRectGetMaxX(whole));
    out->bottom = ClampToShort(BGRectGetMaxY(whole));
}

} // extern "C"
