#include "basalt/toolbox/events/Event.h"

#include <algorithm>
#include <cstring>
#include <ctime>

const OpaqueEventRef::Parameter* OpaqueEventRef::Find(EventParamName name) const {
    for (const Parameter& parameter : parameters)
        if (parameter.name == name)
            return &parameter;
    return nullptr;
}

namespace basalt::toolbox {

EventHolder::EventHolder(EventClass eventClass, EventKind kind) {
    CreateEvent(nullptr, eventClass, kind, GetCurrentEventTime(), 0, &event_);
}

namespace {

bool IsIntegerType(EventParamType type) {
    return type == typeSInt16 || type == typeSInt32 || type == typeUInt32 ||
           type == typeControlPartCode || type == typeEnumeration ||
           type == typeClickActivationResult || type == typeMouseButton;
}

// Reads a stored integer of any width; signed types are sign-extended.
int64_t ReadInteger(const OpaqueEventRef::Parameter& parameter) {
    switch (parameter.bytes.size()) {
    case 1:
        return parameter.bytes[0];
    case 2: {
        int16_t value;
        std::memcpy(&value, parameter.bytes.data(), 2);
        return value;
    }
    case 4: {
        int32_t value;
        std::memcpy(&value, parameter.bytes.data(), 4);
        return parameter.type == typeUInt32 ? int64_t(uint32_t(value)) : int64_t(value);
    }
    case 8: {
        int64_t value;
        std::memcpy(&value, parameter.bytes.data(), 8);
        return value;
    }
    default:
        return 0;
    }
}

StatusCode ConvertInteger(const OpaqueEventRef::Parameter& parameter, size_t bufferSize,
                          size_t* outSize, void* out) {
    int64_t value = ReadInteger(parameter);
    size_t size = std::min<size_t>(bufferSize, 8);
    if (size != 1 && size != 2 && size != 4 && size != 8)
        return errEventTypeMismatch;
    if (out != nullptr) {
        if (size == 1)
            *static_cast<int8_t*>(out) = int8_t(value);
        else if (size == 2)
            *static_cast<int16_t*>(out) = int16_t(value);
        else if (size == 4)
            *static_cast<int32_t*>(out) = int32_t(value);
        else
            *static_cast<int64_t*>(out) = value;
    }
    if (outSize != nullptr)
        *outSize = size;
    return noErr;
}

} // namespace
} // namespace basalt::toolbox

using namespace basalt::toolbox;

extern "C" {

StatusCode CreateEvent(BCAllocatorRef, EventClass inClassID, EventKind inKind, EventTime inWhen,
                       EventAttributes, EventRef* outEvent) {
    if (outEvent == nullptr)
        return paramErr;
    auto* event = new OpaqueEventRef;
    event->eventClass = inClassID;
    event->kind = inKind;
    event->time = inWhen != 0 ? inWhen : GetCurrentEventTime();
    *outEvent = event;
    return noErr;
}

EventRef CopyEvent(EventRef inOther) {
    if (inOther == nullptr)
        return nullptr;
    auto* event = new OpaqueEventRef;
    event->eventClass = inOther->eventClass;
    event->kind = inOther->kind;
    event->time = inOther->time;
    event->parameters = inOther->parameters;
    return event;
}

EventRef RetainEvent(EventRef inEvent) {
    if (inEvent != nullptr)
        inEvent->count.fetch_add(1, std::memory_order_relaxed);
    return inEvent;
}

void ReleaseEvent(EventRef inEvent) {
    if (inEvent != nullptr && inEvent->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete inEvent;
}

long GetEventRetainCount(EventRef inEvent) {
    return inEvent != nullptr ? inEvent->count.load() : 0;
}

EventClass GetEventClass(EventRef inEvent) {
    return inEvent != nullptr ? inEvent->eventClass : 0;
}
EventKind GetEventKind(EventRef inEvent) {
    return inEvent != nullptr ? inEvent->kind : 0;
}
EventTime GetEventTime(EventRef inEvent) {
    return inEvent != nullptr ? inEvent->time : 0;
}

StatusCode SetEventTime(EventRef inEvent, EventTime inTime) {
    if (inEvent == nullptr)
        return paramErr;
    inEvent->time = inTime;
    return noErr;
}

EventTime GetCurrentEventTime(void) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

uint32_t TickCount(void) {
    return uint32_t(GetCurrentEventTime() * 60.0);
}

StatusCode SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType,
                             size_t inSize, const void* inDataPtr) {
    if (inEvent == nullptr || (inDataPtr == nullptr && inSize != 0))
        return paramErr;
    auto* bytes = static_cast<const uint8_t*>(inDataPtr);
    OpaqueEventRef::Parameter parameter{inName, inType, {bytes, bytes + inSize}};
    for (auto& existing : inEvent->parameters)
        if (existing.name == inName) {
            existing = std::move(parameter);
            return noErr;
        }
    inEvent->parameters.push_back(std::move(parameter));
    return noErr;
}

StatusCode GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                             EventParamType* outActualType, size_t inBufferSize,
                             size_t* outActualSize, void* outData) {
    if (inEvent == nullptr)
        return paramErr;
    const OpaqueEventRef::Parameter* parameter = inEvent->Find(inName);
    if (parameter == nullptr)
        return eventParameterNotFoundErr;
    if (inDesiredType != typeWildCard && inDesiredType != parameter->type) {
        if (!IsIntegerType(inDesiredType) || !IsIntegerType(parameter->type))
            return errEventTypeMismatch;
        if (outActualType != nullptr)
            *outActualType = inDesiredType;
        return ConvertInteger(*parameter, inBufferSize, outActualSize, outData);
    }
    if (outActualType != nullptr)
        *outActualType = parameter->type;
    if (outActualSize != nullptr)
        *outActualSize = parameter->bytes.size();
    if (outData != nullptr)
        std::memcpy(outData, parameter->bytes.data(),
                    std::min(inBufferSize, parameter->bytes.size()));
    return noErr;
}

} // extern "C"
