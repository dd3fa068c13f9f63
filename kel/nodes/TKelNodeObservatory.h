#pragma once

// Moves the node service's change events to the main thread. The service's watcher thread only
// calls Tickler, which posts one wake-up event ("kels", 32768) to the main queue, at most one
// per observatory until the main thread has taken it; the main thread then drains the whole
// queue and hands each event to the INodeObserver registered for its container.
//
// Threads: Tickler runs on the watcher thread and touches only the list of observatories (under
// gMutex) and the tickled flag; everything else runs on the main thread. The first observatory
// made also makes one for the application's event target, which lives for the process.
//
// The tickle control may leave its window, or go with it, before its owner clears it here: the
// observatory hears of that (kEventControlOwningWindowChanged, no window) while the control
// still lives, and lets go of it then, so that neither its wake-ups nor its destruction reach
// a control that is gone. Its wake-ups then come through the application's target.

#include "basalt/nodes/NodeEvents.h"
#include "kel/nodes/INodeObserver.h"

#include <atomic>
#include <basalt/BasaltToolbox.h>
#include <unordered_set>

inline constexpr EventTypeSpec kNodeEventSpec = {0x6B656C73 /* "kels" */, 32768};

class TKelNodeObservatory {
public:
    TKelNodeObservatory();
    TKelNodeObservatory(const TKelNodeObservatory&) = delete;
    TKelNodeObservatory& operator=(const TKelNodeObservatory&) = delete;
    virtual ~TKelNodeObservatory();

    // The control whose event target receives this observatory's wake-ups.
    StatusCode SetTickleControl(ControlRef control);
    StatusCode RegisterContainerObserver(const TKelNode& container, INodeObserver& observer);
    StatusCode UnregisterContainerObserver(const TKelNode& container, INodeObserver& observer);
    void ProcessWaitingNodeEvents();

    // Waits for a wake-up, takes it from the main queue without dispatching it, and drains
    // every observatory. Returns the wait's status (-9875 when it timed out).
    static StatusCode BlockForNodeEvents(double timeout);

    static StatusCode Handler(EventHandlerCallRef callRef, EventRef event, void* userData);
    static void Tickler(NodeEventQueueRef queue);

private:
    void ForgetTickleControl();
    void Dispatch(NodeEventRef event);
    static void ClearTickled(NodeEventQueueRef queue);
    static void DrainStrayWakeUps();

    ControlRef tickleControl = nullptr;
    EventHandlerRef tickleHandler = nullptr;
    NodeEventQueueRef eventQueue = nullptr;
    // The observers registered now, main thread only: an event queued before its observer
    // unregistered (and was perhaps deleted) is dropped.
    std::unordered_multiset<const INodeObserver*> registered;
    // A wake-up is on its way and not yet consumed; written by both threads.
    std::atomic<bool> tickled{false};
    // Where wake-ups go, read by the watcher thread under gMutex.
    EventTargetRef tickleTarget = nullptr;
};
