#include "basalt/backend/x11/X11Screens.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <xcb/randr.h>

namespace basalt::x11 {
namespace {

PixelRect WholeScreen(const X11Connection& connection) {
    return {0, 0, connection.Screen()->width_in_pixels, connection.Screen()->height_in_pixels};
}

long OverlapArea(const PixelRect& a, const PixelRect& b) {
    long width = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    long height = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return width > 0 && height > 0 ? width * height : 0;
}

// How far the window's middle lies from the monitor, squared.
long DistanceSquared(const PixelRect& window, const PixelRect& monitor) {
    long mx = window.x + window.width / 2, my = window.y + window.height / 2;
    long dx = std::max({long(monitor.x) - mx, 0L, mx - long(monitor.x + monitor.width)});
    long dy = std::max({long(monitor.y) - my, 0L, my - long(monitor.y + monitor.height)});
    return dx * dx + dy * dy;
}

std::vector<uint32_t> ReadCardinals(const X11Connection& connection, xcb_atom_t property) {
    xcb_connection_t* xcb = connection.get();
    xcb_get_property_reply_t* reply = xcb_get_property_reply(
        xcb, xcb_get_property(xcb, 0, connection.Root(), property, XCB_ATOM_CARDINAL, 0, 1024),
        nullptr);
    std::vector<uint32_t> values;
    if (reply != nullptr && reply->format == 32) {
        auto* data = static_cast<const uint32_t*>(xcb_get_property_value(reply));
        values.assign(data, data + xcb_get_property_value_length(reply) / 4);
    }
    std::free(reply);
    return values;
}

int Clamp(int position, int size, int start, int length) {
    if (size >= length)
        return start;
    return std::clamp(position, start, start + length - size);
}

} // namespace

std::vector<PixelRect> QueryMonitors(const X11Connection& connection) {
    std::vector<PixelRect> monitors;
    if (connection.hasRandR) {
        xcb_randr_get_monitors_reply_t* reply = xcb_randr_get_monitors_reply(
            connection.get(), xcb_randr_get_monitors(connection.get(), connection.Root(), 1),
            nullptr);
        if (reply != nullptr) {
            auto it = xcb_randr_get_monitors_monitors_iterator(reply);
            for (; it.rem > 0; xcb_randr_monitor_info_next(&it)) {
                PixelRect rect{it.data->x, it.data->y, it.data->width, it.data->height};
                if (it.data->primary)
                    monitors.insert(monitors.begin(), rect);
                else
                    monitors.push_back(rect);
            }
            std::free(reply);
        }
    }
    if (monitors.empty())
        monitors.push_back(WholeScreen(connection));
    return monitors;
}

double ChooseScale(const char* gdkScale, const std::string& resources) {
    if (gdkScale != nullptr && *gdkScale != '\0')
        return std::atoi(gdkScale) >= 2 ? 2.0 : 1.0;
    std::istringstream lines(resources);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("Xft.dpi:", 0) != 0)
            continue;
        double dpi = std::atof(line.c_str() + 8);
        return dpi >= 192 ? 2.0 : 1.0;
    }
    return 1.0;
}

std::string ReadResourceDatabase(const X11Connection& connection) {
    return ReadTextProperty(connection.get(), connection.Root(), XCB_ATOM_RESOURCE_MANAGER, false);
}

std::optional<PixelRect> QueryWorkArea(const X11Connection& connection) {
    std::vector<uint32_t> areas = ReadCardinals(connection, connection.atoms._NET_WORKAREA);
    std::vector<uint32_t> desktop =
        ReadCardinals(connection, connection.atoms._NET_CURRENT_DESKTOP);
    // Four values for each desktop.
    size_t index = desktop.empty() ? 0 : desktop.front();
    if (areas.size() < 4 * (index + 1))
        index = 0;
    if (areas.size() < 4)
        return std::nullopt;
    const uint32_t* area = &areas[4 * index];
    return PixelRect{int(area[0]), int(area[1]), int(area[2]), int(area[3])};
}

PixelRect UsablePart(const PixelRect& monitor, const std::optional<PixelRect>& workArea) {
    if (!workArea || OverlapArea(monitor, *workArea) == 0)
        return monitor;
    int left = std::max(monitor.x, workArea->x), top = std::max(monitor.y, workArea->y);
    int right = std::min(monitor.x + monitor.width, workArea->x + workArea->width);
    int bottom = std::min(monitor.y + monitor.height, workArea->y + workArea->height);
    return {left, top, right - left, bottom - top};
}

PixelRect PlaceOnNearestMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors) {
    if (monitors.empty())
        return window;
    for (const PixelRect& monitor : monitors)
        if (OverlapArea(window, monitor) > 0)
            return window;
    const PixelRect* nearest = &monitors.front();
    long best = std::numeric_limits<long>::max();
    for (const PixelRect& monitor : monitors)
        if (long distance = DistanceSquared(window, monitor); distance < best) {
            best = distance;
            nearest = &monitor;
        }
    PixelRect placed = window;
    placed.x = Clamp(window.x, window.width, nearest->x, nearest->width);
    placed.y = Clamp(window.y, window.height, nearest->y, nearest->height);
    return placed;
}

PixelRect KeepWholeOnMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors) {
    if (monitors.empty())
        return window;
    PixelRect monitor = GreatestAreaMonitor(window, monitors);
    PixelRect kept = window;
    kept.x = Clamp(window.x, window.width, monitor.x, monitor.width);
    kept.y = Clamp(window.y, window.height, monitor.y, monitor.height);
    return kept;
}

PixelRect GreatestAreaMonitor(const PixelRect& window, const std::vector<PixelRect>& monitors) {
    if (monitors.empty())
        return window;
    const PixelRect* best = &monitors.front();
    long bestArea = 0;
    for (const PixelRect& monitor : monitors)
        if (long area = OverlapArea(window, monitor); area > bestArea) {
            bestArea = area;
            best = &monitor;
        }
    return *best;
}

} // namespace basalt::x11
