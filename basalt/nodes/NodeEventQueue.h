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
};

struct OpaqueNodeEventQueue {
    NodeEventTickler tickler = nullptr;
    std::mutex mutex;
    std::deque<NodeEventRef> events;
};

namespace basalt::nodes {

// Puts an event in the queue unless the same event is already waiting there; true if it was
// put. Takes its own counts on child and parent. Does not tickle.
bool PostNodeEvent(NodeEventQueueRef queue, uint32_t kind, void* clientRef, NodeRef child,
                   NodeRef parent, FourCharCode property);

} // namespace basalt::nodes
