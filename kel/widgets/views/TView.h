#pragma once

// A view of one of the library's own classes. Everything the toolbox does to the view arrives as
// an event; TView's one handler turns each into a virtual operation with typed arguments. A
// status of -9874 (the default of most operations) leaves the event to the toolbox's own
// handling. Some events are only listened for once a subclass activates their group.
//
// Redrawing: the auto-invalidate flags name the state changes after which the view is marked
// for redraw without the subclass doing anything.

#include "kel/widgets/views/TObject.h"

#include <cstdint>

// A view's signature and kind as one value, each from its four characters.
constexpr uint64_t ViewKind(const char (&signature)[5], const char (&kind)[5]) {
    auto code = [](const char(&c)[5]) {
        return uint64_t(uint8_t(c[0])) << 24 | uint64_t(uint8_t(c[1])) << 16 |
               uint64_t(uint8_t(c[2])) << 8 | uint64_t(uint8_t(c[3]));
    };
    return code(signature) << 32 | code(kind);
}

// Registers the view class T (with its ClassID) once per process; later calls do nothing.
template <class T>
StatusCode RegisterViewClassOnce() {
    static const StatusCode registered = [] {
        TObject::RegisterSubclass(T::ClassID(), BCSTR(kBTViewClassID), TObject::ConstructAs<T>);
        return noErr;
    }();
    return registered;
}

class TView : public TObject {
public:
    enum Interface { kKeyboardFocusInterface = 2, kTrackingAreaInterface = 3 };
    enum AutoInvalidate : uint32_t {
        kInvalidateOnActivate = 1,
        kInvalidateOnHilite = 2,
        kInvalidateOnEnable = 4,
        kInvalidateOnValue = 8,
        kInvalidateOnTitle = 16,
    };

    explicit TView(ControlRef control);
    ~TView() override;

    // The four-character signature and kind, as ViewKind makes them.
    virtual uint64_t GetKind() = 0;
    virtual uint32_t GetBehaviors() { return 0x20040; }
    virtual void ActiveStateChanged() {}
    virtual void BoundsChanged(unsigned long, const BGRect&, const BGRect&) {}
    virtual void EnabledStateChanged() {}
    virtual void HiliteChanged(short, short) {}
    virtual void OwningWindowChanged(WindowRef, WindowRef) {}
    virtual void VisibilityChanged() {}
    virtual void TitleChanged() {}
    virtual void ValueChanged() {}
    virtual StatusCode ControlHit(short, unsigned long) { return eventNotHandledErr; }
    virtual void Draw(RgnHandle, BGContextRef) {}
    virtual StatusCode GetData(unsigned long tag, short part, long size, long* outSize,
                               void* buffer);
    virtual StatusCode GetRegion(short, RgnHandle) { return eventNotHandledErr; }
    virtual short HitTest(const BGPoint&) { return kControlNoPart; }
    virtual StatusCode SetData(unsigned long, short, long, const void*) {
        return eventNotHandledErr;
    }
    virtual StatusCode SetFocusPart(short, bool, short*) { return eventNotHandledErr; }
    virtual StatusCode TextInput(TBasaltEvent&) { return eventNotHandledErr; }
    virtual StatusCode Track(TBasaltEvent&, short*) { return eventNotHandledErr; }
    virtual StatusCode GetSizeConstraints(BGSize*, BGSize*) { return eventNotHandledErr; }
    virtual StatusCode GetOptimalSizeSelf(BGSize*, float*) { return eventNotHandledErr; }
    virtual void TrackingAreaEntered(BTViewTrackingAreaRef) {}
    virtual void TrackingAreaExited(BTViewTrackingAreaRef) {}
    virtual StatusCode ProcessCommand(const BTCommand&) { return eventNotHandledErr; }
    virtual StatusCode UpdateCommandStatus(const BTCommand&) { return eventNotHandledErr; }
    StatusCode ActivateInterface(Interface which);

    ControlRef GetViewRef() const { return GetObjectRef(); }
    EventTargetRef GetEventTarget() const { return GetControlEventTarget(GetViewRef()); }
    void Invalidate() const;
    BGRect Frame() const;
    BGRect Bounds() const;
    bool IsEnabled() const { return IsControlEnabled(GetViewRef()); }
    bool IsActive() const { return IsControlActive(GetViewRef()); }
    void ChangeAutoInvalidateFlags(uint32_t set, uint32_t clear);
    // The bounds as a whole-number region, grown by outset on each side.
    void SetRegionToBounds(RgnHandle region, int16_t outset) const;

private:
    static StatusCode ViewEventHandler(EventHandlerCallRef call, EventRef event, void* data);
    StatusCode HandleEvent(TBasaltEvent& event);
    StatusCode HandleCommandEvent(TBasaltEvent& event);
    StatusCode HandleControlEvent(TBasaltEvent& event);
    StatusCode HandleStateEvent(TBasaltEvent& event);
    StatusCode HandleDataEvent(TBasaltEvent& event);
    StatusCode HandleSizeEvent(TBasaltEvent& event);
    StatusCode HandleFocusEvent(TBasaltEvent& event);
    StatusCode HandleTrackingAreaEvent(TBasaltEvent& event);
    StatusCode InvalidateIf(uint32_t flag) const;

    EventHandlerRef handler = nullptr;
    uint32_t autoInvalidateFlags = 0;
};
