#pragma once

// An event: class, kind, time and named parameters, each a typed byte string. Counted
// atomically because other threads post events into the main queue.

#include <atomic>
#include <basalt/BasaltToolbox.h>
#include <cstdint>
#include <vector>

struct OpaqueEventRef {
    EventClass eventClass = 0;
    EventKind kind = 0;
    EventTime time = 0;
    std::atomic<long> count{1};

    struct Parameter {
        EventParamName name;
        EventParamType type;
        std::vector<uint8_t> bytes;
    };
    std::vector<Parameter> parameters;

    const Parameter* Find(EventParamName name) const;
};

namespace basalt::toolbox {

constexpr FourCharCode FourCC(const char (&text)[5]) {
    return (FourCharCode(uint8_t(text[0])) << 24) | (FourCharCode(uint8_t(text[1])) << 16) |
           (FourCharCode(uint8_t(text[2])) << 8) | FourCharCode(uint8_t(text[3]));
}

// Typed shorthands over SetEventParameter/GetEventParameter for the toolbox's own use.
template <class T>
void SetParam(EventRef event, EventParamName name, EventParamType type, const T& value) {
    SetEventParameter(event, name, type, sizeof(T), &value);
}

template <class T>
bool GetParam(EventRef event, EventParamName name, EventParamType type, T* value) {
    return GetEventParameter(event, name, type, nullptr, sizeof(T), nullptr, value) == noErr;
}

// Owns one reference to an event.
class EventHolder {
public:
    EventHolder() = default;
    explicit EventHolder(EventRef adopted) : event_(adopted) {}
    EventHolder(EventClass eventClass, EventKind kind);
    EventHolder(const EventHolder&) = delete;
    EventHolder& operator=(const EventHolder&) = delete;
    EventHolder(EventHolder&& other) noexcept : event_(other.Release()) {}
    ~EventHolder() { ReleaseEvent(event_); }
    EventRef get() const { return event_; }
    EventRef Release() {
        EventRef event = event_;
        event_ = nullptr;
        return event;
    }

private:
    EventRef event_ = nullptr;
};

} // namespace basalt::toolbox
