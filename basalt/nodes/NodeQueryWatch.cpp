#include "basalt/nodes/NodeQueryWatch.h"

#include <cstring>
#include <poll.h>
#include <sys/inotify.h>

namespace basalt::nodes {
namespace {

constexpr uint32_t kQueryMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR |
                                IN_DONT_FOLLOW | IN_EXCL_UNLINK;

bool IsAtOrUnder(const std::string& path, const std::string& folder) {
    return path.compare(0, folder.size(), folder) == 0 &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

QueryWatch::QueryWatch() : fd_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}

void QueryWatch::Add(const std::string& path, FileID id) {
    if (!fd_.Valid() || byWd_.size() >= kMostQueryWatches)
        return;
    int wd = ::inotify_add_watch(fd_.Get(), path.c_str(), kQueryMask);
    if (wd >= 0)
        byWd_[wd] = {path, id};
}

std::vector<QueryWatch::Change> QueryWatch::Wait(int timeoutMs, int wake) {
    std::vector<Change> changes;
    if (!fd_.Valid())
        return changes;
    pollfd ready[2] = {{fd_.Get(), POLLIN, 0}, {wake, POLLIN, 0}};
    if (::poll(ready, wake >= 0 ? 2 : 1, timeoutMs) > 0 && (ready[0].revents & POLLIN))
        Read(changes);
    return changes;
}

void QueryWatch::Read(std::vector<Change>& changes) {
    alignas(inotify_event) char buffer[64 * 1024];
    for (ssize_t got; (got = ::read(fd_.Get(), buffer, sizeof buffer)) > 0;) {
        for (ssize_t at = 0; at + ssize_t(sizeof(inotify_event)) <= got;) {
            inotify_event event;
            std::memcpy(&event, buffer + at, sizeof event);
            const char* name = buffer + at + sizeof event;
            at += ssize_t(sizeof event + event.len);
            auto found = byWd_.find(event.wd);
            if (found == byWd_.end())
                continue;
            if (event.mask & IN_IGNORED) {
                byWd_.erase(found);
                continue;
            }
            if (event.len == 0)
                continue;
            bool added = (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0;
            changes.push_back({found->second.path, name, added, (event.mask & IN_ISDIR) != 0});
        }
    }
}

std::vector<QueryWatch::FileID> QueryWatch::Drop(const std::string& path) {
    std::vector<FileID> dropped;
    std::erase_if(byWd_, [&](const auto& entry) {
        if (!IsAtOrUnder(entry.second.path, path))
            return false;
        ::inotify_rm_watch(fd_.Get(), entry.first);
        dropped.push_back(entry.second.id);
        return true;
    });
    return dropped;
}

} // namespace basalt::nodes
