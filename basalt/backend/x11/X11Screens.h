#pragma once

// The monitors of the display (pixels, root coordinates) and the scale windows draw at.

#include "basalt/backend/x11/X11Connection.h"

#include <basalt/BasaltToolbox.h>
#include <optional>
#include <string>
#include <vector>

namespace basalt::x11 {

struct PixelRect {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const PixelRect&) const = default;
};

// The monitors RandR reports, primary first; the whole screen when RandR is absent.
std::vector<PixelRect> QueryMonitors(const X11Connection& connection);
// What the window manager leaves to windows on the current desktop, once panels and docks
// have their strips; none without a window manager that says.
std::optional<PixelRect> QueryWorkArea(const X11Connection& connection);
// The part of a monitor that windows may use: all of it unless the work area takes some.
PixelRect UsablePart(const PixelRect& monitor, const std::optional<PixelRect>& workArea);

// Device pixels per point: GDK_SCALE when set, else Xft.dpi from the resource database
// (192 and more draws at 2x), else 1.
double ChooseScale(const char* gdkScale, const std::string& resources);
std::string ReadResourceDatabase(const X11Connection& connection);

// A window that meets no monitor moves onto the nearest one, kept whole where it fits.
PixelRect PlaceOnNearestMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors);
// A window that grew past the edge of the monitor it is mostly on moves back to show whole,
// where it fits; one already whole stays put.
PixelRect KeepWholeOnMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors);
// The monitor sharing the largest area with the window, else the first.
PixelRect GreatestAreaMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors);

} // namespace basalt::x11
