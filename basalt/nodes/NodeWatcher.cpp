#include "basalt/nodes/NodeWatcher.h"

#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstring>
#include <iterator>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>

namespace basalt::nodes {
namespace {

constexpr uint32_t kFolderMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB |
                                 IN_MODIFY | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF |
                                 IN_ONLYDIR | IN_DONT_FOLLOW;
constexpr uint32_t kConfigMask =
    IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR;
// A burst: changes that follow each other within this gap, up to the longest wait, are
// delivered together, so a flurry of changes costs one wake-up.
constexpr int kBurstGapMs = 25;
constexpr auto kBurstLongest = std::chrono::milliseconds(150);

int AddWatch(int inotify, const std::string& path, uint32_t mask) {
    if (path.size() < PATH_MAX - 1)
        return ::inotify_add_watch(inotify, path.c_str(), mask);
    files::UniqueFd fd = files::OpenPath(path, O_PATH | O_DIRECTORY);
    if (!fd.Valid())
        return -1;
    std::string proxy = "/proc/self/fd/" + std::to_string(fd.Get());
    return ::inotify_add_watch(inotify, proxy.c_str(), mask);
}

// Sorted: a large folder costs one vector, not a tree node per name.
std::vector<std::string> ChildNames(NodeRef container) {
    std::vector<std::string> names;
    std::vector<NodeEntry> entries;
    if (ReadFolderEntries(PathOf(container), entries) == noErr) {
        names.reserve(entries.size());
        for (NodeEntry& entry : entries)
            names.push_back(std::move(entry.name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

template <typename Names>
bool Contains(const Names& sorted, std::string_view name) {
    return std::binary_search(sorted.begin(), sorted.end(), name);
}

void InsertName(std::optional<std::vector<std::string>>& names, const std::string& name) {
    if (!names)
        return;
    std::vector<std::string>& sorted = *names;
    auto at = std::lower_bound(sorted.begin(), sorted.end(), name);
    if (at == sorted.end() || *at != name)
        sorted.insert(at, name);
}

void EraseName(std::optional<std::vector<std::string>>& names, const std::string& name) {
    if (!names)
        return;
    std::vector<std::string>& sorted = *names;
    auto at = std::lower_bound(sorted.begin(), sorted.end(), name);
    if (at != sorted.end() && *at == name)
        sorted.erase(at);
}

void DrainMountInfo(int fd) {
    char buffer[4096];
    ::lseek(fd, 0, SEEK_SET);
    while (::read(fd, buffer, sizeof buffer) > 0) {
    }
}

} // namespace

NodeWatcher& NodeWatcher::Shared() {
    static NodeWatcher* watcher = new NodeWatcher; // its thread runs until the process ends
    return *watcher;
}

NodeWatcher::NodeWatcher() {
    inotify_ = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    mounts_ = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    if (mounts_ >= 0)
        DrainMountInfo(mounts_);
}

void NodeWatcher::StartLocked() {
    if (started_ || inotify_ < 0)
        return;
    try {
        std::thread([this] { Run(); }).detach();
        started_ = true;
    } catch (const std::system_error&) {
        // No thread, no change events; listing still works. The next registration retries.
    }
}

StatusCode NodeWatcher::Register(NodeRef container, const NodeNotificationClient& client) {
    if (container == nullptr || client.queue == nullptr)
        return paramErr;
    std::lock_guard lock(mutex_);
    auto [it, added] = watched_.try_emplace(container);
    Watched& watched = it->second;
    if (added) {
        CopyNodeRef(container);
        if (container->IsFileSystem() && SettledKind(container) == NodeKind::Folder) {
            std::string path = PathOf(container);
            watched.wd = AddWatch(inotify_, path, kFolderMask);
            if (watched.wd >= 0)
                byWd_[watched.wd] = container;
            watched.trusted = watched.wd >= 0 && ChangesSeenLocally(path);
            if (!watched.trusted)
                watched.names = ChildNames(container);
        }
        if (container == Special().places)
            WatchConfigLocked();
    }
    std::erase_if(watched.registrations,
                  [&](const Registration& r) { return r.clientRef == client.clientRef; });
    watched.registrations.push_back({client.clientRef, client.queue, client.tickler});
    StartLocked();
    return noErr;
}

StatusCode NodeWatcher::Unregister(NodeRef container, void* clientRef) {
    std::lock_guard lock(mutex_);
    auto it = watched_.find(container);
    if (it == watched_.end())
        return paramErr;
    // What is already queued for this registration must not reach a client that is gone.
    std::erase_if(it->second.registrations, [&](const Registration& r) {
        if (r.clientRef != clientRef)
            return false;
        DropNodeEvents(r.queue, clientRef, container);
        return true;
    });
    if (it->second.registrations.empty()) {
        if (it->second.wd >= 0) {
            ::inotify_rm_watch(inotify_, it->second.wd);
            byWd_.erase(it->second.wd);
        }
        watched_.erase(it);
        DisposeNode(container);
    }
    return noErr;
}

void NodeWatcher::ForgetQueue(NodeEventQueueRef queue) {
    std::vector<std::pair<NodeRef, void*>> gone;
    {
        std::lock_guard lock(mutex_);
        for (auto& [container, watched] : watched_) {
            for (const Registration& r : watched.registrations) {
                if (r.queue == queue)
                    gone.emplace_back(container, r.clientRef);
            }
        }
    }
    for (auto& [container, clientRef] : gone)
        Unregister(container, clientRef);
}

StatusCode NodeWatcher::Sync(NodeRef container, bool thorough) {
    if (container == nullptr)
        return paramErr;
    Touched touched;
    std::lock_guard lock(mutex_);
    auto it = watched_.find(container);
    if (it == watched_.end()) {
        std::vector<NodeRef> children = InternedChildren(container);
        for (NodeRef child : children)
            Forget(child);
        ReleaseAll(children);
        return noErr;
    }
    if (thorough || !it->second.trusted || !started_)
        SyncLocked(container, it->second, touched);
    else if (NothingOnTheWay())
        Send(container, kNodeEventSyncComplete, container, nullptr, 0, touched);
    else
        awaitingSync_.push_back(CopyNodeRef(container));
    Tickle(touched);
    return noErr;
}

// Under mutex_. The queue is looked at before the flag: whatever the watcher thread took from
// the queue by then, it has either sent already or still holds, flag set.
bool NodeWatcher::NothingOnTheWay() const {
    int pending = 0;
    if (::ioctl(inotify_, FIONREAD, &pending) != 0 || pending > 0)
        return false;
    return !collecting_.load();
}

// Under mutex_, on the watcher thread at the end of a burst. Changes still queued come in the
// next burst, which the queue's data brings about; the syncs wait for it.
void NodeWatcher::CompleteAwaitedSyncs(Touched& touched) {
    int pending = 0;
    if (awaitingSync_.empty() || (::ioctl(inotify_, FIONREAD, &pending) == 0 && pending > 0))
        return;
    for (NodeRef container : awaitingSync_) {
        Send(container, kNodeEventSyncComplete, container, nullptr, 0, touched);
        DisposeNode(container);
    }
    awaitingSync_.clear();
}

void NodeWatcher::Announce(NodeRef container, uint32_t kind, NodeRef child, NodeRef parent) {
    Touched touched;
    std::lock_guard lock(mutex_);
    Send(container, kind, child, parent, 0, touched);
    Tickle(touched);
}

// The file system is compared both with the names the watcher has seen and with the children
// that are held: a visible child that nobody holds can be in no client's list, and a held one
// that is gone from the folder is in some. So a change whose event was lost is made good.
void NodeWatcher::SyncLocked(NodeRef container, Watched& watched, Touched& touched) {
    if (container->IsFileSystem()) {
        std::vector<std::string> now = ChildNames(container);
        std::vector<NodeRef> held = InternedChildren(container);
        // Views into the held nodes' names, valid until they are released below.
        std::vector<std::string_view> heldNames;
        heldNames.reserve(held.size());
        for (NodeRef child : held) {
            heldNames.push_back(child->Name());
            Forget(child);
        }
        std::sort(heldNames.begin(), heldNames.end());
        Forget(container);
        // A folder without names (trusted, or whose watch went) takes what is there now as
        // seen: only its visible children are compared, against those that are held.
        const std::vector<std::string>& seen = watched.names ? *watched.names : now;
        for (const std::string& name : now) {
            bool unheld = !Contains(heldNames, name) && !name.starts_with(".") &&
                          !IsListedHidden(container, name);
            if (unheld || !Contains(seen, name)) {
                NodeHolder child(Intern(container, name, NodeKind::Unknown));
                Send(container, kNodeEventChildAdded, child.Get(), container, 0, touched);
            }
        }
        std::vector<std::string_view> known;
        std::set_union(heldNames.begin(), heldNames.end(), seen.begin(), seen.end(),
                       std::back_inserter(known));
        for (std::string_view name : known) {
            if (!Contains(now, name)) {
                NodeHolder child(Existing(container, name));
                if (child)
                    Send(container, kNodeEventDeleted, child.Get(), nullptr, 0, touched);
            }
        }
        known.clear();
        heldNames.clear();
        ReleaseAll(held);
        if (watched.names)
            watched.names = std::move(now);
    }
    Send(container, kNodeEventSyncComplete, container, nullptr, 0, touched);
}

void NodeWatcher::Send(NodeRef container, uint32_t kind, NodeRef child, NodeRef parent,
                       FourCharCode property, Touched& touched) {
    auto it = watched_.find(container);
    if (it == watched_.end())
        return;
    for (const Registration& r : it->second.registrations) {
        if (PostNodeEvent(r.queue, r.clientRef, container, {kind, child, parent, property}))
            touched.insert({r.queue, r.tickler});
    }
}

void NodeWatcher::Tickle(const Touched& touched) {
    for (const auto& [queue, tickler] : touched) {
        if (tickler != nullptr)
            tickler(queue);
    }
}

// The folders on the way to the bookmarks file may not exist yet; each one is watched once it
// does, so that making them is seen too.
void NodeWatcher::WatchConfigLocked() {
    std::string config = files::ConfigHome();
    for (const std::string& dir : {files::HomePath(), config, config + "/gtk-3.0"}) {
        int wd = AddWatch(inotify_, dir, kConfigMask);
        if (wd >= 0)
            configWds_.insert(wd);
    }
}

void NodeWatcher::Run() {
    for (;;) {
        pollfd fds[2] = {{inotify_, POLLIN, 0}, {mounts_, POLLPRI, 0}};
        if (::poll(fds, mounts_ >= 0 ? 2 : 1, -1) < 0)
            continue;
        if (fds[1].revents & (POLLPRI | POLLERR)) {
            DrainMountInfo(mounts_);
            RefreshVolumes();
            Touched touched;
            std::lock_guard lock(mutex_);
            HandleMountsChanged(touched);
            Tickle(touched);
        }
        if (!(fds[0].revents & POLLIN))
            continue;
        collecting_ = true;
        std::vector<char> bytes;
        auto start = std::chrono::steady_clock::now();
        for (;;) {
            alignas(inotify_event) char buffer[64 * 1024];
            ssize_t got = ::read(inotify_, buffer, sizeof buffer);
            if (got > 0)
                bytes.insert(bytes.end(), buffer, buffer + got);
            pollfd more{inotify_, POLLIN, 0};
            if (std::chrono::steady_clock::now() - start > kBurstLongest ||
                ::poll(&more, 1, kBurstGapMs) <= 0)
                break;
        }
        HandleBurst(bytes);
        collecting_ = false;
    }
}

void NodeWatcher::HandleBurst(const std::vector<char>& bytes) {
    Touched touched;
    std::lock_guard lock(mutex_);
    for (size_t at = 0; at + sizeof(inotify_event) <= bytes.size();) {
        inotify_event event;
        std::memcpy(&event, bytes.data() + at, sizeof event);
        std::string name(event.len > 0 ? bytes.data() + at + sizeof event : "");
        at += sizeof event + event.len;
        HandleEvent(event.wd, event.mask, name, touched);
    }
    CompleteAwaitedSyncs(touched);
    Tickle(touched);
}

void NodeWatcher::HandleEvent(int wd, uint32_t mask, const std::string& name, Touched& touched) {
    if (mask & IN_Q_OVERFLOW) {
        for (auto& [container, watched] : watched_)
            SyncLocked(container, watched, touched);
        return;
    }
    if (configWds_.count(wd) != 0)
        return HandleConfigChanged(name, touched);
    auto found = byWd_.find(wd);
    if (found == byWd_.end())
        return;
    NodeRef container = found->second;
    Watched& watched = watched_[container];
    if (mask & IN_IGNORED) {
        byWd_.erase(found);
        watched.wd = -1;
        watched.trusted = false;
        return;
    }
    if (mask & (IN_DELETE_SELF | IN_MOVE_SELF)) {
        Forget(container);
        return Send(container, kNodeEventDeleted, container, nullptr, 0, touched);
    }
    if (name == ".hidden") {
        // Which children show changed: tell every child that is in use.
        Forget(container);
        std::vector<NodeRef> children = InternedChildren(container);
        for (NodeRef child : children)
            Send(container, kNodeEventPropertyChanged, child, nullptr, NodeCode("fflg"), touched);
        ReleaseAll(children);
    }
    if (mask & (IN_CREATE | IN_MOVED_TO)) {
        InsertName(watched.names, name);
        NodeHolder child(
            Intern(container, name, (mask & IN_ISDIR) ? NodeKind::Folder : NodeKind::Unknown));
        Forget(child.Get());
        Send(container, kNodeEventChildAdded, child.Get(), container, 0, touched);
    } else if (mask & (IN_DELETE | IN_MOVED_FROM)) {
        EraseName(watched.names, name);
        NodeHolder child(Existing(container, name));
        if (child) {
            Forget(child.Get());
            Send(container, kNodeEventDeleted, child.Get(), nullptr, 0, touched);
        }
    } else if (mask & (IN_ATTRIB | IN_MODIFY | IN_CLOSE_WRITE)) {
        NodeHolder child(Existing(container, name));
        if (child) {
            Forget(child.Get());
            FourCharCode property = (mask & IN_ATTRIB) ? NodeCode("attr") : NodeCode("modd");
            Send(container, kNodeEventPropertyChanged, child.Get(), nullptr, property, touched);
        }
    }
}

void NodeWatcher::HandleMountsChanged(Touched& touched) {
    const SpecialNodes& special = Special();
    // The places list too: a remote bookmark is reachable while it is mounted.
    for (NodeRef container :
         {special.root, special.network, special.volumes, special.devices, special.places})
        Send(container, kNodeEventVirtualChildListChanged, container, container, 0, touched);
}

void NodeWatcher::HandleConfigChanged(const std::string& name, Touched& touched) {
    WatchConfigLocked();
    if (name == "bookmarks" || name == "user-dirs.dirs" || name == "gtk-3.0" ||
        name == files::LeafName(files::ConfigHome())) {
        NodeRef places = Special().places;
        Send(places, kNodeEventVirtualChildListChanged, places, places, 0, touched);
    }
}

} // namespace basalt::nodes

using namespace basalt::nodes;

StatusCode NodeEventDisposeEventQueue(NodeEventQueueRef queue) {
    if (queue == nullptr)
        return paramErr;
    NodeWatcher::Shared().ForgetQueue(queue);
    NodeEventRef event = nullptr;
    while (NodeEventBlockUntilNextEventNew(&event, queue))
        NodeEventRelease(event);
    delete queue;
    return noErr;
}

StatusCode NodeRegisterChildChangedNotification(NodeRef container,
                                                const NodeNotificationClient* client, uint32_t) {
    if (client == nullptr)
        return paramErr;
    return NodeWatcher::Shared().Register(container, *client);
}

StatusCode NodeUnRegisterChildChangedNotification(NodeRef container, void* clientRef) {
    return NodeWatcher::Shared().Unregister(container, clientRef);
}

StatusCode NodeSync(NodeRef node) {
    return NodeWatcher::Shared().Sync(node, false);
}

StatusCode FNNotify(const BFRef* ref, uint32_t, uint32_t) {
    NodeHolder folder(GetBFRefAsNode(ref));
    if (!folder)
        return fnfErr;
    return NodeWatcher::Shared().Sync(folder.Get(), true);
}
