#pragma once

// One scroll bar of the control, worked out when it is needed: the track it lies in, how far
// the content reaches and how much of it is seen, and the scroll position. Drawing and the
// mouse read the thumb from the same numbers, so the thumb is hit where it is drawn.

#include <basalt/BasaltGraphics.h>

namespace basalt::gridbrowser {

struct ScrollBar {
    enum class Part { None, Before, Thumb, After };

    BGRect track{};
    BGFloat content = 0;
    BGFloat visible = 0;
    BGFloat position = 0;

    bool Vertical() const { return track.size.height > track.size.width; }
    bool Needed() const { return content > visible; }
    BGFloat ThumbLength() const;
    BGFloat ThumbStart() const; // from the track's start
    Part PartAt(BGPoint point) const;
    // The position for a thumb dragged by `moved` points from where it was at `origin`.
    BGFloat PositionAfterDrag(BGFloat origin, BGFloat moved) const;
    void Draw(BGContextRef context, BTThemeDrawState state) const;

private:
    BGFloat TrackLength() const { return Vertical() ? track.size.height : track.size.width; }
};

} // namespace basalt::gridbrowser
