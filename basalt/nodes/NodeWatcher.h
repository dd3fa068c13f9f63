#pragma once

// The watcher: one thread, one inotify descriptor, and the registrations of clients on
// containers. Threads: registration calls come from any thread and take `mutex`; the watcher
// thread takes it while it turns a burst of inotify events into queued events, and calls the
// ticklers while still holding it, so a queue cannot be disposed under its feet. Ticklers must
// not call back into registration.
//
// A sync of a folder whose watch is trusted (inotify sees every change of its file system)
// reads nothing: what a rescan would find, the watcher sends anyway. Its completion goes out at
// once when no change is on the way, else after the watcher thread has sent what is queued.
// Other folders are rescanned against the names seen at registration and since.

#include "basalt/nodes/NodeEventQueue.h"
#include "basalt/nodes/OpaqueNodeRef.h"

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
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
    // Compares a container with the file system and sends the differences, then completion.
    // Thorough: rescan even a trusted folder, as when a client says it changed the folder.
    StatusCode Sync(NodeRef container, bool thorough);
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
        bool trusted = false; // watched, on a file system whose changes all pass this kernel
        std::vector<Registration> registrations;
        // The children seen, sorted, to tell what a rescan changed; kept for untrusted folders
        // only, whose changes may come unannounced.
        std::optional<std::vector<std::string>> names;
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
    bool NothingOnTheWay() const;
    void CompleteAwaitedSyncs(Touched& touched);
    void Send(NodeRef container, uint32_t kind, NodeRef child, NodeRef parent,
              FourCharCode property, Touched& touched);
    void WatchConfigLocked();
    static void Tickle(const Touched& touched);

    std::mutex mutex_;
    int inotify_ = -1;
    int mounts_ = -1;
    bool started_ = false;
    std::atomic<bool> collecting_{false}; // the watcher thread holds changes it has not sent
    std::vector<NodeRef> awaitingSync_;   // counted; to complete once the queue is empty
    std::set<int> configWds_; // home, the config folder and gtk-3.0, as far as they exist
    std::map<NodeRef, Watched> watched_;
    std::unordered_map<int, NodeRef> byWd_;
};

} // namespace basalt::nodes
