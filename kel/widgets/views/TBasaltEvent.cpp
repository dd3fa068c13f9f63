#include "kel/widgets/views/TBasaltEvent.h"

TBasaltEvent::TBasaltEvent(EventRef event)
    : event(event != nullptr ? RetainEvent(event) : nullptr) {}

TBasaltEvent::TBasaltEvent(EventClass eventClass, EventKind kind) {
    if (CreateEvent(nullptr, eventClass, kind, GetCurrentEventTime(), 0, &event) != noErr)
        event = nullptr;
}

TBasaltEvent::~TBasaltEvent() {
    if (event != nullptr)
        ReleaseEvent(event);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, EventParamType type, size_t size,
                                      void* out) const {
    return GetEventParameter(event, name, type, nullptr, size, nullptr, out);
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, EventParamType type, size_t size,
                                      const void* data) {
    return SetEventParameter(event, name, type, size, data);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, bool* out) const {
    Boolean value = false;
    StatusCode status = GetParameter(name, typeBoolean, sizeof value, &value);
    if (status == noErr)
        *out = value != 0;
    return status;
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, bool value) {
    Boolean stored = value;
    return SetParameter(name, typeBoolean, sizeof stored, &stored);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, BGPoint* out) const {
    return GetParameter(name, typeBTPoint, sizeof *out, out);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, BGRect* out) const {
    return GetParameter(name, typeBTRect, sizeof *out, out);
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, const BGRect& value) {
    return SetParameter(name, typeBTRect, sizeof value, &value);
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, const BGSize& value) {
    return SetParameter(name, typeBTSize, sizeof value, &value);
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, const BGPoint& value) {
    return SetParameter(name, typeBTPoint, sizeof value, &value);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, RgnHandle* out) const {
    return GetParameter(name, typeQDRgnHandle, sizeof *out, out);
}

// Modifiers, features and the like travel as 32-bit "magn" values.
StatusCode TBasaltEvent::GetParameter(EventParamName name, unsigned long* out) const {
    uint32_t value = 0;
    StatusCode status = GetParameter(name, typeUInt32, sizeof value, &value);
    if (status == noErr)
        *out = value;
    return status;
}

StatusCode TBasaltEvent::SetParameter(EventParamName name, unsigned long value) {
    auto stored = uint32_t(value);
    return SetParameter(name, typeUInt32, sizeof stored, &stored);
}

StatusCode TBasaltEvent::GetParameter(EventParamName name, BTCommand* out) const {
    return GetParameter(name, typeBTCommand, sizeof *out, out);
}
