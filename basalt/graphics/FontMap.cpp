#include "basalt/graphics/FontMap.h"

namespace basalt::graphics {

namespace {

struct ThemeFont {
    BTThemeFontID id;
    double size; // in points of user space, so text scales with the context
    PangoWeight weight;
};

// One family for everything keeps the dialogs calm; emphasis is weight, not a new face.
constexpr const char* kFamily = "Sans";

constexpr ThemeFont kThemeFonts[] = {
    {kBTThemeFontSystem, 13, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontSmallSystem, 11, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontSmallEmphasized, 11, PANGO_WEIGHT_BOLD},
    {kBTThemeFontViews, 12, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontEmphasized, 13, PANGO_WEIGHT_BOLD},
    {kBTThemeFontApplication, 13, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontLabel, 10, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontScope, 11, PANGO_WEIGHT_NORMAL},
    {kBTThemeFontScopeEmphasized, 11, PANGO_WEIGHT_BOLD},
};

} // namespace

PangoFontDescription* CreateThemeFontDescription(BTThemeFontID font) {
    for (const ThemeFont& entry : kThemeFonts) {
        if (entry.id != font)
            continue;
        PangoFontDescription* description = pango_font_description_new();
        pango_font_description_set_family_static(description, kFamily);
        pango_font_description_set_absolute_size(description, entry.size * PANGO_SCALE);
        pango_font_description_set_weight(description, entry.weight);
        return description;
    }
    return nullptr;
}

} // namespace basalt::graphics
