#pragma once

// The one place that says which font stands behind each theme font id.

#include <basalt/BasaltGraphics.h>
#include <pango/pango.h>

namespace basalt::graphics {

// A new font description (sizes in points of user space) for a theme font id; null for an id
// the theme does not know. The caller frees it with pango_font_description_free.
PangoFontDescription* CreateThemeFontDescription(BTThemeFontID font);

bool IsThemeFont(BTThemeFontID font);

} // namespace basalt::graphics
