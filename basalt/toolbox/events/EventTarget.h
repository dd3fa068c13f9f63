#pragma once

// Targets and their handler stacks.
//
// A target belongs to an owner (the application, a window, a view, a menu). Owners are held by
// shared_ptr; a dispatch keeps the owner and a snapshot of the handlers alive while it runs, so
// a handler may remove itself, remove others, or dispose the target's window mid-dispatch.
// Handlers removed during a dispatch are skipped; handlers added during one are not called by
// it. Below the installed handlers sits the owner's standard behaviour, reached when every
// handler declines or calls the next one.

#include "basalt/toolbox/events/Event.h"

#include <memory>
#include <vector>

namespace basalt::toolbox {
class TargetOwner;
}

struct OpaqueEventHandlerRef {
    OpaqueEventTargetRef* target = nullptr;
    EventHandlerUPP proc = nullptr;
    void* userData = nullptr;
    std::vector<EventTypeSpec> types;
    bool removed = false;

    bool Handles(EventClass eventClass, EventKind kind) const;
};

struct OpaqueEventTargetRef {
    explicit OpaqueEventTargetRef(basalt::toolbox::TargetOwner* owner);
    OpaqueEventTargetRef(const OpaqueEventTargetRef&) = delete;
    OpaqueEventTargetRef& operator=(const OpaqueEventTargetRef&) = delete;
    ~OpaqueEventTargetRef();

    basalt::toolbox::TargetOwner* owner;
    // Most recently installed first.
    std::vector<std::shared_ptr<OpaqueEventHandlerRef>> handlers;

    StatusCode Dispatch(EventRef event, bool toAll);
    // Drops every handler, as when the owner goes away.
    void RemoveAllHandlers();
};

namespace basalt::toolbox {

// Anything that has an event target. Its standard behaviour is the bottom of the chain.
class TargetOwner : public std::enable_shared_from_this<TargetOwner> {
public:
    TargetOwner() : target_(this) {}
    TargetOwner(const TargetOwner&) = delete;
    TargetOwner& operator=(const TargetOwner&) = delete;
    virtual ~TargetOwner() = default;

    EventTargetRef Target() { return &target_; }
    virtual StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event);
    // Where an unhandled event goes next, or null.
    virtual EventTargetRef PropagationParent() { return nullptr; }
    // Keeps the owner alive for a dispatch; owners that are not shared give null.
    std::shared_ptr<TargetOwner> KeepAlive();

private:
    OpaqueEventTargetRef target_;
};

// Whether target still exists: a posted event may name a target that went away meanwhile.
bool IsLiveTarget(EventTargetRef target);

// Sends an event to a target and frees it; for the toolbox's own notifications.
StatusCode SendAndRelease(EventHolder& event, EventTargetRef target, OptionBits options = 0);

} // namespace basalt::toolbox
