// Classic event records over the event queue. WaitNextEvent dispatches what it takes, as the
// loops do, and returns the events that no handler took and that have a classic form; while
// nothing comes it returns a null event at least once a second.

#include "basalt/toolbox/classic/KeyboardLayout.h"
#include "basalt/toolbox/events/ApplicationTarget.h"
#include "basalt/toolbox/events/EventLoop.h"

#include <algorithm>
#include <cmath>

using namespace basalt::toolbox;

namespace basalt::toolbox {
uint32_t CurrentModifiers();
}

namespace {

EventKindClassic ClassicKind(EventRef event) {
    switch (event->eventClass) {
    case kEventClassMouse:
        return event->kind == kEventMouseDown ? mouseDown
               : event->kind == kEventMouseUp ? mouseUp
                                              : nullEvent;
    case kEventClassKeyboard:
        return event->kind == kEventRawKeyDown     ? keyDown
               : event->kind == kEventRawKeyRepeat ? autoKey
               : event->kind == kEventRawKeyUp     ? keyUp
                                                   : nullEvent;
    case kEventClassWindow:
        return event->kind == kEventWindowActivated || event->kind == kEventWindowDeactivated
                   ? activateEvt
               : event->kind == kEventWindowUpdate || event->kind == kEventWindowDrawContent
                   ? updateEvt
                   : nullEvent;
    default:
        return nullEvent;
    }
}

bool Convertible(EventRef event, EventMask mask) {
    EventKindClassic kind = ClassicKind(event);
    return kind != nullEvent && (mask & (1u << kind)) != 0;
}

void NullRecord(EventRecord* record) {
    *record = {};
    record->what = nullEvent;
    record->when = TickCount();
    record->modifiers = EventModifiers(CurrentModifiers());
}

// Takes (or finds) the first queued event with a classic form in the mask.
bool FindClassic(EventMask mask, EventRecord* record, bool pull) {
    OpaqueEventQueueRef& queue = *GetMainEventQueue();
    EventRef event = nullptr;
    {
        std::lock_guard lock(queue.mutex);
        event = queue.FindLocked([&](EventRef e) { return Convertible(e, mask); }, pull);
        if (event != nullptr && !pull)
            RetainEvent(event);
    }
    if (event == nullptr) {
        if (record != nullptr)
            NullRecord(record);
        return false;
    }
    EventRecord converted{};
    ConvertEventRefToEventRecord(event, &converted);
    ReleaseEvent(event);
    if (record != nullptr)
        *record = converted;
    return true;
}

} // namespace

extern "C" {

Boolean ConvertEventRefToEventRecord(EventRef inEvent, EventRecord* outEvent) {
    if (inEvent == nullptr || outEvent == nullptr)
        return false;
    EventKindClassic kind = ClassicKind(inEvent);
    NullRecord(outEvent);
    if (kind == nullEvent)
        return false;
    outEvent->what = kind;
    outEvent->when = uint32_t(GetEventTime(inEvent) * 60);
    uint32_t modifiers = 0;
    if (GetParam(inEvent, kEventParamKeyModifiers, typeUInt32, &modifiers))
        outEvent->modifiers = EventModifiers(modifiers);
    BGPoint where{};
    if (GetParam(inEvent, kEventParamMouseLocation, typeBTPoint, &where))
        outEvent->where = {int16_t(std::lround(where.y)), int16_t(std::lround(where.x))};
    if (kind == keyDown || kind == keyUp || kind == autoKey) {
        uint32_t code = 0;
        char character = 0;
        GetParam(inEvent, kEventParamKeyCode, typeUInt32, &code);
        GetParam(inEvent, kEventParamKeyMacCharCodes, typeChar, &character);
        outEvent->message = uint8_t(character) | ((code & 0xFF) << 8);
    } else if (kind == activateEvt || kind == updateEvt) {
        WindowRef window = nullptr;
        GetParam(inEvent, kEventParamDirectObject, typeWindowRef, &window);
        outEvent->message = reinterpret_cast<uintptr_t>(window);
        if (inEvent->kind == kEventWindowActivated)
            outEvent->modifiers |= activeFlag;
    }
    return true;
}

Boolean WaitNextEvent(EventMask eventMask, EventRecord* theEvent, uint32_t sleep, RgnHandle) {
    EventTime deadline = GetCurrentEventTime() + std::min<uint32_t>(sleep, 60) / 60.0;
    for (;;) {
        EventTime remaining = std::max(0.0, deadline - GetCurrentEventTime());
        EventRef event = nullptr;
        if (ReceiveNextEvent(0, nullptr, remaining, true, &event) != noErr) {
            if (theEvent != nullptr)
                NullRecord(theEvent);
            return false;
        }
        StatusCode status = SendEventToEventTarget(event, GetEventDispatcherTarget());
        bool wanted = status == eventNotHandledErr && Convertible(event, eventMask);
        if (wanted && theEvent != nullptr)
            ConvertEventRefToEventRecord(event, theEvent);
        ReleaseEvent(event);
        if (wanted)
            return true;
    }
}

Boolean GetNextEvent(EventMask eventMask, EventRecord* theEvent) {
    return FindClassic(eventMask, theEvent, true);
}

Boolean EventAvail(EventMask eventMask, EventRecord* theEvent) {
    return FindClassic(eventMask, theEvent, false);
}

void FlushEvents(EventMask whichMask, EventMask stopMask) {
    OpaqueEventQueueRef& queue = *GetMainEventQueue();
    std::lock_guard lock(queue.mutex);
    bool stopped = false;
    while (EventRef event = queue.FindLocked(
               [&](EventRef e) {
                   if (stopped || Convertible(e, stopMask)) {
                       stopped = true;
                       return false;
                   }
                   return Convertible(e, whichMask);
               },
               true))
        ReleaseEvent(event);
}

uint32_t KeyTranslate(const void*, uint16_t keycode, uint32_t* state) {
    if (state != nullptr)
        *state = 0;
    bool shift = (keycode & shiftKey) != 0;
    return CharacterForKeyCode(keycode & 0x7F, shift);
}

uint32_t GetCurrentKeyModifiers(void) {
    return CurrentModifiers();
}

// Ticks before a held key repeats: 0.4 seconds.
int16_t LMGetKeyRepThresh(void) {
    return 24;
}

} // extern "C"
