#include "basalt/nodes/NodeEventQueue.h"

#include <algorithm>
#include <memory>

namespace basalt::nodes {

constexpr size_t kCompareTail = 64;

bool PostNodeEvent(NodeEventQueueRef queue, uint32_t kind, void* clientRef, NodeRef child,
                   NodeRef parent, FourCharCode property) {
    std::lock_guard lock(queue->mutex);
    // Only the recent tail is compared, so a burst of many distinct events stays linear.
    auto from = queue->events.size() > kCompareTail ? queue->events.end() - kCompareTail
                                                    : queue->events.begin();
    bool waiting = std::any_of(from, queue->events.end(), [&](NodeEventRef e) {
        return e->kind == kind && e->clientRef == clientRef && e->child == child &&
               e->parent == parent && e->property == property;
    });
    if (waiting)
        return false;
    auto* event =
        new OpaqueNodeEvent{kind, clientRef, CopyNodeRef(child), CopyNodeRef(parent), property};
    queue->events.push_back(event);
    return true;
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
