#include "basalt/gridbrowser/ScrollBar.h"

#include <algorithm>

namespace basalt::gridbrowser {
namespace {

constexpr BGFloat kShortestThumb = 20;

} // namespace

BGFloat ScrollBar::ThumbLength() const {
    if (!Needed())
        return TrackLength();
    return std::min(TrackLength(),
                    std::max<BGFloat>(kShortestThumb, TrackLength() * visible / content));
}

BGFloat ScrollBar::ThumbStart() const {
    if (!Needed())
        return 0;
    BGFloat fraction = std::clamp<BGFloat>(position / (content - visible), 0, 1);
    return (TrackLength() - ThumbLength()) * fraction;
}

ScrollBar::Part ScrollBar::PartAt(BGPoint point) const {
    if (!Needed() || !BGRectContainsPoint(track, point))
        return Part::None;
    BGFloat along = Vertical() ? point.y - track.origin.y : point.x - track.origin.x;
    if (along < ThumbStart())
        return Part::Before;
    return along < ThumbStart() + ThumbLength() ? Part::Thumb : Part::After;
}

BGFloat ScrollBar::PositionAfterDrag(BGFloat origin, BGFloat moved) const {
    BGFloat room = std::max<BGFloat>(1, TrackLength() - ThumbLength());
    return origin + moved * (content - visible) / room;
}

void ScrollBar::Draw(BGContextRef context, BTThemeDrawState state) const {
    if (Needed())
        BTThemeDrawScrollBar(&track, ThumbStart(), ThumbLength(), state, context);
}

} // namespace basalt::gridbrowser
