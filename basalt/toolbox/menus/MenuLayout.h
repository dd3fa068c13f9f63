#pragma once

// The geometry of a shown menu, in points. Content coordinates run from the top of the first
// row (after the top padding) down: a row per item, thin for a separator, none for a hidden
// item. Placement puts the chosen item over the point the menu opens at and keeps the whole
// frame on the screen; a menu taller than the screen is cut to it and scrolls, with arrow bands
// at the ends that have more.

#include "basalt/toolbox/menus/Menu.h"

#include <vector>

namespace basalt::toolbox::menus {

struct MenuMetrics {
    static constexpr BGFloat kRowHeight = 22;
    static constexpr BGFloat kSeparatorHeight = 9;
    static constexpr BGFloat kPadding = 4; // above the first row and below the last
    static constexpr BGFloat kMarkColumn = 22;
    static constexpr BGFloat kIconSize = 16;
    static constexpr BGFloat kIconGap = 6;
    static constexpr BGFloat kTrailing = 20;
    static constexpr BGFloat kKeyGap = 24;
    static constexpr BGFloat kMinimumWidth = 100;
    static constexpr BGFloat kArrowBand = 16;
};

class MenuLayout {
public:
    static MenuLayout Measure(Menu& menu);

    BGFloat Width() const { return width_; }
    // Rows and padding together.
    BGFloat Height() const { return height_; }
    size_t Count() const { return rows_.size(); }
    // The item's row in content coordinates; empty for a hidden or unknown item.
    BGRect Row(MenuItemIndex item) const;
    // The item whose row holds content y, 0 for none.
    MenuItemIndex ItemAt(BGFloat contentY) const;
    bool HasIcons() const { return hasIcons_; }
    // Where the command keys' column begins, 0 when no item has one.
    BGFloat KeyColumn() const { return keyColumn_; }

private:
    struct RowSpan {
        BGFloat top, height;
    };
    std::vector<RowSpan> rows_;
    BGFloat width_ = 0, height_ = 0, keyColumn_ = 0;
    bool hasIcons_ = false;
};

struct MenuPlacement {
    Rect frame;         // global points
    BGFloat scroll = 0; // content hidden above the frame
    BGFloat maxScroll = 0;
};

// The frame on `screen` with the row of `current` (or the first row) at `where`.
MenuPlacement PlaceMenu(const MenuLayout& layout, Point where, MenuItemIndex current,
                        const Rect& screen);

// The command key of an item as the menu shows it ("Ctrl+Shift+K"), empty if none.
std::u16string CommandKeyLabel(const Menu::Item& item);

} // namespace basalt::toolbox::menus
