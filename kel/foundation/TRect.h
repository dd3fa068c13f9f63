#pragma once

// A Rect with setters. It holds exactly the four fields of a Rect (top, left, bottom, right), so
// it passes wherever a Rect is taken; its constructor and Set take left, top, right, bottom.

#include <basalt/BasaltGraphics.h>
#include <cstdint>

class TRect : public Rect {
public:
    TRect() : Rect{0, 0, 0, 0} {}
    TRect(const TRect& other) = default;
    TRect(const Rect& rect) : Rect(rect) {} // NOLINT(google-explicit-constructor)
    TRect(int16_t left, int16_t top, int16_t right, int16_t bottom);

    TRect& operator=(const TRect& other) = default;
    TRect& operator=(const Rect& rect);

    void Set(int16_t left, int16_t top, int16_t right, int16_t bottom);
    void OffsetBy(int16_t dh, int16_t dv);
    // Moves the top left corner to (h, v), keeping the size.
    void OffsetTo(int16_t h, int16_t v);
};

static_assert(sizeof(TRect) == sizeof(Rect));
