#pragma once

// A splitter: two subviews side by side (or one above the other) with a divider between them.
// The value is the divider's position in the splitter's bounds; dragging it moves the divider
// and sends "spli" 1 to the splitter, which propagates.

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

class Splitter : public View {
public:
    static constexpr BGFloat kThickness = 5;

    Splitter();
    bool vertical = true; // the divider runs top to bottom
    void SetValue(int32_t value) override;
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint local) override;
    uint32_t Cursor(BGPoint local) override;
    bool Drag(BGPoint local) override;
    void FrameChanged() override { Arrange(); }
    void Arrange();
};

} // namespace basalt::toolbox
