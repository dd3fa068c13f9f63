#include "basalt/backend/x11/X11Scroll.h"

#include <cmath>

namespace basalt::x11 {

void ScrollValuators::SetAxes(uint16_t device, const std::vector<ScrollAxis>& axes) {
    std::vector<Axis>& known = devices_[device];
    known.clear();
    for (const ScrollAxis& axis : axes)
        if (axis.increment != 0)
            known.push_back({axis, std::nullopt, 0});
}

void ScrollValuators::Reset(uint16_t device) {
    auto it = devices_.find(device);
    if (it == devices_.end())
        return;
    for (Axis& axis : it->second) {
        axis.last.reset();
        axis.pending = 0;
    }
}

bool ScrollValuators::Scrolls(uint16_t device) const {
    auto it = devices_.find(device);
    return it != devices_.end() && !it->second.empty();
}

ScrollLines ScrollValuators::Motion(uint16_t device, const std::map<uint16_t, double>& values) {
    ScrollLines lines;
    auto it = devices_.find(device);
    if (it == devices_.end())
        return lines;
    for (Axis& axis : it->second) {
        auto value = values.find(axis.axis.number);
        if (value == values.end())
            continue;
        double exact = axis.last ? (value->second - *axis.last) / axis.axis.increment : 0;
        axis.last = value->second;
        axis.pending += exact;
        double whole = std::trunc(axis.pending);
        axis.pending -= whole;
        // The server's totals grow scrolling down and to the right.
        (axis.axis.horizontal ? lines.horizontal : lines.vertical) -= int32_t(whole);
        (axis.axis.horizontal ? lines.exactHorizontal : lines.exactVertical) -= exact;
    }
    return lines;
}

} // namespace basalt::x11
