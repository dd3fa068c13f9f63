#include "basalt/graphics/FontMap.h"

#include <utility>

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

// Control font styles' names for some of the theme fonts.
constexpr std::pair<BTThemeFontID, BTThemeFontID> kAliases[] = {
    {kBTControlFontSmallSystem, kBTThemeFontSmallSystem},
    {kBTControlFontSmallEmphasized, kBTThemeFontSmallEmphasized},
    {kBTControlFontBigSystem, kBTThemeFontSystem},
    {kBTControlFontViews, kBTThemeFontViews},
};

const ThemeFont* Lookup(BTThemeFontID font) {
    for (const auto& [alias, theme] : kAliases)
        if (font == alias)
            font = theme;
    for (const ThemeFont& entry : kThemeFonts)
        if (entry.id == font)
            return &entry;
    return nullptr;
}

} // namespace

bool IsThemeFont(BTThemeFontID font) {
    return Lookup(font) != nullptr;
}

PangoFontDescription* CreateThemeFontDescription(BTThemeFontID font) {
    if (const ThemeFont* entry = Lookup(font)) {
        PangoFontDescription* description = pango_font_description_new();
        pango_font_description_set_family_static(description, kFamily);
        pango_font_description_set_absolute_size(description, entry->size * PANGO_SCALE);
        pango_font_description_set_weight(description, entry->weight);
        return description;
    }
    return nullptr;
}

} // namespace basalt::graphics
