#pragma once

// The menu bar: the menus a client inserted, in order. The library finds a client's Edit menu
// here by its command keys.

#include "basalt/toolbox/menus/Menu.h"

#include <memory>

namespace basalt::toolbox::menus {

// Holds the menu alive while it is in the bar.
std::shared_ptr<Menu> Retained(Menu* menu);
const std::vector<std::shared_ptr<Menu>>& Bar();
// A key event with the command modifier: the matching enabled item's command is sent. noErr
// when a menu took it.
StatusCode DispatchMenuKey(EventRef keyEvent);
// True while the application modal state keeps the bar disabled.
bool IsBarDisabled();

} // namespace basalt::toolbox::menus
