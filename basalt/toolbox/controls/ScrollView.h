#pragma once

// A scroll view over one content view, which speaks the "scrl" protocol: asked with "scrl" 1
// it gives its image, view and line sizes and its origin; "scrl" 10 tells it a new origin; it
// sends "scrl" 2 up when its sizes change. The scroll bar shows on the right when the image is
// taller than the view (always, unless auto-hide is on).

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

class ScrollView : public View {
public:
    static constexpr BGFloat kBarWidth = 11;

    ScrollView() : View(kControlKindScrollView) {}
    bool autoHide = true;

    struct Info {
        BGSize image{}, view{}, line{10, 10};
        BGPoint origin{};
    };
    Info Query();
    void ScrollTo(BGPoint origin);
    void ScrollBy(BGFloat dx, BGFloat dy);
    StatusCode GoTo(uint32_t action);

    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
    void FrameChanged() override { Arrange(); }
    StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event) override;
    void Arrange();

private:
    View* Content() const;
    bool BarShown(const Info& info) const;
};

} // namespace basalt::toolbox
