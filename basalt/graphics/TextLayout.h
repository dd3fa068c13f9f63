#pragma once

// Theme text over Pango: a text in a theme font, wrapped, cut to a line limit and ellipsized as
// a text box asks. Sizes are in user-space points and do not depend on the context's scale
// (metrics are unhinted), so a size measured here fits when drawn at 2x.

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <optional>
#include <string_view>

namespace basalt::graphics {

struct TextBoxStyle {
    BTThemeFontID font = kBTThemeFontSystem;
    uint32_t horizontalFlush = kBTThemeTextFlushLeft;
    uint32_t verticalFlush = kBTThemeTextFlushTop;
    uint32_t truncation = kBTThemeTextTruncationNone;
    uint32_t maxLines = 0; // 0: no limit
};

struct TextMeasure {
    BGSize size;     // whole points, rounded up, so a box of this size holds the text
    double baseline; // from the top of the text to the first line's baseline
    bool truncated;
};

// Measures utf8 wrapped at width (0: one line per paragraph); nullopt for an unknown font.
std::optional<TextMeasure> MeasureText(std::string_view utf8, const TextBoxStyle& style,
                                       double width);

// Draws utf8 upright into box with Cairo's current source: box is top-left based in a flipped
// context and bottom-left based in a y-up one. Says whether the text was cut; nullopt for an
// unknown font.
std::optional<bool> DrawText(cairo_t* cr, std::string_view utf8, const TextBoxStyle& style,
                             BGRect box);

} // namespace basalt::graphics
