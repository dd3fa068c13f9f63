#include "basalt/toolbox/menus/MenuDrawing.h"

#include "basalt/graphics/ThemePalette.h"
#include "basalt/toolbox/controls/ControlDrawing.h"

namespace basalt::toolbox::menus {
namespace {

using M = MenuMetrics;
using graphics::kPalette;
using graphics::ThemeColor;

void SetStroke(BGContextRef context, const ThemeColor& color) {
    BGContextSetRGBStrokeColor(context, color.red, color.green, color.blue, color.alpha);
}

void DrawCheckMark(BGContextRef context, const BGRect& row, bool onAccent) {
    BGFloat x = (M::kMarkColumn - 10) / 2, y = BGRectGetMidY(row);
    SetStroke(context, onAccent ? kPalette.textOnAccent : kPalette.mark);
    BGContextSetLineWidth(context, 2);
    BGContextBeginPath(context);
    BGContextMoveToPoint(context, x, y);
    BGContextAddLineToPoint(context, x + 3.5, y + 3.5);
    BGContextAddLineToPoint(context, x + 10, y - 4);
    BGContextStrokePath(context);
}

void DrawItem(BGContextRef context, const Menu& menu, const Menu::Item& item,
              const MenuLayout& layout, const BGRect& row, bool highlighted) {
    if (item.attributes & kMenuItemAttrSeparator) {
        BGRect line = BGRectMake(8, BGRectGetMidY(row) - 0.5, row.size.width - 16, 1);
        BTThemeDrawSeparator(&line, kBTThemeStateActive, context);
        return;
    }
    bool available = item.enabled && menu.enabled;
    bool header = item.attributes & kMenuItemAttrSectionHeader;
    if (highlighted) {
        BTThemeApplyBackground(&row, kBTThemeBackgroundSelection, kBTThemeStateActive, context);
        BGContextFillRect(context, row);
    }
    if (item.checked)
        DrawCheckMark(context, row, highlighted);
    BGFloat left = M::kMarkColumn;
    if (layout.HasIcons()) {
        if (item.icon != nullptr) {
            BGRect box =
                BGRectMake(left, BGRectGetMidY(row) - M::kIconSize / 2, M::kIconSize, M::kIconSize);
            PlotIconRefInContext(context, &box, kBTIconAlignCenter,
                                 available ? kBTIconTransformNone : kBTIconTransformDisabled,
                                 nullptr, kBTPlotIconNormal, item.icon);
        }
        left += M::kIconSize + M::kIconGap;
    }
    BTThemeDrawState state = available || header ? kBTThemeStateActive : kBTThemeStateUnavailable;
    uint32_t color = highlighted ? kBTThemeTextColorOnAccent
                     : header    ? kBTThemeTextColorSecondary
                                 : kBTThemeTextColorPlain;
    BGFloat right = layout.KeyColumn() > 0 ? layout.KeyColumn() : row.size.width;
    BGRect text = BGRectMake(left, row.origin.y, right - left, row.size.height);
    DrawText(context, item.text, text, header ? kBTThemeFontSmallEmphasized : kBTThemeFontSystem,
             kBTThemeTextFlushLeft, state, 1, color);
    std::u16string key = CommandKeyLabel(item);
    if (!key.empty()) {
        BGRect keyRect =
            BGRectMake(layout.KeyColumn(), row.origin.y,
                       row.size.width - layout.KeyColumn() - M::kTrailing / 2, row.size.height);
        DrawText(context, key, keyRect, kBTThemeFontSystem, kBTThemeTextFlushRight, state, 1,
                 highlighted ? kBTThemeTextColorOnAccent : kBTThemeTextColorSecondary);
    }
}

// A band over one end of a long menu with a triangle pointing the way it scrolls.
void DrawArrowBand(BGContextRef context, BGFloat top, BGFloat width, bool up) {
    BGRect band = BGRectMake(0, top, width, M::kArrowBand);
    BTThemeApplyBackground(&band, kBTThemeBackgroundListView, kBTThemeStateActive, context);
    BGContextFillRect(context, band);
    BGFloat x = width / 2, y = BGRectGetMidY(band), half = 4;
    BTThemeSetTextColor(kBTThemeTextColorPlain, kBTThemeStateActive, context);
    BGContextBeginPath(context);
    BGContextMoveToPoint(context, x - half, up ? y + half / 2 : y - half / 2);
    BGContextAddLineToPoint(context, x + half, up ? y + half / 2 : y - half / 2);
    BGContextAddLineToPoint(context, x, up ? y - half / 2 : y + half / 2);
    BGContextClosePath(context);
    BGContextFillPath(context);
}

} // namespace

void DrawMenu(BGContextRef context, const Menu& menu, const MenuLayout& layout,
              const MenuAppearance& appearance) {
    BGRect all = BGRectMake(0, 0, appearance.frame.width, appearance.frame.height);
    BTThemeApplyBackground(&all, kBTThemeBackgroundListView, kBTThemeStateActive, context);
    BGContextFillRect(context, all);
    BGContextSaveGState(context);
    BGContextTranslateCTM(context, 0, -appearance.scroll);
    for (MenuItemIndex index = 1; index <= menu.items.size(); ++index) {
        BGRect row = layout.Row(index);
        row.size.width = appearance.frame.width;
        if (BGRectIsEmpty(row) || BGRectGetMaxY(row) <= appearance.scroll ||
            row.origin.y >= appearance.scroll + appearance.frame.height)
            continue;
        DrawItem(context, menu, menu.items[index - 1], layout, row,
                 index == appearance.highlighted);
    }
    BGContextRestoreGState(context);
    if (appearance.scroll > 0)
        DrawArrowBand(context, 0, all.size.width, true);
    if (appearance.scroll < appearance.maxScroll)
        DrawArrowBand(context, all.size.height - M::kArrowBand, all.size.width, false);
    SetStroke(context, kPalette.borderStrong);
    BGContextStrokeRectWithWidth(context, BGRectInset(all, 0.5, 0.5), 1);
}

} // namespace basalt::toolbox::menus
