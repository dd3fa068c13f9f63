#pragma once

// Control kinds by code and by the names the layout files use.

#include "basalt/toolbox/views/View.h"

#include <optional>
#include <string_view>

namespace basalt::toolbox {

// "push-button", "check-box", ... ; nullopt for a name the toolbox does not know.
std::optional<OSType> KindFromName(std::string_view name);
std::string_view NameOfKind(OSType kind);

} // namespace basalt::toolbox
