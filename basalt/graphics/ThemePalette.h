#pragma once

// The theme's colours, all in one place: light greys for surfaces, one steel-blue accent for
// defaults, selection and focus, and soft lines instead of bevels.

#include <cairo.h>

namespace basalt::graphics {

struct ThemeColor {
    double red, green, blue, alpha;
};

constexpr ThemeColor Hex(unsigned rgb, double alpha = 1) {
    return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, alpha};
}

struct ThemePalette {
    ThemeColor windowBackground = Hex(0xF3F3F5);
    ThemeColor placardBackground = Hex(0xEBECEF);
    ThemeColor listBackground = Hex(0xFFFFFF);
    ThemeColor face = Hex(0xFFFFFF);
    ThemeColor facePressed = Hex(0xE3E6EB);
    ThemeColor faceInactive = Hex(0xF7F7F8);
    ThemeColor border = Hex(0xC3C7CD);
    ThemeColor borderStrong = Hex(0xA3A9B1);
    ThemeColor borderInactive = Hex(0xD8DADE);
    ThemeColor shadow = Hex(0x000000, 0.06);
    ThemeColor text = Hex(0x1E2126);
    ThemeColor textOnAccent = Hex(0xFFFFFF);
    ThemeColor textSecondary = Hex(0x6B717A);
    ThemeColor mark = Hex(0x30353C);
    ThemeColor accent = Hex(0x3A6EA5);
    ThemeColor accentDark = Hex(0x2C5683);
    ThemeColor accentPressed = Hex(0x2F5C8C);
    ThemeColor focusRing = Hex(0x3A6EA5, 0.45);
    ThemeColor groupFill = Hex(0x000000, 0.03);
    ThemeColor groupBorder = Hex(0xD3D6DB);
    ThemeColor wellFill = Hex(0xFAFAFB);
    ThemeColor separator = Hex(0xD0D3D8);
    ThemeColor headerFace = Hex(0xF6F6F7);
    ThemeColor selectionInactive = Hex(0xD2D6DC);
    ThemeColor listStripe = Hex(0xF5F6F8);
    ThemeColor scrollTrack = Hex(0x000000, 0.04);
    ThemeColor scrollThumb = Hex(0x000000, 0.32);
    ThemeColor scrollThumbInactive = Hex(0x000000, 0.18);
    ThemeColor iconPaper = Hex(0xFFFFFF);
    ThemeColor iconOutline = Hex(0x7D848E);
    ThemeColor iconDetail = Hex(0xC4C9D0);
    ThemeColor iconFolder = Hex(0x8DB2DB);
    ThemeColor iconFolderBack = Hex(0x6F97C6);
    ThemeColor iconFolderLine = Hex(0x4F79AB);
    ThemeColor iconDevice = Hex(0xDDE1E6);
    ThemeColor iconCaution = Hex(0xF2B82A);
    ThemeColor iconCautionLine = Hex(0xC98E0B);
    ThemeColor iconCautionMark = Hex(0x3A2F12);
    ThemeColor iconNote = Hex(0x3A7BD5);
    ThemeColor iconNoteLine = Hex(0x2A5FA8);
    ThemeColor iconStop = Hex(0xD93A36);
    ThemeColor iconStopLine = Hex(0xA82623);
};

inline constexpr ThemePalette kPalette;

// How much of a colour remains when the thing drawn is unavailable.
inline constexpr double kUnavailableAlpha = 0.4;

inline void SetSource(cairo_t* cr, const ThemeColor& color, double alpha = 1) {
    cairo_set_source_rgba(cr, color.red, color.green, color.blue, color.alpha * alpha);
}

} // namespace basalt::graphics
