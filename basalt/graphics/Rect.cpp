// Whole-number rectangles of windows and controls: top/left inclusive, bottom/right exclusive.

#include <algorithm>
#include <basalt/BasaltGraphics.h>

extern "C" {

void SetRect(Rect* r, int16_t left, int16_t top, int16_t right, int16_t bottom) {
    if (r != nullptr)
        *r = {top, left, bottom, right};
}

void OffsetRect(Rect* r, int16_t dh, int16_t dv) {
    if (r == nullptr)
        return;
    r->left = static_cast<int16_t>(r->left + dh);
    r->right = static_cast<int16_t>(r->right + dh);
    r->top = static_cast<int16_t>(r->top + dv);
    r->bottom = static_cast<int16_t>(r->bottom + dv);
}

void InsetRect(Rect* r, int16_t dh, int16_t dv) {
    if (r == nullptr)
        return;
    r->left = static_cast<int16_t>(r->left + dh);
    r->right = static_cast<int16_t>(r->right - dh);
    r->top = static_cast<int16_t>(r->top + dv);
    r->bottom = static_cast<int16_t>(r->bottom - dv);
    if (EmptyRect(r))
        *r = {0, 0, 0, 0};
}

Boolean EmptyRect(const Rect* r) {
    return r == nullptr || r->right <= r->left || r->bottom <= r->top;
}

Boolean SectRect(const Rect* a, const Rect* b, Rect* dst) {
    if (a == nullptr || b == nullptr || dst == nullptr)
        return false;
    const Rect result = {std::max(a->top, b->top), std::max(a->left, b->left),
                         std::min(a->bottom, b->bottom), std::min(a->right, b->right)};
    *dst = EmptyRect(&result) ? Rect{0, 0, 0, 0} : result;
    return !EmptyRect(dst);
}

void UnionRect(const Rect* a, const Rect* b, Rect* dst) {
    if (a == nullptr || b == nullptr || dst == nullptr)
        return;
    *dst = {std::min(a->top, b->top), std::min(a->left, b->left), std::max(a->bottom, b->bottom),
            std::max(a->right, b->right)};
}

Boolean PtInRect(Point pt, const Rect* r) {
    return r != nullptr && pt.h >= r->left && pt.h < r->right && pt.v >= r->top && pt.v < r->bottom;
}

Boolean EqualRect(const Rect* a, const Rect* b) {
    return a != nullptr && b != nullptr && a->top == b->top && a->left == b->left &&
           a->bottom == b->bottom && a->right == b->right;
}

} // extern "C"
