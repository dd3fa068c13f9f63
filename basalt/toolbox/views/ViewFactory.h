#pragma once

// Control kinds by code and by the names the layout files use.

#include "basalt/toolbox/views/View.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace basalt::toolbox {

// "push-button", "check-box", ... ; nullopt for a name the toolbox does not know.
std::optional<OSType> KindFromName(std::string_view name);
std::string_view NameOfKind(OSType kind);

// Lets a module above the toolbox add a control kind under a layout name; MakeView,
// BTCreateControl and layout files then make it like a built-in kind.
void RegisterViewKind(OSType kind, std::string_view name,
                      std::function<std::shared_ptr<View>()> make);

} // namespace basalt::toolbox
