#pragma once

// A control of any kind at a frame, optionally inside another, for toolbox tests.

#include <basalt/BasaltToolbox.h>

namespace keltest {

inline ControlRef MakeControl(WindowRef window, OSType kind, BGRect frame,
                              ControlRef parent = nullptr) {
    Rect bounds = {0, 0, 1, 1};
    ControlRef control = nullptr;
    BTCreateControl(window, &bounds, kind, nullptr, &control);
    if (parent != nullptr)
        BTViewAddSubview(parent, control);
    BTViewSetFrame(control, &frame);
    return control;
}

} // namespace keltest
