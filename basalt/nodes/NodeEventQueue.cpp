#include "basalt/nodes/NodeEventQueue.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace basalt::nodes {

constexpr size_t kCompareTail = 64;

bool PostNodeEvent(NodeEventQueueRef queue, void* clientRef, const void* container,
                   const NodeEventFact& fact) {
    std::lock_guard lock(queue->mutex);
    // Only the recent tail is searched, so a burst of many distinct events stays linear.
    auto from = queue->events.size() > kCompareTail ? queue->events.end() - kCompareTail
                                                    : queue->events.begin();
    auto latest = std::find_if(std::make_reverse_iterator(queue->events.end()),
                               std::make_reverse_iterator(from), [&](NodeEventRef e) {
                                   return e->clientRef == clientRef && e->container == container &&
                                          e->child == fact.child;
                               });
    if (latest != std::make_reverse_iterator(from) && (*latest)->kind == fact.kind &&
        (*latest)->parent == fact.parent && (*latest)->property == fact.property)
        return false;
    auto* event = new OpaqueNodeEvent{
        fact.kind,     clientRef, CopyNodeRef(fact.child), CopyNodeRef(fact.parent),
        fact.property, container};
    queue->events.push_back(event);
    return true;
}

void DropNodeEvents(NodeEventQueueRef queue, void* clientRef, const void* container) {
    std::vector<NodeEventRef> dropped;
    {
        std::lock_guard lock(queue->mutex);
        std::erase_if(queue->events, [&](NodeEventRef e) {
            bool ours = e->clientRef == clientRef && e->container == container;
            if (ours)
                dropped.push_back(e);
            return ours;
        });
    }
    // Outside the lock: releasing may dispose nodes, which takes the node table's lock.
    for (NodeEventRef event : dropped)
        NodeEventRelease(event);
}

} // namespace basalt::nodes

StatusCode NodeEventNewEventQueue(NodeEventTickler tickler, NodeEventQueueRef* queue) {
    if (queue == nullptr)
        return paramErr;
    auto made = std::make_unique<OpaqueNodeEventQueue>();
    made->tickler = tickler;
    *queue = made.release();
    return noErr;
}

Boolean NodeEventBlockUntilNextEventNew(NodeEventRef* event, NodeEventQueueRef queue) {
    if (event == nullptr || queue == nullptr)
        return false;
    std::lock_guard lock(queue->mutex);
    if (queue->events.empty())
        return false;
    *event = queue->events.front();
    queue->events.pop_front();
    return true;
}

void NodeEventRelease(NodeEventRef event) {
    if (event == nullptr)
        return;
    DisposeNode(event->child);
    DisposeNode(event->parent);
    delete event;
}

StatusCode NodeEventGetKind(NodeEventRef event, uint32_t* kind) {
    if (event == nullptr || kind == nullptr)
        return paramErr;
    *kind = event->kind;
    return noErr;
}

StatusCode NodeEventGetClientRef(NodeEventRef event, void** clientRef) {
    if (event == nullptr || clientRef == nullptr)
        return paramErr;
    *clientRef = event->clientRef;
    return noErr;
}

StatusCode NodeEventGetChild(NodeEventRef event, NodeRef* node) {
    if (event == nullptr || node == nullptr || event->child == nullptr)
        return paramErr;
    *node = CopyNodeRef(event->child);
    return noErr;
}

StatusCode NodeEventGetParent(NodeEventRef event, NodeRef* node) {
    if (event == nullptr || node == nullptr || event->parent == nullptr)
        return paramErr;
    *node = CopyNodeRef(event->parent);
    return noErr;
}

StatusCode NodeEventGetProperty(NodeEventRef event, FourCharCode* code) {
    if (event == nullptr || code == nullptr)
        return paramErr;
    *code = event->property;
    return noErr;
}
