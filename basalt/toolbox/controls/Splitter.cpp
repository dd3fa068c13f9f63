#include "basalt/toolbox/controls/Splitter.h"

#include "basalt/toolbox/controls/ControlDrawing.h"

#include <algorithm>

namespace basalt::toolbox {

Splitter::Splitter() : View(kControlKindSplitter) {
    SetMaximum(0x7FFF);
    View::SetValue(120);
}

void Splitter::SetValue(int32_t value) {
    int32_t before = Value();
    View::SetValue(value);
    if (Value() == before)
        return;
    Arrange();
    EventHolder moved(kEventClassSplitter, kEventSplitterMoved);
    ControlRef ref = Ref();
    SetParam(moved.get(), kEventParamDirectObject, typeControlRef, ref);
    SendEventToEventTarget(moved.get(), Target());
}

void Splitter::Arrange() {
    BGRect bounds = Bounds();
    const auto& children = Subviews();
    double extent = vertical ? bounds.size.width : bounds.size.height;
    double position = std::clamp<double>(Value(), 0, std::max(0.0, extent - kThickness));
    if (children.size() >= 1)
        children[0]->SetFrame(vertical ? BGRectMake(0, 0, position, bounds.size.height)
                                       : BGRectMake(0, 0, bounds.size.width, position));
    if (children.size() >= 2) {
        double start = position + kThickness;
        children[1]->SetFrame(vertical ? BGRectMake(start, 0, extent - start, bounds.size.height)
                                       : BGRectMake(0, start, bounds.size.width, extent - start));
    }
    SetNeedsDisplay();
}

void Splitter::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    BGRect divider = vertical ? BGRectMake(Value(), bounds.origin.y, kThickness, bounds.size.height)
                              : BGRectMake(bounds.origin.x, Value(), bounds.size.width, kThickness);
    BTThemeDrawSeparator(&divider, ThemeState(*this), context);
}

ControlPartCode Splitter::HitTest(BGPoint local) {
    double at = vertical ? local.x : local.y;
    return at >= Value() - 2 && at <= Value() + kThickness + 2 ? ControlPartCode(kBTSplitterPart)
                                                               : ControlPartCode(kControlNoPart);
}

uint32_t Splitter::Cursor(BGPoint local) {
    if (HitTest(local) != kBTSplitterPart)
        return kThemeArrowCursor;
    return vertical ? uint32_t(kThemeResizeLeftRightCursor) : uint32_t(kThemeResizeUpDownCursor);
}

bool Splitter::Drag(BGPoint local) {
    SetValue(int32_t((vertical ? local.x : local.y) - kThickness / 2));
    return true;
}

} // namespace basalt::toolbox
