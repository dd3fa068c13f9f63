#pragma once

// The watcher: one thread, one inotify descriptor, and the registrations of clients on
// containers. Threads: registration calls come from any thread and take `mutex`; the watcher
// thread takes it while it turns a burst of inotify events into queued events, and calls the
// ticklers while still holding it, so a queue cannot be disposed under its feet. Ticklers must
// not call back into registration.

#include "basalt/nodes/NodeEventQueue.h"
#include "basalt/nodes/OpaqueNodeRef.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace basalt::nodes {

class NodeWatcher {
public:
    static NodeWatcher& Shared();

    StatusCode Register(NodeRef container, const NodeNotificationClient& client);
    StatusCode Unregister(NodeRef container, void* clientRef);
    void ForgetQueue(NodeEventQueueRef queue);
    StatusCode Sync(NodeRef container);
    // Sends an event to the clients registered on container, from any thread; for the
    // service's virtual containers, whose changes the watcher does not see itself.
    void Announce(NodeRef container, uint32_t kind, NodeRef child, NodeRef parent);

private:
    struct Registration {
        void* clientRef;
        NodeEventQueueRef queue;
        NodeEventTickler tickler;
    };
    struct Watched {
        int wd = -1;
        std::vector<Registration> registrations;
        std::vector<std::string> names; // the children seen, sorted, to tell what a sync changed
    };
    using Touched = std::set<std::pair<NodeEventQueueRef, NodeEventTickler>>;

    NodeWatcher();
    void StartLocked();
    void Run();
    void HandleBurst(const std::vector<char>& bytes);
    void HandleEvent(int wd, uint32_t mask, const std::string& name, Touched& touched);
    void HandleMountsChanged(Touched& touched);
    void HandleConfigChanged(const std::string& name, Touched& touched);
    void SyncLocked(NodeRef container, Watched& watched, Touched& touched);
    void Send(NodeRef container, uint32_t kind, NodeRef child, NodeRef parent,
              FourCharCode property, Touched& touched);
    void WatchConfigLocked();
    static void Tickle(const Touched& touched);

    std::mutex mutex_;
    int inotify_ = -1;
    int mounts_ = -1;
    bool started_ = false;
    std::set<int> configWds_; // home, the config folder and gtk-3.0, as far as they exist
    std::map<NodeRef, Watched> watched_;
    std::unordered_map<int, NodeRef> byWd_;
};

} // namespace basalt::nodes
