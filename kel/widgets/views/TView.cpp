#include "kel/widgets/views/TView.h"

#include <cmath>
#include <iterator>

namespace {

constexpr EventTypeSpec kViewEvents[] = {
    {kEventClassCommand, kEventCommandProcess},
    {kEventClassCommand, kEventCommandUpdateStatus},
    {kEventClassControl, kEventControlGetFeatures},
    {kEventClassControl, kEventControlDraw},
    {kEventClassControl, kEventControlHitTest},
    {kEventClassControl, kEventControlGetPartRegion},
    {kEventClassControl, kEventControlGetData},
    {kEventClassControl, kEventControlSetData},
    {kEventClassControl, kEventControlGetOptimalBounds},
    {kEventClassControl, kEventControlBoundsChanged},
    {kEventClassControl, kEventControlTrack},
    {kEventClassControl, kEventControlGetSizeConstraints},
    {kEventClassControl, kEventControlHit},
    {kEventClassControl, kEventControlHiliteChanged},
    {kEventClassControl, kEventControlActivate},
    {kEventClassControl, kEventControlDeactivate},
    {kEventClassControl, kEventControlValueFieldChanged},
    {kEventClassControl, kEventControlTitleChanged},
    {kEventClassControl, kEventControlEnabledStateChanged},
    {kEventClassControl, kEventControlOwningWindowChanged},
    {kEventClassControl, kEventControlVisibilityChanged},
};

constexpr EventTypeSpec kFocusEvents[] = {
    {kEventClassControl, kEventControlSetFocusPart},
    {kEventClassTextInput, kEventTextInputUnicodeForKeyEvent},
};

constexpr EventTypeSpec kTrackingAreaEvents[] = {
    {kEventClassControl, kEventControlTrackingAreaEntered},
    {kEventClassControl, kEventControlTrackingAreaExited},
};

constexpr uint32_t kKindTag = 0x6B696E64; // "kind"

short PartOf(const TBasaltEvent& event, EventParamName name) {
    ControlPartCode part = kControlNoPart;
    event.GetParameter(name, typeControlPartCode, sizeof part, &part);
    return part;
}

} // namespace

TView::TView(ControlRef control) : TObject(control) {
    InstallEventHandler(GetControlEventTarget(control), ViewEventHandler, std::size(kViewEvents),
                        kViewEvents, this, &handler);
}

TView::~TView() {
    if (handler != nullptr)
        RemoveEventHandler(handler);
}

StatusCode TView::ActivateInterface(Interface which) {
    switch (which) {
    case kKeyboardFocusInterface:
        return AddEventTypesToHandler(handler, std::size(kFocusEvents), kFocusEvents);
    case kTrackingAreaInterface:
        return AddEventTypesToHandler(handler, std::size(kTrackingAreaEvents), kTrackingAreaEvents);
    }
    return paramErr;
}

void TView::Invalidate() const {
    BTViewSetNeedsDisplay(GetViewRef(), true);
}

BGRect TView::Frame() const {
    BGRect frame{};
    BTViewGetFrame(GetViewRef(), &frame);
    return frame;
}

BGRect TView::Bounds() const {
    BGRect bounds{};
    BTViewGetBounds(GetViewRef(), &bounds);
    return bounds;
}

void TView::SetRegionToBounds(RgnHandle region, int16_t outset) const {
    BGRect bounds = Bounds();
    Rect whole{int16_t(std::floor(bounds.origin.y) - outset),
               int16_t(std::floor(bounds.origin.x) - outset),
               int16_t(std::ceil(BGRectGetMaxY(bounds)) + outset),
               int16_t(std::ceil(BGRectGetMaxX(bounds)) + outset)};
    RectRgn(region, &whole);
}

void TView::ChangeAutoInvalidateFlags(uint32_t set, uint32_t clear) {
    autoInvalidateFlags = (autoInvalidateFlags | set) & ~clear;
}

StatusCode TView::GetData(unsigned long tag, short, long size, long* outSize, void* buffer) {
    if (tag != kKindTag)
        return eventNotHandledErr;
    *outSize = sizeof(ControlKind);
    if (buffer == nullptr)
        return noErr;
    if (size != long(sizeof(ControlKind)))
        return -30591; // the buffer is of the wrong size
    uint64_t kind = GetKind();
    ControlKind value = {OSType(kind >> 32), OSType(kind)};
    *static_cast<ControlKind*>(buffer) = value;
    return noErr;
}

StatusCode TView::ViewEventHandler(EventHandlerCallRef, EventRef ref, void* data) {
    TBasaltEvent event(ref);
    return static_cast<TView*>(data)->HandleEvent(event);
}

StatusCode TView::HandleEvent(TBasaltEvent& event) {
    switch (event.Class()) {
    case kEventClassTextInput:
        return TextInput(event);
    case kEventClassCommand:
        return HandleCommandEvent(event);
    case kEventClassControl:
        return HandleControlEvent(event);
    default:
        return eventNotHandledErr;
    }
}

StatusCode TView::HandleCommandEvent(TBasaltEvent& event) {
    BTCommand command{};
    if (StatusCode status = event.GetParameter(kEventParamDirectObject, &command))
        return status;
    if (event.Kind() == kEventCommandProcess)
        return ProcessCommand(command);
    if (event.Kind() == kEventCommandUpdateStatus)
        return UpdateCommandStatus(command);
    return eventNotHandledErr;
}

StatusCode TView::HandleControlEvent(TBasaltEvent& event) {
    switch (event.Kind()) {
    case kEventControlHit: {
        unsigned long modifiers = 0;
        event.GetParameter(kEventParamKeyModifiers, &modifiers);
        return ControlHit(PartOf(event, kEventParamControlPart), modifiers);
    }
    case kEventControlHitTest: {
        BGPoint point{};
        event.GetParameter(kEventParamMouseLocation, &point);
        ControlPartCode part = HitTest(point);
        event.SetParameter(kEventParamControlPart, typeControlPartCode, sizeof part, &part);
        return noErr;
    }
    case kEventControlDraw: {
        RgnHandle limit = nullptr;
        BGContextRef context = nullptr;
        event.GetParameter(kEventParamRgnHandle, &limit);
        event.GetParameter(kEventParamCGContextRef, typeBGContextRef, sizeof context, &context);
        Draw(limit, context);
        return noErr;
    }
    case kEventControlTrack: {
        short part = kControlNoPart;
        StatusCode status = Track(event, &part);
        if (status == noErr)
            event.SetParameter(kEventParamControlPart, typeControlPartCode, sizeof part, &part);
        return status;
    }
    case kEventControlGetPartRegion: {
        RgnHandle region = nullptr;
        event.GetParameter(kEventParamControlRegion, &region);
        return GetRegion(PartOf(event, kEventParamControlPart), region);
    }
    case kEventControlSetData:
    case kEventControlGetData:
        return HandleDataEvent(event);
    case kEventControlGetSizeConstraints:
    case kEventControlGetOptimalBounds:
    case kEventControlGetFeatures:
        return HandleSizeEvent(event);
    case kEventControlSetFocusPart:
        return HandleFocusEvent(event);
    case kEventControlTrackingAreaEntered:
    case kEventControlTrackingAreaExited:
        return HandleTrackingAreaEvent(event);
    default:
        return HandleStateEvent(event);
    }
}

StatusCode TView::InvalidateIf(uint32_t flag) const {
    if (autoInvalidateFlags & flag)
        Invalidate();
    return noErr;
}

StatusCode TView::HandleStateEvent(TBasaltEvent& event) {
    switch (event.Kind()) {
    case kEventControlActivate:
    case kEventControlDeactivate:
        ActiveStateChanged();
        return InvalidateIf(kInvalidateOnActivate);
    case kEventControlValueFieldChanged:
        ValueChanged();
        return InvalidateIf(kInvalidateOnValue);
    case kEventControlTitleChanged:
        TitleChanged();
        return InvalidateIf(kInvalidateOnTitle);
    case kEventControlEnabledStateChanged:
        EnabledStateChanged();
        return InvalidateIf(kInvalidateOnEnable);
    case kEventControlHiliteChanged:
        HiliteChanged(PartOf(event, kEventParamControlPreviousPart),
                      PartOf(event, kEventParamControlCurrentPart));
        return InvalidateIf(kInvalidateOnHilite);
    case kEventControlVisibilityChanged:
        VisibilityChanged();
        return noErr;
    case kEventControlBoundsChanged: {
        unsigned long attributes = 0;
        BGRect original{}, current{};
        event.GetParameter(kEventParamAttributes, &attributes);
        event.GetParameter(kEventParamOriginalBounds, &original);
        event.GetParameter(kEventParamCurrentBounds, &current);
        BoundsChanged(attributes, original, current);
        return noErr;
    }
    case kEventControlOwningWindowChanged: {
        WindowRef oldWindow = nullptr, newWindow = nullptr;
        event.GetParameter(kEventParamControlOriginalOwningWindow, typeWindowRef, sizeof oldWindow,
                           &oldWindow);
        event.GetParameter(kEventParamControlCurrentOwningWindow, typeWindowRef, sizeof newWindow,
                           &newWindow);
        OwningWindowChanged(oldWindow, newWindow);
        return noErr;
    }
    default:
        return eventNotHandledErr;
    }
}

StatusCode TView::HandleDataEvent(TBasaltEvent& event) {
    uint32_t tag = 0;
    void* buffer = nullptr;
    int32_t size = 0;
    event.GetParameter(kEventParamControlDataTag, typeEnumeration, sizeof tag, &tag);
    event.GetParameter(kEventParamControlDataBuffer, typeVoidPtr, sizeof buffer, &buffer);
    event.GetParameter(kEventParamControlDataBufferSize, typeSInt32, sizeof size, &size);
    short part = PartOf(event, kEventParamControlPart);
    if (event.Kind() == kEventControlSetData)
        return SetData(tag, part, size, buffer);
    long outSize = 0;
    StatusCode status = GetData(tag, part, size, &outSize, buffer);
    if (status == noErr) {
        auto stored = int32_t(outSize);
        event.SetParameter(kEventParamControlDataBufferSize, typeSInt32, sizeof stored, &stored);
    }
    return status;
}

StatusCode TView::HandleSizeEvent(TBasaltEvent& event) {
    switch (event.Kind()) {
    case kEventControlGetFeatures:
        return event.SetParameter(kEventParamControlFeatures, (unsigned long)GetBehaviors());
    case kEventControlGetSizeConstraints: {
        BGSize minimum{}, maximum{};
        StatusCode status = GetSizeConstraints(&minimum, &maximum);
        if (status == noErr) {
            event.SetParameter(kEventParamMinimumSize, minimum);
            event.SetParameter(kEventParamMaximumSize, maximum);
        }
        return status;
    }
    default: {
        BGSize size{};
        float baseline = 0;
        StatusCode status = GetOptimalSizeSelf(&size, &baseline);
        if (status != noErr)
            return status;
        BGRect frame = Frame();
        BGRect bounds = BGRectMake(frame.origin.x, frame.origin.y, std::trunc(size.width),
                                   std::trunc(size.height));
        event.SetParameter(kEventParamControlOptimalBounds, bounds);
        auto offset = int16_t(baseline);
        event.SetParameter(kEventParamControlOptimalBaselineOffset, typeSInt16, sizeof offset,
                           &offset);
        return noErr;
    }
    }
}

StatusCode TView::HandleFocusEvent(TBasaltEvent& event) {
    bool everywhere = false;
    event.GetParameter(kEventParamControlFocusEverywhere, &everywhere);
    short part = kControlNoPart;
    StatusCode status = SetFocusPart(PartOf(event, kEventParamControlPart), everywhere, &part);
    if (status == noErr)
        event.SetParameter(kEventParamControlPart, typeControlPartCode, sizeof part, &part);
    return status;
}

StatusCode TView::HandleTrackingAreaEvent(TBasaltEvent& event) {
    BTViewTrackingAreaRef area = nullptr;
    StatusCode status =
        event.GetParameter(kEventParamTrackingArea, typeTrackingAreaRef, sizeof area, &area);
    if (status != noErr)
        return status;
    if (event.Kind() == kEventControlTrackingAreaEntered)
        TrackingAreaEntered(area);
    else
        TrackingAreaExited(area);
    return noErr;
}
