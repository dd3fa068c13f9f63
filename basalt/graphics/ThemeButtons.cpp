// Theme buttons: push, bevel, check box, radio, popup, disclosure triangle and button, and list
// headers. Each draws its body and says where its title goes; titles are drawn by the caller.

#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/ThemeCanvas.h"

#include <algorithm>
#include <cmath>

using namespace basalt::graphics;

namespace {

constexpr double kButtonRadius = 5;
constexpr double kBevelRadius = 3;
constexpr double kMarkSize = 14;
constexpr double kMarkGap = 6;
constexpr double kPopupArrowWidth = 20;
constexpr double kTitleInset = 10;
constexpr double kHeaderInset = 6;
constexpr double kHeaderArrowWidth = 14;

bool Pressed(const BTThemeButtonDrawInfo& info) {
    return info.state == kBTThemeStatePressed;
}

bool IsDefault(const BTThemeButtonDrawInfo& info) {
    return (info.adornment & kBTThemeAdornmentDefault) && !IsInactive(info.state) &&
           !IsUnavailable(info.state);
}

// A raised face: fill, a soft shadow below, and the outline.
void Face(const ThemeCanvas& canvas, BGRect body, double radius, const BTThemeButtonDrawInfo& info,
          bool on) {
    canvas.Fill(BGRectOffset(body, 0, 1), radius, kPalette.shadow);
    if (IsDefault(info)) {
        canvas.Fill(body, radius, Pressed(info) ? kPalette.accentPressed : kPalette.accent);
        canvas.Outline(body, radius, kPalette.accentDark);
        return;
    }
    const ThemeColor& fill = Pressed(info) || on      ? kPalette.facePressed
                             : IsInactive(info.state) ? kPalette.faceInactive
                                                      : kPalette.face;
    canvas.Fill(body, radius, fill);
    canvas.Outline(body, radius,
                   IsInactive(info.state) ? kPalette.borderInactive : kPalette.border);
}

// The part of the bounds a button body fills, leaving a point below for its shadow.
BGRect BodyOf(BGRect bounds) {
    return BGRectMake(bounds.origin.x, bounds.origin.y, bounds.size.width,
                      std::max(0.0, bounds.size.height - 1));
}

BGRect MarkRect(BGRect bounds, double size) {
    return BGRectMake(bounds.origin.x, std::round(BGRectGetMidY(bounds) - size / 2), size, size);
}

BGRect LabelRightOf(BGRect bounds, BGRect mark) {
    const double x = BGRectGetMaxX(mark) + kMarkGap;
    return BGRectMake(x, bounds.origin.y, std::max(0.0, BGRectGetMaxX(bounds) - x),
                      bounds.size.height);
}

BGRect PushButton(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info, double radius,
                  bool toggles) {
    const BGRect body = BodyOf(canvas.Bounds());
    Face(canvas, body, radius, info, toggles && info.value == kBTThemeButtonOn);
    if (info.adornment & kBTThemeAdornmentFocus)
        canvas.FocusRing(body, radius);
    return BGRectInset(body, kTitleInset, 0);
}

BGRect CheckBox(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info, bool radio) {
    const BGRect mark = MarkRect(canvas.Bounds(), kMarkSize);
    const double radius = radio ? kMarkSize / 2 : 3;
    const bool on = info.value != kBTThemeButtonOff;
    if (on && !IsInactive(info.state)) {
        canvas.Fill(mark, radius, Pressed(info) ? kPalette.accentPressed : kPalette.accent);
        canvas.Outline(mark, radius, kPalette.accentDark);
    } else {
        canvas.Fill(mark, radius, Pressed(info) ? kPalette.facePressed : kPalette.face);
        canvas.Outline(mark, radius, kPalette.borderStrong);
    }
    const ThemeColor& tick = IsInactive(info.state) ? kPalette.mark : kPalette.textOnAccent;
    cairo_t* cr = canvas.Cairo();
    const double x = mark.origin.x, y = mark.origin.y, s = kMarkSize;
    if (on && radio) {
        canvas.Fill(BGRectInset(mark, s * 0.32, s * 0.32), s, tick);
    } else if (info.value == kBTThemeButtonMixed) {
        canvas.Line({x + s * 0.28, y + s / 2}, {x + s * 0.72, y + s / 2}, tick, 2);
    } else if (on) {
        cairo_move_to(cr, x + s * 0.26, y + s * 0.52);
        cairo_line_to(cr, x + s * 0.43, y + s * 0.69);
        cairo_line_to(cr, x + s * 0.75, y + s * 0.33);
        canvas.StrokePath(tick, 2);
    }
    if (info.adornment & kBTThemeAdornmentFocus)
        canvas.FocusRing(mark, radius);
    return LabelRightOf(canvas.Bounds(), mark);
}

BGRect Popup(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info) {
    const BGRect body = BodyOf(canvas.Bounds());
    Face(canvas, body, kButtonRadius, info, false);
    const double x = BGRectGetMaxX(body) - kPopupArrowWidth / 2 - 2;
    const double y = BGRectGetMidY(body);
    const ThemeColor& arrows = IsDefault(info) ? kPalette.textOnAccent : kPalette.mark;
    canvas.Chevron(x, y - 3, 7, -1, arrows);
    canvas.Chevron(x, y + 3, 7, 1, arrows);
    if (info.adornment & kBTThemeAdornmentFocus)
        canvas.FocusRing(body, kButtonRadius);
    BGRect label = BGRectInset(body, kTitleInset, 0);
    label.size.width = std::max(0.0, label.size.width - kPopupArrowWidth + kTitleInset - 4);
    return label;
}

BGRect DisclosureTriangle(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info) {
    const BGRect mark = MarkRect(canvas.Bounds(), 12);
    const double cx = BGRectGetMidX(mark), cy = BGRectGetMidY(mark);
    cairo_t* cr = canvas.Cairo();
    // Pointing right when closed, down when open; filled, so it reads at 12 points.
    if (info.value == kBTThemeButtonOn) {
        cairo_move_to(cr, cx - 4.5, cy - 2.5);
        cairo_line_to(cr, cx + 4.5, cy - 2.5);
        cairo_line_to(cr, cx, cy + 3.5);
    } else {
        cairo_move_to(cr, cx - 2.5, cy - 4.5);
        cairo_line_to(cr, cx + 3.5, cy);
        cairo_line_to(cr, cx - 2.5, cy + 4.5);
    }
    cairo_close_path(cr);
    canvas.FillPath(Pressed(info) ? kPalette.text : kPalette.mark);
    return LabelRightOf(canvas.Bounds(), mark);
}

BGRect DisclosureButton(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info) {
    const BGRect mark = MarkRect(canvas.Bounds(), 20);
    const BGRect body = BGRectMake(mark.origin.x, mark.origin.y, 20, 19);
    Face(canvas, body, kBevelRadius, info, false);
    canvas.Chevron(BGRectGetMidX(body), BGRectGetMidY(body), 8,
                   info.value == kBTThemeButtonOn ? -1 : 1, kPalette.mark);
    if (info.adornment & kBTThemeAdornmentFocus)
        canvas.FocusRing(body, kBevelRadius);
    return LabelRightOf(canvas.Bounds(), mark);
}

BGRect ListHeader(const ThemeCanvas& canvas, const BTThemeButtonDrawInfo& info) {
    const BGRect b = canvas.Bounds();
    canvas.Fill(b, 0, Pressed(info) ? kPalette.facePressed : kPalette.headerFace);
    canvas.Line({b.origin.x, BGRectGetMaxY(b) - 0.5}, {BGRectGetMaxX(b), BGRectGetMaxY(b) - 0.5},
                kPalette.border);
    canvas.Line({BGRectGetMaxX(b) - 0.5, b.origin.y + 4},
                {BGRectGetMaxX(b) - 0.5, BGRectGetMaxY(b) - 4}, kPalette.separator);
    BGRect label = BGRectInset(b, kHeaderInset, 0);
    if (info.adornment & kBTThemeAdornmentHeaderSorted) {
        const bool down = info.adornment & kBTThemeAdornmentHeaderDescending;
        canvas.Chevron(BGRectGetMaxX(b) - kHeaderArrowWidth / 2 - 2, BGRectGetMidY(b), 8,
                       down ? 1 : -1, kPalette.mark);
        label.size.width = std::max(0.0, label.size.width - kHeaderArrowWidth);
    }
    return label;
}

BGRect DrawKind(const ThemeCanvas& canvas, BTThemeButtonKind kind,
                const BTThemeButtonDrawInfo& info) {
    switch (kind) {
    case kBTThemePushButton:
        return PushButton(canvas, info, kButtonRadius, false);
    case kBTThemeBevelButton:
        return PushButton(canvas, info, kBevelRadius, true);
    case kBTThemeCheckBox:
        return CheckBox(canvas, info, false);
    case kBTThemeRadioButton:
        return CheckBox(canvas, info, true);
    case kBTThemePopupButton:
        return Popup(canvas, info);
    case kBTThemeDisclosureTriangle:
        return DisclosureTriangle(canvas, info);
    case kBTThemeDisclosureButton:
        return DisclosureButton(canvas, info);
    default:
        return ListHeader(canvas, info);
    }
}

bool KnownKind(BTThemeButtonKind kind) {
    switch (kind) {
    case kBTThemePushButton:
    case kBTThemeBevelButton:
    case kBTThemeCheckBox:
    case kBTThemeRadioButton:
    case kBTThemePopupButton:
    case kBTThemeDisclosureTriangle:
    case kBTThemeDisclosureButton:
    case kBTThemeListHeaderButton:
        return true;
    default:
        return false;
    }
}

} // namespace

extern "C" StatusCode BTThemeDrawButton(const BGRect* bounds, BTThemeButtonKind kind,
                                        const BTThemeButtonDrawInfo* info, BGContextRef context,
                                        BGRect* outLabelRect) {
    if (context == nullptr || !context->Valid() || bounds == nullptr || info == nullptr ||
        BGRectIsNull(*bounds) || !KnownKind(kind))
        return paramErr;
    ThemeCanvas canvas(context, *bounds, info->state);
    const BGRect label = DrawKind(canvas, kind, *info);
    if (outLabelRect != nullptr)
        *outLabelRect = label;
    return noErr;
}
