#include "kel/foundation/TRect.h"

TRect::TRect(int16_t left, int16_t top, int16_t right, int16_t bottom) : TRect() {
    Set(left, top, right, bottom);
}

TRect& TRect::operator=(const Rect& rect) {
    static_cast<Rect&>(*this) = rect;
    return *this;
}

void TRect::Set(int16_t newLeft, int16_t newTop, int16_t newRight, int16_t newBottom) {
    top = newTop;
    left = newLeft;
    bottom = newBottom;
    right = newRight;
}

void TRect::OffsetBy(int16_t dh, int16_t dv) {
    Set(static_cast<int16_t>(left + dh), static_cast<int16_t>(top + dv),
        static_cast<int16_t>(right + dh), static_cast<int16_t>(bottom + dv));
}

void TRect::OffsetTo(int16_t h, int16_t v) {
    OffsetBy(static_cast<int16_t>(h - left), static_cast<int16_t>(v - top));
}
