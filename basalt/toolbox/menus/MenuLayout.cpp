#include "basalt/toolbox/menus/MenuLayout.h"

#include "basalt/toolbox/controls/ControlDrawing.h"

#include <algorithm>
#include <cmath>

namespace basalt::toolbox::menus {

std::u16string CommandKeyLabel(const Menu::Item& item) {
    if (item.commandKey == 0)
        return {};
    std::u16string label;
    if (!(item.commandModifiers & kMenuNoCommandModifier))
        label += u"Ctrl+";
    if (item.commandModifiers & kMenuOptionModifier)
        label += u"Alt+";
    if (item.commandModifiers & kMenuShiftModifier)
        label += u"Shift+";
    return label + item.commandKey;
}

MenuLayout MenuLayout::Measure(Menu& menu) {
    using M = MenuMetrics;
    MenuLayout layout;
    BGFloat y = M::kPadding, widestText = 0, widestKey = 0;
    for (const Menu::Item& item : menu.items) {
        BGFloat height = (item.attributes & kMenuItemAttrHidden)      ? 0
                         : (item.attributes & kMenuItemAttrSeparator) ? M::kSeparatorHeight
                                                                      : M::kRowHeight;
        layout.rows_.push_back({y, height});
        y += height;
        if (height != M::kRowHeight)
            continue;
        layout.hasIcons_ = layout.hasIcons_ || item.icon != nullptr;
        widestText = std::max(widestText, MeasureText(item.text, kBTThemeFontSystem).width);
        std::u16string key = CommandKeyLabel(item);
        if (!key.empty())
            widestKey = std::max(widestKey, MeasureText(key, kBTThemeFontSystem).width);
    }
    layout.height_ = y + M::kPadding;
    BGFloat textLeft = M::kMarkColumn + (layout.hasIcons_ ? M::kIconSize + M::kIconGap : 0);
    BGFloat width = textLeft + std::ceil(widestText);
    if (widestKey > 0) {
        layout.keyColumn_ = width + M::kKeyGap;
        width = layout.keyColumn_ + std::ceil(widestKey);
    }
    layout.width_ = std::max(M::kMinimumWidth, width + M::kTrailing);
    return layout;
}

BGRect MenuLayout::Row(MenuItemIndex item) const {
    if (item < 1 || item > rows_.size() || rows_[item - 1].height == 0)
        return BGRectMake(0, 0, 0, 0);
    const RowSpan& row = rows_[item - 1];
    return BGRectMake(0, row.top, width_, row.height);
}

MenuItemIndex MenuLayout::ItemAt(BGFloat contentY) const {
    for (size_t i = 0; i < rows_.size(); ++i)
        if (contentY >= rows_[i].top && contentY < rows_[i].top + rows_[i].height)
            return MenuItemIndex(i + 1);
    return 0;
}

MenuPlacement PlaceMenu(const MenuLayout& layout, Point where, MenuItemIndex current,
                        const Rect& screen) {
    BGFloat screenHeight = screen.bottom - screen.top;
    BGFloat visible = std::min(std::ceil(layout.Height()), screenHeight);
    BGRect row = layout.Row(current);
    BGFloat rowTop = BGRectIsEmpty(row) ? MenuMetrics::kPadding : row.origin.y;
    BGFloat idealTop = where.v - rowTop;
    BGFloat top = std::clamp(idealTop, BGFloat(screen.top), screen.bottom - visible);
    BGFloat width = std::min(std::ceil(layout.Width()), BGFloat(screen.right - screen.left));
    BGFloat left = std::clamp(BGFloat(where.h), BGFloat(screen.left), screen.right - width);
    MenuPlacement placement;
    placement.frame = {int16_t(top), int16_t(left), int16_t(top + visible), int16_t(left + width)};
    placement.maxScroll = std::max<BGFloat>(0, std::ceil(layout.Height()) - visible);
    // What lies above the screen's top edge scrolls out of sight instead.
    placement.scroll = std::clamp(top - idealTop, BGFloat(0), placement.maxScroll);
    return placement;
}

} // namespace basalt::toolbox::menus
