#include "basalt/toolbox/events/EventTarget.h"

#include <algorithm>
#include <mutex>
#include <unordered_set>

using basalt::toolbox::TargetOwner;

struct OpaqueEventHandlerCallRef {
    OpaqueEventTargetRef* target;
    std::vector<std::shared_ptr<OpaqueEventHandlerRef>> chain;
    size_t next = 0;
    bool standardCalled = false;
};

namespace {

StatusCode CallFrom(OpaqueEventHandlerCallRef& call, EventRef event) {
    // A handler that declines passes the event on, as if it had called the next one.
    while (call.next < call.chain.size()) {
        const auto& handler = call.chain[call.next++];
        if (handler->removed)
            continue;
        StatusCode status = handler->proc(&call, event, handler->userData);
        if (status != eventNotHandledErr)
            return status;
    }
    if (call.standardCalled || call.target->owner == nullptr)
        return eventNotHandledErr;
    call.standardCalled = true;
    return call.target->owner->HandleStandardEvent(&call, event);
}

} // namespace

namespace {

// Every target that exists. Targets are made and dropped on the main thread, and looked up
// there when posted events are dispatched; the lock keeps a stray thread from tearing it.
struct LiveTargets {
    std::mutex mutex;
    std::unordered_set<const OpaqueEventTargetRef*> targets;
};

LiveTargets& TheLiveTargets() {
    static auto* live = new LiveTargets;
    return *live;
}

} // namespace

OpaqueEventTargetRef::OpaqueEventTargetRef(TargetOwner* owner) : owner(owner) {
    std::lock_guard lock(TheLiveTargets().mutex);
    TheLiveTargets().targets.insert(this);
}

bool basalt::toolbox::IsLiveTarget(EventTargetRef target) {
    std::lock_guard lock(TheLiveTargets().mutex);
    return TheLiveTargets().targets.count(target) != 0;
}

bool OpaqueEventHandlerRef::Handles(EventClass eventClass, EventKind kind) const {
    return std::any_of(types.begin(), types.end(), [&](const EventTypeSpec& type) {
        return type.eventClass == eventClass && type.eventKind == kind;
    });
}

OpaqueEventTargetRef::~OpaqueEventTargetRef() {
    {
        std::lock_guard lock(TheLiveTargets().mutex);
        TheLiveTargets().targets.erase(this);
    }
    RemoveAllHandlers();
}

void OpaqueEventTargetRef::RemoveAllHandlers() {
    for (auto& handler : handlers)
        handler->removed = true;
    handlers.clear();
}

StatusCode OpaqueEventTargetRef::Dispatch(EventRef event, bool toAll) {
    auto keep = owner != nullptr ? owner->KeepAlive() : nullptr;
    OpaqueEventHandlerCallRef call{this, {}};
    for (const auto& handler : handlers)
        if (handler->Handles(event->eventClass, event->kind))
            call.chain.push_back(handler);
    if (!toAll)
        return CallFrom(call, event);
    StatusCode result = eventNotHandledErr;
    for (const auto& handler : call.chain) {
        if (handler->removed)
            continue;
        OpaqueEventHandlerCallRef single{this, {}, 0, true};
        if (handler->proc(&single, event, handler->userData) == noErr)
            result = noErr;
    }
    return result;
}

namespace basalt::toolbox {

StatusCode TargetOwner::HandleStandardEvent(EventHandlerCallRef, EventRef) {
    return eventNotHandledErr;
}

std::shared_ptr<TargetOwner> TargetOwner::KeepAlive() {
    return weak_from_this().lock();
}

StatusCode SendAndRelease(EventHolder& event, EventTargetRef target, OptionBits options) {
    return SendEventToEventTargetWithOptions(event.get(), target, options);
}

} // namespace basalt::toolbox

extern "C" {

StatusCode InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                               unsigned long inNumTypes, const EventTypeSpec* inList,
                               void* inUserData, EventHandlerRef* outRef) {
    if (inTarget == nullptr || inHandler == nullptr || (inNumTypes != 0 && inList == nullptr))
        return paramErr;
    auto handler = std::make_shared<OpaqueEventHandlerRef>();
    handler->target = inTarget;
    handler->proc = inHandler;
    handler->userData = inUserData;
    handler->types.assign(inList, inList + inNumTypes);
    inTarget->handlers.insert(inTarget->handlers.begin(), handler);
    if (outRef != nullptr)
        *outRef = handler.get();
    return noErr;
}

StatusCode RemoveEventHandler(EventHandlerRef inHandlerRef) {
    if (inHandlerRef == nullptr || inHandlerRef->removed)
        return paramErr;
    inHandlerRef->removed = true;
    auto& handlers = inHandlerRef->target->handlers;
    std::erase_if(handlers, [&](const auto& handler) { return handler.get() == inHandlerRef; });
    return noErr;
}

StatusCode AddEventTypesToHandler(EventHandlerRef inHandlerRef, unsigned long inNumTypes,
                                  const EventTypeSpec* inList) {
    if (inHandlerRef == nullptr || inHandlerRef->removed || (inNumTypes != 0 && inList == nullptr))
        return paramErr;
    for (unsigned long i = 0; i < inNumTypes; ++i)
        if (!inHandlerRef->Handles(inList[i].eventClass, inList[i].eventKind))
            inHandlerRef->types.push_back(inList[i]);
    return noErr;
}

StatusCode RemoveEventTypesFromHandler(EventHandlerRef inHandlerRef, unsigned long inNumTypes,
                                       const EventTypeSpec* inList) {
    if (inHandlerRef == nullptr || inHandlerRef->removed || (inNumTypes != 0 && inList == nullptr))
        return paramErr;
    for (unsigned long i = 0; i < inNumTypes; ++i)
        std::erase_if(inHandlerRef->types, [&](const EventTypeSpec& type) {
            return type.eventClass == inList[i].eventClass && type.eventKind == inList[i].eventKind;
        });
    return noErr;
}

StatusCode CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent) {
    if (inCallRef == nullptr || inEvent == nullptr)
        return paramErr;
    return CallFrom(*inCallRef, inEvent);
}

StatusCode SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget) {
    return SendEventToEventTargetWithOptions(inEvent, inTarget, 0);
}

StatusCode SendEventToEventTargetWithOptions(EventRef inEvent, EventTargetRef inTarget,
                                             OptionBits inOptions) {
    if (inEvent == nullptr || inTarget == nullptr)
        return paramErr;
    basalt::toolbox::EventHolder hold(RetainEvent(inEvent));
    bool toAll = (inOptions & kEventTargetSendToAllHandlers) != 0;
    // Each owner on the way stays alive until its parent has been asked for.
    std::shared_ptr<TargetOwner> keep =
        inTarget->owner != nullptr ? inTarget->owner->KeepAlive() : nullptr;
    StatusCode status = inTarget->Dispatch(inEvent, toAll);
    EventTargetRef current = inTarget;
    while (status == eventNotHandledErr && !(inOptions & kEventTargetDontPropagate) &&
           current->owner != nullptr) {
        current = current->owner->PropagationParent();
        if (current == nullptr)
            break;
        keep = current->owner != nullptr ? current->owner->KeepAlive() : nullptr;
        status = current->Dispatch(inEvent, toAll);
    }
    return status;
}

} // extern "C"
