#include "kel/nodes/TKelNodeObservatory.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <vector>

namespace {

// Made with the first observatory and kept for the process.
std::vector<TKelNodeObservatory*>* gObservatories = nullptr;
std::mutex gMutex; // guards gObservatories and the tickle targets
bool sCreatedGlobalObserver = false;
TKelNodeObservatory* sFirstObservatory = nullptr;

constexpr EventParamName kPostTargetParam = 0x70747267; // "ptrg"
constexpr EventParamType kTargetType = 0x65747267;      // "etrg"
// What the handler on the tickle control hears: the wake-ups, and the control leaving its
// window, which comes before the control goes.
constexpr EventTypeSpec kTickleEvents[] = {kNodeEventSpec,
                                           {kEventClassControl, kEventControlOwningWindowChanged}};

// The node an event getter gives, adopted; empty when the event has none.
TKelNode AdoptedNode(NodeEventRef event, StatusCode (*getter)(NodeEventRef, NodeRef*)) {
    NodeRef node = nullptr;
    StatusCode status = getter(event, &node);
    return TKelNode(status == noErr ? node : nullptr, false);
}

} // namespace

TKelNodeObservatory::TKelNodeObservatory() {
    if (gObservatories == nullptr) {
        gObservatories = new std::vector<TKelNodeObservatory*>;
    }
    TKelNode::InitializeCatalog();
    if (!sCreatedGlobalObserver) {
        sCreatedGlobalObserver = true;
        sFirstObservatory = new TKelNodeObservatory;
        {
            std::lock_guard lock(gMutex);
            sFirstObservatory->tickleTarget = GetApplicationEventTarget();
        }
        InstallEventHandler(GetApplicationEventTarget(), Handler, 1, &kNodeEventSpec,
                            sFirstObservatory, nullptr);
    }
    NodeEventNewEventQueue(Tickler, &eventQueue);
    std::lock_guard lock(gMutex);
    gObservatories->push_back(this);
}

TKelNodeObservatory::~TKelNodeObservatory() {
    {
        std::lock_guard lock(gMutex);
        std::erase(*gObservatories, this);
    }
    NodeEventDisposeEventQueue(eventQueue);
    // A control that left its window was let go of at that moment, so this one still lives.
    if (tickleControl != nullptr) {
        if (tickleHandler != nullptr) {
            RemoveEventHandler(tickleHandler);
        }
        tickleControl = nullptr;
        tickleHandler = nullptr;
    }
}

StatusCode TKelNodeObservatory::SetTickleControl(ControlRef control) {
    if (control == tickleControl) {
        return noErr;
    }
    StatusCode status = noErr;
    if (tickleHandler != nullptr) {
        status = RemoveEventHandler(tickleHandler);
        tickleHandler = nullptr;
    }
    tickleControl = control;
    EventTargetRef target = control != nullptr ? GetControlEventTarget(control) : nullptr;
    {
        std::lock_guard lock(gMutex);
        tickleTarget = target;
    }
    if (control == nullptr) {
        return status;
    }
    return InstallEventHandler(target, Handler, std::size(kTickleEvents), kTickleEvents, this,
                               &tickleHandler);
}

// Called from the control's own event, while it lives: removing the handler is safe now and
// would not be later.
void TKelNodeObservatory::ForgetTickleControl() {
    if (tickleHandler != nullptr) {
        RemoveEventHandler(tickleHandler);
    }
    tickleControl = nullptr;
    tickleHandler = nullptr;
    std::lock_guard lock(gMutex);
    tickleTarget = nullptr;
}

StatusCode TKelNodeObservatory::RegisterContainerObserver(const TKelNode& container,
                                                          INodeObserver& observer) {
    const NodeNotificationClient client = {&observer, eventQueue, Tickler};
    registered.insert(&observer);
    return NodeRegisterChildChangedNotification(container.PeekNodeRef(), &client, 0);
}

StatusCode TKelNodeObservatory::UnregisterContainerObserver(const TKelNode& container,
                                                            INodeObserver& observer) {
    if (auto found = registered.find(&observer); found != registered.end()) {
        registered.erase(found);
    }
    return NodeUnRegisterChildChangedNotification(container.PeekNodeRef(), &observer);
}

// ---- The watcher thread ---------------------------------------------------------------------

void TKelNodeObservatory::Tickler(NodeEventQueueRef queue) {
    EventTargetRef target = nullptr;
    {
        std::lock_guard lock(gMutex);
        if (gObservatories == nullptr) {
            return;
        }
        auto found = std::find_if(gObservatories->begin(), gObservatories->end(),
                                  [&](TKelNodeObservatory* o) { return o->eventQueue == queue; });
        // At most one wake-up in flight per observatory.
        if (found == gObservatories->end() || (*found)->tickled.exchange(true)) {
            return;
        }
        target = (*found)->tickleTarget;
    }
    EventRef event = nullptr;
    StatusCode status =
        CreateEvent(nullptr, kNodeEventSpec.eventClass, kNodeEventSpec.eventKind, 0, 0, &event);
    if (status == noErr) {
        SetEventParameter(event, kPostTargetParam, kTargetType, sizeof target, &target);
        status = PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
        ReleaseEvent(event);
    }
    if (status != noErr) {
        // No wake-up is on its way, so the next change must be free to try again.
        ClearTickled(queue);
    }
}

void TKelNodeObservatory::ClearTickled(NodeEventQueueRef queue) {
    std::lock_guard lock(gMutex);
    for (TKelNodeObservatory* observatory : *gObservatories) {
        if (observatory->eventQueue == queue) {
            observatory->tickled = false;
        }
    }
}

// ---- The main thread ------------------------------------------------------------------------

StatusCode TKelNodeObservatory::Handler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* observatory = static_cast<TKelNodeObservatory*>(userData);
    if (GetEventClass(event) == kEventClassControl) {
        WindowRef window = nullptr;
        GetEventParameter(event, kEventParamControlCurrentOwningWindow, typeWindowRef, nullptr,
                          sizeof window, nullptr, &window);
        if (window == nullptr) {
            observatory->ForgetTickleControl();
        }
        return eventNotHandledErr;
    }
    observatory->ProcessWaitingNodeEvents();
    if (observatory == sFirstObservatory) {
        DrainStrayWakeUps();
    }
    return noErr;
}

// A wake-up whose control is gone (or was never set) comes to the application's target. Its
// observatory is still marked as having one in flight; drain every such observatory here, or
// it would never hear of a change again.
void TKelNodeObservatory::DrainStrayWakeUps() {
    for (size_t i = 0; i < gObservatories->size(); ++i) {
        TKelNodeObservatory* observatory = (*gObservatories)[i];
        if (observatory != sFirstObservatory && observatory->tickled) {
            observatory->ProcessWaitingNodeEvents();
        }
    }
}

// Clearing tickled before each take means a change that arrives meanwhile makes a new
// wake-up: at worst the main thread later finds the queue empty, it never misses an event.
void TKelNodeObservatory::ProcessWaitingNodeEvents() {
    tickled = false;
    NodeEventRef event = nullptr;
    while (NodeEventBlockUntilNextEventNew(&event, eventQueue)) {
        Dispatch(event);
        NodeEventRelease(event);
        tickled = false;
    }
}

void TKelNodeObservatory::Dispatch(NodeEventRef event) {
    uint32_t kind = 0;
    void* clientRef = nullptr;
    NodeEventGetKind(event, &kind);
    NodeEventGetClientRef(event, &clientRef);
    auto* observer = static_cast<INodeObserver*>(clientRef);
    TKelNode child = AdoptedNode(event, NodeEventGetChild);
    auto parent = [&] { return AdoptedNode(event, NodeEventGetParent); };
    if (observer == nullptr || !registered.contains(observer)) {
        return;
    }
    switch (kind) {
    case 1:
    case 4:
        observer->NodeObserverNoteDeletion(child);
        break;
    case 2:
    case 6: {
        FourCharCode code = 0;
        NodeEventGetProperty(event, &code);
        observer->NodeObserverNotePropertyChange(child, code);
        break;
    }
    case 3: {
        TKelNode container = parent();
        observer->NodeObserverNoteChildAddition(container, child);
        break;
    }
    case 7:
        observer->NodeObserverNoteSyncCompletion(child);
        break;
    case 8:
        observer->NodeObserverNoteOpenSyncCompletion(child);
        break;
    case 20: {
        TKelNode container = parent();
        observer->NodeObserverNoteVirtualChildListChanged(container);
        break;
    }
    case 23:
        observer->NodeObserverNoteDisplayAttributesChanged(child, nullptr);
        break;
    default:
        break;
    }
}

StatusCode TKelNodeObservatory::BlockForNodeEvents(double timeout) {
    EventRef event = nullptr;
    StatusCode status = ReceiveNextEvent(1, &kNodeEventSpec, timeout, true, &event);
    if (status != noErr) {
        return status;
    }
    ReleaseEvent(event);
    // An observer may make or destroy observatories, so the end is read again at every step.
    for (size_t i = 0; gObservatories != nullptr && i < gObservatories->size(); ++i) {
        (*gObservatories)[i]->ProcessWaitingNodeEvents();
    }
    return noErr;
}
