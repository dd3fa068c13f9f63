#pragma once

// A popup menu shown in a window of the backend's, tracked until the user decides: the loop a
// backend with real windows runs for TrackPopupMenu. Input comes from the main queue like any
// other; events that are not the mouse's or the keyboard's are dispatched as usual meanwhile,
// so backend work and timers go on. A quit of the loop the menu runs in dismisses it.

#include "basalt/toolbox/backend/Backend.h"
#include "basalt/toolbox/menus/Menu.h"

#include <functional>
#include <memory>
#include <optional>

namespace basalt::toolbox::menus {

// Makes a window without a frame over `frame` (global points) that takes all the mouse and
// keyboard input while it is shown; null when it cannot.
using MenuWindowFactory = std::function<std::unique_ptr<BackendWindow>(const Rect& frame)>;

// The item chosen, 0 when the menu was dismissed. `pointer` is where the pointer is now
// (global points), when the backend can tell: a drag from there chooses on release.
MenuItemIndex RunPopupMenu(Menu& menu, Point where, MenuItemIndex current, const Rect& screen,
                           const MenuWindowFactory& makeWindow,
                           std::optional<BGPoint> pointer = std::nullopt);

} // namespace basalt::toolbox::menus
