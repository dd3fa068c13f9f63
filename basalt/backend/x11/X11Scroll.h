#pragma once

// Smooth scrolling from XInput2 scroll valuators (touchpads, free-spinning wheels): each
// motion event carries an axis's running total, and one "increment" of it is one line of the
// toolbox's wheel. Each event says how far it scrolled exactly, for views that scroll by
// fractions of a line, and in whole lines for the rest: there fractions add up until they make
// a whole line, so slow strokes scroll too.
// Runs on the backend's event thread.

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace basalt::x11 {

struct ScrollAxis {
    uint16_t number = 0; // the valuator
    double increment = 1;
    bool horizontal = false;
};

// Lines to scroll, positive up and to the left, as the toolbox's wheel counts: whole, and
// exactly.
struct ScrollLines {
    int32_t vertical = 0;
    int32_t horizontal = 0;
    double exactVertical = 0;
    double exactHorizontal = 0;
    bool operator==(const ScrollLines&) const = default;
};

class ScrollValuators {
public:
    // The device's scroll axes, as it reports them now; forgets where they were.
    void SetAxes(uint16_t device, const std::vector<ScrollAxis>& axes);
    // The totals jump while the pointer is away from our windows: the next values only say
    // where counting starts again.
    void Reset(uint16_t device);
    bool Scrolls(uint16_t device) const;
    // The valuators an event carries (number to value); what they scroll.
    ScrollLines Motion(uint16_t device, const std::map<uint16_t, double>& values);

private:
    struct Axis {
        ScrollAxis axis;
        std::optional<double> last;
        double pending = 0; // lines not yet delivered, in the server's direction
    };
    std::map<uint16_t, std::vector<Axis>> devices_;
};

} // namespace basalt::x11
