#pragma once

// Change events. One watcher thread owns an inotify descriptor; a container is watched while
// some client is registered on it. Events go into the client's queue and the queue's tickler
// is called on the watcher thread, once per burst of changes (changes that arrive within a
// short while are delivered together, and an event that repeats the latest one waiting about
// the same child is not queued twice). Unregistering drops what is still waiting for that
// registration. Changes of the mounts and of the user's bookmarks arrive as child-list changes
// of the virtual nodes 11 and 12.

#include "basalt/nodes/NodeService.h"

struct OpaqueNodeEventQueue;
struct OpaqueNodeEvent;
typedef OpaqueNodeEventQueue* NodeEventQueueRef;
typedef OpaqueNodeEvent* NodeEventRef;
typedef void (*NodeEventTickler)(NodeEventQueueRef queue);

enum : uint32_t {
    kNodeEventDeleted = 1,
    kNodeEventPropertyChanged = 2,
    kNodeEventChildAdded = 3,
    kNodeEventSyncComplete = 7,
    kNodeEventOpenSyncComplete = 8,
    kNodeEventVirtualChildListChanged = 20,
};

// The three-word block that names who is told: the client reference, the queue, the tickler.
struct NodeNotificationClient {
    void* clientRef;
    NodeEventQueueRef queue;
    NodeEventTickler tickler;
};

StatusCode NodeEventNewEventQueue(NodeEventTickler tickler, NodeEventQueueRef* queue);
// Also ends every registration that delivers into the queue.
StatusCode NodeEventDisposeEventQueue(NodeEventQueueRef queue);
// Takes the next event; false when the queue is empty. Never waits.
Boolean NodeEventBlockUntilNextEventNew(NodeEventRef* event, NodeEventQueueRef queue);
void NodeEventRelease(NodeEventRef event);
StatusCode NodeEventGetKind(NodeEventRef event, uint32_t* kind);
StatusCode NodeEventGetClientRef(NodeEventRef event, void** clientRef);
// Owned references; a non-zero status when the event has no such node.
StatusCode NodeEventGetChild(NodeEventRef event, NodeRef* node);
StatusCode NodeEventGetParent(NodeEventRef event, NodeRef* node);
StatusCode NodeEventGetProperty(NodeEventRef event, FourCharCode* code);

// Zero: the children can be listed at once.
StatusCode NodeRegisterChildChangedNotification(NodeRef container,
                                                const NodeNotificationClient* client,
                                                uint32_t flags);
StatusCode NodeUnRegisterChildChangedNotification(NodeRef container, void* clientRef);
