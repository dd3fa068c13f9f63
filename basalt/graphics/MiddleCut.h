#pragma once

// Cutting a one-line text in its middle. Pango's own middle ellipsis pads the gap so that the
// end of the text meets the box's right edge, which leaves an uneven space after the "…" from
// one row to the next; cutting the text here keeps its two halves against the ellipsis.

#include <optional>
#include <pango/pango.h>
#include <string>

namespace basalt::graphics {

// whole holds the text on one line, unwrapped. The text to show in width (Pango units) with
// its middle replaced by "…"; nullopt when the whole text fits.
std::optional<std::string> CutInTheMiddle(PangoLayout* whole, int width);

} // namespace basalt::graphics
