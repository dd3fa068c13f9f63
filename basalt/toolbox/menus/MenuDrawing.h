#pragma once

// Draws an open menu as it looks at one moment: every backend that shows menus draws them
// with this, so they look the same on every display.

#include "basalt/toolbox/menus/MenuLayout.h"

namespace basalt::toolbox::menus {

struct MenuAppearance {
    BGSize frame;          // the visible part, points
    BGFloat scroll = 0;    // content hidden above it
    BGFloat maxScroll = 0; // content hidden below it at scroll 0
    MenuItemIndex highlighted = 0;
};

// Draws into a flipped context (origin top left, y down) covering the frame.
void DrawMenu(BGContextRef context, const Menu& menu, const MenuLayout& layout,
              const MenuAppearance& appearance);

} // namespace basalt::toolbox::menus
