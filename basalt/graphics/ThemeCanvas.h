#pragma once

// What every theme drawing call shares: a saved Cairo state turned upright around the part's
// bounds, the context's alpha folded with the look of the draw state, and the shapes the theme
// is built from. Outlines are 1 point wide and sit half a point inside their rectangle, so they
// land on whole device pixels at 1x and 2x.

#include "basalt/graphics/ThemePalette.h"

#include <basalt/BasaltGraphics.h>
#include <cairo.h>

namespace basalt::graphics {

bool IsUnavailable(BTThemeDrawState state);
bool IsInactive(BTThemeDrawState state);

class ThemeCanvas {
public:
    ThemeCanvas(BGContextRef context, BGRect bounds, BTThemeDrawState state);
    ~ThemeCanvas();
    ThemeCanvas(const ThemeCanvas&) = delete;
    ThemeCanvas& operator=(const ThemeCanvas&) = delete;

    cairo_t* Cairo() const { return cr_; }
    BGRect Bounds() const { return bounds_; }

    void RoundedRect(BGRect rect, double radius) const;
    void Fill(BGRect rect, double radius, const ThemeColor& color) const;
    // A 1-point outline just inside rect.
    void Outline(BGRect rect, double radius, const ThemeColor& color) const;
    // The focus ring, outside rect.
    void FocusRing(BGRect rect, double radius) const;
    // The same ring just inside rect, for parts drawn clipped to their bounds; its outer edge
    // follows an outline of that radius.
    void InnerFocusRing(BGRect rect, double radius) const;
    void Line(BGPoint from, BGPoint to, const ThemeColor& color, double width = 1) const;
    // Fill or stroke the path built on Cairo() so far.
    void FillPath(const ThemeColor& color) const;
    void StrokePath(const ThemeColor& color, double width) const;
    // A chevron of two strokes centred at (x, y); down when pointing is 1, up when -1,
    // right when 2.
    void Chevron(double x, double y, double size, int pointing, const ThemeColor& color) const;

private:
    cairo_t* cr_;
    BGRect bounds_;
    double alpha_;
};

} // namespace basalt::graphics
