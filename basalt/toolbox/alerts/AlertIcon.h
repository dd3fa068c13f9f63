#pragma once

// The picture at the left of a standard alert: the icon theme's caution, note or stop icon for
// the alert's type, drawn when no theme has a sharp one. A plain alert shows none.

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

// Null for an alert type that shows no icon.
std::shared_ptr<View> MakeAlertIcon(AlertType type);

} // namespace basalt::toolbox
