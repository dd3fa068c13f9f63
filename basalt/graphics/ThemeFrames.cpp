// Theme parts without a value: frames, group boxes, wells, focus rings, separators, and the
// theme's background and text colours.

#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/ThemeCanvas.h"

#include <algorithm>

using namespace basalt::graphics;

namespace {

constexpr double kFieldRadius = 4;
constexpr double kGroupRadius = 6;
constexpr double kWellRadius = 3;

bool Drawable(BGContextRef context, const BGRect* rect) {
    return context != nullptr && context->Valid() && rect != nullptr && !BGRectIsNull(*rect);
}

} // namespace

extern "C" {

StatusCode BTThemeDrawFrame(const BGRect* rect, const BTThemeFrameDrawInfo* info,
                            BGContextRef context) {
    if (!Drawable(context, rect) || info == nullptr)
        return paramErr;
    ThemeCanvas canvas(context, *rect, info->state);
    const BGRect bounds = canvas.Bounds();
    const double radius = info->kind == kBTThemeFrameTextField ? kFieldRadius : 0;
    const bool focused = info->isFocused && !IsInactive(info->state);
    // A text field draws clipped to its bounds, so its ring goes inside, in the room its
    // text leaves at the edges.
    if (focused && info->kind == kBTThemeFrameTextField)
        canvas.InnerFocusRing(bounds, radius);
    else if (focused)
        canvas.FocusRing(bounds, radius);
    canvas.Outline(bounds, radius,
                   focused                   ? kPalette.accent
                   : IsInactive(info->state) ? kPalette.borderInactive
                                             : kPalette.border);
    return noErr;
}

StatusCode BTThemeDrawGroupBox(const BGRect* rect, const BTThemeGroupBoxDrawInfo* info,
                               BGContextRef context) {
    if (!Drawable(context, rect) || info == nullptr)
        return paramErr;
    ThemeCanvas canvas(context, *rect, info->state);
    if (info->kind == kBTThemeGroupBoxPrimary)
        canvas.Fill(canvas.Bounds(), kGroupRadius, kPalette.groupFill);
    canvas.Outline(canvas.Bounds(), kGroupRadius, kPalette.groupBorder);
    return noErr;
}

StatusCode BTThemeDrawGenericWell(const BGRect* rect, const BTThemeWellDrawInfo* info,
                                  BGContextRef context) {
    if (!Drawable(context, rect) || info == nullptr)
        return paramErr;
    ThemeCanvas canvas(context, *rect, info->state);
    const BGRect bounds = canvas.Bounds();
    canvas.Fill(bounds, kWellRadius, kPalette.wellFill);
    // A faint inner shadow along the top says "sunk in" without a bevel.
    canvas.Fill(BGRectMake(bounds.origin.x + 1, bounds.origin.y + 1, bounds.size.width - 2, 2), 1,
                kPalette.shadow);
    canvas.Outline(bounds, kWellRadius,
                   IsInactive(info->state) ? kPalette.borderInactive : kPalette.border);
    return noErr;
}

StatusCode BTThemeDrawFocusRect(const BGRect* rect, Boolean hasFocus, BGContextRef context) {
    if (!Drawable(context, rect))
        return paramErr;
    if (hasFocus) {
        ThemeCanvas canvas(context, *rect, kBTThemeStateActive);
        canvas.FocusRing(canvas.Bounds(), kFieldRadius);
    }
    return noErr;
}

StatusCode BTThemeDrawSeparator(const BGRect* rect, BTThemeDrawState state, BGContextRef context) {
    if (!Drawable(context, rect))
        return paramErr;
    ThemeCanvas canvas(context, *rect, state);
    const BGRect b = canvas.Bounds();
    if (b.size.width >= b.size.height) {
        const double y = b.origin.y + b.size.height / 2;
        canvas.Line({b.origin.x, y}, {b.origin.x + b.size.width, y}, kPalette.separator);
    } else {
        const double x = b.origin.x + b.size.width / 2;
        canvas.Line({x, b.origin.y}, {x, b.origin.y + b.size.height}, kPalette.separator);
    }
    return noErr;
}

StatusCode BTThemeDrawScrollBar(const BGRect* track, BGFloat thumbStart, BGFloat thumbLength,
                                BTThemeDrawState state, BGContextRef context) {
    if (!Drawable(context, track) || thumbStart < 0 || thumbLength < 0)
        return paramErr;
    ThemeCanvas canvas(context, *track, state);
    const BGRect b = canvas.Bounds();
    const bool vertical = b.size.height > b.size.width;
    const double breadth = vertical ? b.size.width : b.size.height;
    canvas.Fill(b, 0, kPalette.scrollTrack);
    if (thumbLength <= 0)
        return noErr;
    // A slim rounded thumb, inset from the track's sides, never shorter than it is wide.
    const double inset = std::max(2.0, breadth * 0.25);
    const double thickness = breadth - 2 * inset;
    const double length = std::max(thumbLength, breadth);
    const BGRect thumb =
        vertical ? BGRectMake(b.origin.x + inset, b.origin.y + thumbStart, thickness, length)
                 : BGRectMake(b.origin.x + thumbStart, b.origin.y + inset, length, thickness);
    canvas.Fill(BGRectIntersection(thumb, b), thickness / 2,
                IsInactive(state) ? kPalette.scrollThumbInactive : kPalette.scrollThumb);
    return noErr;
}

StatusCode BTThemeSetTextColor(uint32_t kind, BTThemeDrawState state, BGContextRef context) {
    if (context == nullptr)
        return paramErr;
    ThemeColor color = kPalette.text;
    if (kind == kBTThemeTextColorOnAccent)
        color = kPalette.textOnAccent;
    else if (kind == kBTThemeTextColorSecondary)
        color = kPalette.textSecondary;
    else if (kind != kBTThemeTextColorPlain)
        return paramErr;
    const double alpha = IsUnavailable(state) ? kUnavailableAlpha : 1;
    BGContextSetRGBFillColor(context, color.red, color.green, color.blue, color.alpha * alpha);
    return noErr;
}

StatusCode BTThemeApplyBackground(const BGRect* bounds, uint32_t kind, BTThemeDrawState state,
                                  BGContextRef context) {
    (void)bounds;
    if (context == nullptr)
        return paramErr;
    ThemeColor color;
    switch (kind) {
    case kBTThemeBackgroundWindow:
    case kBTThemeBackgroundDialogArea:
        color = kPalette.windowBackground;
        break;
    case kBTThemeBackgroundPlacard:
        color = kPalette.placardBackground;
        break;
    case kBTThemeBackgroundListView:
        color = kPalette.listBackground;
        break;
    case kBTThemeBackgroundSelection:
        color = IsInactive(state) ? kPalette.selectionInactive : kPalette.accent;
        break;
    case kBTThemeBackgroundListStripe:
        color = kPalette.listStripe;
        break;
    default:
        return paramErr;
    }
    BGContextSetRGBFillColor(context, color.red, color.green, color.blue, color.alpha);
    return noErr;
}

} // extern "C"
