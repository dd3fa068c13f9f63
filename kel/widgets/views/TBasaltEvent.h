#pragma once

// A counted hold on one toolbox event, with typed access to its parameters: each overload fixes
// the parameter type by its argument's type, so the views read and write events without
// repeating type codes and sizes.

#include <basalt/BasaltToolbox.h>

class TBasaltEvent {
public:
    // Retains the event.
    explicit TBasaltEvent(EventRef event);
    // A new event of that class and kind, stamped with the current event time; Get() is null if
    // none could be made.
    TBasaltEvent(EventClass eventClass, EventKind kind);
    TBasaltEvent(const TBasaltEvent&) = delete;
    TBasaltEvent& operator=(const TBasaltEvent&) = delete;
    virtual ~TBasaltEvent();

    EventRef Get() const { return event; }
    EventClass Class() const { return GetEventClass(event); }
    EventKind Kind() const { return GetEventKind(event); }

    StatusCode GetParameter(EventParamName name, EventParamType type, size_t size, void* out) const;
    StatusCode SetParameter(EventParamName name, EventParamType type, size_t size,
                            const void* data);
    StatusCode GetParameter(EventParamName name, bool* out) const;
    StatusCode SetParameter(EventParamName name, bool value);
    StatusCode GetParameter(EventParamName name, BGPoint* out) const;
    StatusCode GetParameter(EventParamName name, BGRect* out) const;
    StatusCode SetParameter(EventParamName name, const BGRect& value);
    StatusCode SetParameter(EventParamName name, const BGSize& value);
    StatusCode SetParameter(EventParamName name, const BGPoint& value);
    StatusCode GetParameter(EventParamName name, RgnHandle* out) const;
    StatusCode GetParameter(EventParamName name, unsigned long* out) const;
    StatusCode SetParameter(EventParamName name, unsigned long value);
    StatusCode GetParameter(EventParamName name, BTCommand* out) const;

private:
    EventRef event = nullptr;
};
