#pragma once

// Tracking areas: rectangles of a view that report the mouse entering ("cntl" 23) and leaving
// ("cntl" 24), with the area in "ctra".

#include "basalt/toolbox/views/View.h"

struct OpaqueTrackingAreaRef {
    std::weak_ptr<basalt::toolbox::View> view;
    BGRect rect{};
    // An area made without a shape covers the view's bounds, whatever they become.
    bool wholeView = false;
    BTViewTrackingAreaID id = 0;
    bool inside = false;
};

struct OpaqueShapeRef {
    BGRect rect;
};

namespace basalt::toolbox {

// The mouse is at a point of the window's content: send the enter and exit events it causes.
void UpdateTrackingAreas(View& root, BGPoint local);

} // namespace basalt::toolbox
