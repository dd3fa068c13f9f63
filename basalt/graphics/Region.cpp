// Regions: an OpaqueRgn owns one cairo region. A region that could not be made stays usable
// as an empty one, and GetLastRegionStatus reports the failure.

#include "basalt/graphics/BGCairo.h"

#include <cairo.h>

struct OpaqueRgn {
    cairo_region_t* region;
};

namespace {

thread_local StatusCode gLastRegionStatus = noErr;

bool Usable(RgnHandle rgn) {
    return rgn != nullptr && rgn->region != nullptr;
}

void Note(cairo_status_t status) {
    gLastRegionStatus = status == CAIRO_STATUS_SUCCESS ? noErr : memFullErr;
}

void Replace(RgnHandle rgn, cairo_region_t* region) {
    cairo_region_destroy(rgn->region);
    rgn->region = region;
    Note(cairo_region_status(region));
}

cairo_rectangle_int_t ToCairo(const Rect& r) {
    if (EmptyRect(&r))
        return {0, 0, 0, 0};
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

// Applies one of cairo's set operations into dst, which may be a or b.
template <class Operation>
void Combine(RgnHandle a, RgnHandle b, RgnHandle dst, Operation operation) {
    if (!Usable(a) || !Usable(b) || !Usable(dst))
        return;
    cairo_region_t* result = cairo_region_copy(a->region);
    Note(operation(result, b->region));
    Replace(dst, result);
}

} // namespace

namespace basalt::graphics {

cairo_region_t* RegionOf(RgnHandle rgn) {
    return rgn != nullptr ? rgn->region : nullptr;
}

} // namespace basalt::graphics

extern "C" {

RgnHandle NewRgn(void) {
    cairo_region_t* region = cairo_region_create();
    Note(cairo_region_status(region));
    return new OpaqueRgn{region};
}

void DisposeRgn(RgnHandle rgn) {
    if (rgn == nullptr)
        return;
    cairo_region_destroy(rgn->region);
    delete rgn;
}

StatusCode GetLastRegionStatus(void) {
    return gLastRegionStatus;
}

void CopyRgn(RgnHandle src, RgnHandle dst) {
    if (Usable(src) && Usable(dst) && src != dst)
        Replace(dst, cairo_region_copy(src->region));
}

void SetEmptyRgn(RgnHandle rgn) {
    if (Usable(rgn))
        Replace(rgn, cairo_region_create());
}

void RectRgn(RgnHandle rgn, const Rect* r) {
    if (!Usable(rgn) || r == nullptr)
        return;
    const cairo_rectangle_int_t box = ToCairo(*r);
    Replace(rgn, cairo_region_create_rectangle(&box));
}

void SetRectRgn(RgnHandle rgn, int16_t left, int16_t top, int16_t right, int16_t bottom) {
    const Rect r = {top, left, bottom, right};
    RectRgn(rgn, &r);
}

void OffsetRgn(RgnHandle rgn, int16_t dh, int16_t dv) {
    if (Usable(rgn))
        cairo_region_translate(rgn->region, dh, dv);
}

void InsetRgn(RgnHandle rgn, int16_t dh, int16_t dv) {
    if (!Usable(rgn))
        return;
    // Each rectangle shrinks on its own; exact for the rectangular regions views use.
    cairo_region_t* result = cairo_region_create();
    for (int i = 0; i < cairo_region_num_rectangles(rgn->region); ++i) {
        cairo_rectangle_int_t box;
        cairo_region_get_rectangle(rgn->region, i, &box);
        box = {box.x + dh, box.y + dv, box.width - 2 * dh, box.height - 2 * dv};
        if (box.width > 0 && box.height > 0)
            cairo_region_union_rectangle(result, &box);
    }
    Replace(rgn, result);
}

void SectRgn(RgnHandle a, RgnHandle b, RgnHandle dst) {
    Combine(a, b, dst, cairo_region_intersect);
}
void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle dst) {
    Combine(a, b, dst, cairo_region_union);
}
void DiffRgn(RgnHandle a, RgnHandle b, RgnHandle dst) {
    Combine(a, b, dst, cairo_region_subtract);
}
void XorRgn(RgnHandle a, RgnHandle b, RgnHandle dst) {
    Combine(a, b, dst, cairo_region_xor);
}

Boolean EmptyRgn(RgnHandle rgn) {
    return !Usable(rgn) || cairo_region_is_empty(rgn->region);
}

Boolean EqualRgn(RgnHandle a, RgnHandle b) {
    return Usable(a) && Usable(b) && cairo_region_equal(a->region, b->region);
}

Boolean PtInRgn(Point pt, RgnHandle rgn) {
    return Usable(rgn) && cairo_region_contains_point(rgn->region, pt.h, pt.v);
}

Boolean RectInRgn(const Rect* r, RgnHandle rgn) {
    if (!Usable(rgn) || r == nullptr || EmptyRect(r))
        return false;
    const cairo_rectangle_int_t box = ToCairo(*r);
    return cairo_region_contains_rectangle(rgn->region, &box) != CAIRO_REGION_OVERLAP_OUT;
}

Rect* GetRegionBounds(RgnHandle rgn, Rect* bounds) {
    if (bounds == nullptr)
        return nullptr;
    *bounds = {0, 0, 0, 0};
    if (EmptyRgn(rgn))
        return bounds;
    cairo_rectangle_int_t box;
    cairo_region_get_extents(rgn->region, &box);
    SetRect(bounds, static_cast<int16_t>(box.x), static_cast<int16_t>(box.y),
            static_cast<int16_t>(box.x + box.width), static_cast<int16_t>(box.y + box.height));
    return bounds;
}

} // extern "C"
