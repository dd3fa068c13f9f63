#pragma once

// Event objects and per-client queues. Internal to the node service.

#include "basalt/nodes/NodeEvents.h"

#include <deque>
#include <mutex>

struct OpaqueNodeEvent {
    uint32_t kind = 0;
    void* clientRef = nullptr;
    NodeRef child = nullptr;  // counted
    NodeRef parent = nullptr; // counted
    FourCharCode property = 0;
    const void* container = nullptr; // the registration's container, only compared
};

struct OpaqueNodeEventQueue {
    NodeEventTickler tickler = nullptr;
    std::mutex mutex;
    std::deque<NodeEventRef> events;
};

namespace basalt::nodes {

struct NodeEventFact {
    uint32_t kind;
    NodeRef child;
    NodeRef parent;
    FourCharCode property;
};

// Puts an event for the client's registration on container in the queue, unless the latest
// event waiting there about the same child says exactly the same; true if it was put. Only
// such repeats merge: a node added, deleted and added again keeps all three events. Takes its
// own counts on child and parent. Does not tickle.
bool PostNodeEvent(NodeEventQueueRef queue, void* clientRef, const void* container,
                   const NodeEventFact& fact);
// Drops the waiting events of the client's registration on container.
void DropNodeEvents(NodeEventQueueRef queue, void* clientRef, const void* container);

} // namespace basalt::nodes
