// The worker of a search: a breadth-first walk over the scope folders with getdents64 alone,
// testing each visible name against the query and handing hits over in batches.
//
// What it leaves out is what a listing hides: names starting with a dot and names in the
// folder's ".hidden". It never follows a symbolic link (links are tested as items but not
// entered), opens folders with O_NOFOLLOW, and remembers the folders it has entered by device
// and inode, so bind mounts that loop are walked once. It enters another file system only
// where a volume the service lists is mounted, which keeps /proc and friends out.

#include "basalt/files/BFLongPath.h"
#include "basalt/linkage/Linkage.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeVolumes.h"
#include "basalt/types/BMQuery.h"
#include "basalt/types/BUTypes.h"
#include "basalt/types/MimeDatabase.h"

#include <chrono>
#include <deque>
#include <dirent.h>
#include <set>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unordered_set>

namespace basalt::nodes {
namespace {

using Clock = std::chrono::steady_clock;

// How many entries are looked at between two checks of the stop flag and the batch clock.
constexpr int kCheckEvery = 256;
// Seconds from 1970 to 2001, the epoch of core dates.
constexpr double kCoreDateEpoch = 978307200.0;

std::atomic<int> gRunningWalks{0};

class WalkItem final : public types::QueryItem {
public:
    WalkItem(std::string_view name, NodeKind kind) : name_(name), kind_(kind) {}
    std::string_view Name() const override { return name_; }
    std::string ContentType() const override {
        switch (kind_) {
        case NodeKind::Folder:
            return "inode/directory";
        case NodeKind::Symlink:
            return "inode/symlink";
        default: {
            std::string type = types::MimeDatabase::Shared().TypeForName(name_);
            return type.empty() ? "application/octet-stream" : type;
        }
        }
    }

private:
    std::string_view name_;
    NodeKind kind_;
};

std::unordered_set<std::string> HiddenNames(int folder) {
    std::unordered_set<std::string> names;
    files::UniqueFd fd(::openat(folder, ".hidden", O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    std::string text;
    char buffer[4096];
    for (ssize_t got; fd.Valid() && (got = ::read(fd.Get(), buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<size_t>(got));
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        if (end > at)
            names.emplace(text, at, end - at);
        at = end + 1;
    }
    return names;
}

BCTypeRef RowValue(const std::string& attribute, NodeRef item) {
    auto text = [item](const char(&code)[5]) -> BCTypeRef {
        UniChar chars[1024];
        BCIndex length = 0;
        if (GetNodePropertyAsStringNew(item, NodeCode(code), 1024, &length, chars, 0) != noErr)
            return nullptr;
        return BCStringCreateWithCharacters(nullptr, chars, std::min<BCIndex>(length, 1024));
    };
    if (attribute == "kBMItemDisplayName")
        return text("dnam");
    if (attribute == "kBMItemFSName")
        return text("pnam");
    if (attribute == "kBMItemContentType")
        return text("utid");
    if (attribute == "kBMItemFSContentChangeDate") {
        NodeStat stat = StatOf(item);
        return stat.exists ? BCDateCreate(nullptr, double(stat.modified) - kCoreDateEpoch)
                           : nullptr;
    }
    return nullptr;
}

class Walk {
public:
    Walk(std::shared_ptr<QueryState> state, std::shared_ptr<QueryRun> run)
        : state_(std::move(state)), run_(std::move(run)), hits_(CopyNodeRef(state_->hits)) {}

    void Run() {
        start_ = lastDelivery_ = Clock::now();
        if (!run_->spec.expression->IsFalse()) {
            for (const std::string& root : Roots())
                folders_.push_back({root, 0});
            while (!folders_.empty() && !Stopped()) {
                Folder next = std::move(folders_.front());
                folders_.pop_front();
                WalkFolder(next);
                Deliver(false);
            }
        }
        if (!Stopped())
            Deliver(true);
        ReleaseHits(found_);
    }

private:
    struct Folder {
        std::string path;
        uint64_t device; // of the folder it was found in; 0 for a root
    };

    std::vector<std::string> Roots() const {
        if (!run_->spec.everywhere)
            return run_->spec.scope;
        std::vector<std::string> roots;
        for (const Volume& volume : Volumes()) {
            if (!volume.network)
                roots.push_back(volume.mountPoint);
        }
        return roots;
    }

    bool Stopped() const { return run_->stop.load(std::memory_order_relaxed); }

    // Opens a folder to be walked, or refuses it: seen before, or another file system that
    // is no volume.
    files::UniqueFd Enter(const Folder& folder, uint64_t& device) {
        int flags = O_RDONLY | O_DIRECTORY | (folder.device != 0 ? O_NOFOLLOW : 0);
        files::UniqueFd fd = files::OpenPath(folder.path, flags);
        struct stat info {};
        if (!fd.Valid() || ::fstat(fd.Get(), &info) != 0)
            return {};
        device = info.st_dev;
        if (folder.device != 0 && device != folder.device && !VolumeAtPath(folder.path))
            return {};
        if (!entered_.insert({info.st_dev, info.st_ino}).second)
            return {};
        return fd;
    }

    void WalkFolder(const Folder& folder) {
        uint64_t device = 0;
        files::UniqueFd fd = Enter(folder, device);
        if (!fd.Valid())
            return;
        std::unordered_set<std::string> hidden = HiddenNames(fd.Get());
        folderNode_ = NodeHolder();
        alignas(LinuxDirent64) char buffer[32 * 1024];
        int sinceCheck = 0;
        for (long got; (got = ::syscall(SYS_getdents64, fd.Get(), buffer, sizeof buffer)) > 0;) {
            for (long at = 0; at < got;) {
                auto* entry = reinterpret_cast<LinuxDirent64*>(buffer + at);
                at += entry->d_reclen;
                std::string_view name = entry->d_name;
                if (name.front() == '.' || (!hidden.empty() && hidden.count(std::string(name))))
                    continue;
                Consider(folder.path, fd.Get(), device, name, KindOfDirentType(entry->d_type));
                if (++sinceCheck == kCheckEvery) {
                    sinceCheck = 0;
                    if (Stopped())
                        return;
                    Deliver(false);
                }
            }
        }
    }

    void Consider(const std::string& folder, int folderFd, uint64_t device, std::string_view name,
                  NodeKind kind) {
        if (kind == NodeKind::Unknown) {
            struct stat info {};
            std::string leaf(name);
            if (::fstatat(folderFd, leaf.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0)
                return;
            kind = S_ISDIR(info.st_mode)   ? NodeKind::Folder
                   : S_ISLNK(info.st_mode) ? NodeKind::Symlink
                   : S_ISREG(info.st_mode) ? NodeKind::File
                                           : NodeKind::Other;
        }
        if (run_->spec.expression->Matches(WalkItem(name, kind)))
            Found(folder, name, kind);
        if (kind == NodeKind::Folder)
            folders_.push_back({files::JoinPath(folder, name), device});
    }

    void Found(const std::string& folder, std::string_view name, NodeKind kind) {
        if (!folderNode_)
            folderNode_ = NodeHolder(NodeForPath(folder));
        if (!folderNode_)
            return;
        NodeRef original = Intern(folderNode_.Get(), name, kind);
        QueryHit hit{MakeQueryHit(hits_.Get(), original), {}};
        if (run_->spec.sort != nullptr) {
            for (const std::string& attribute : run_->spec.attributes)
                hit.row.push_back(RowValue(attribute, original));
        }
        found_.push_back(std::move(hit));
        if (!delivered_ && found_.size() >= run_->spec.batching.firstCount)
            Deliver(true);
    }

    // Hands the hits found so far over when the batch is full or its time has come; always
    // when forced.
    void Deliver(bool force) {
        if (found_.empty())
            return;
        const QueryBatching& batching = run_->spec.batching;
        auto now = Clock::now();
        auto since = [&](Clock::time_point t, uint32_t ms) {
            return now - t >= std::chrono::milliseconds(ms);
        };
        bool due = delivered_
                       ? found_.size() >= batching.progressCount ||
                             since(lastDelivery_, batching.progressMs)
                       : found_.size() >= batching.firstCount || since(start_, batching.firstMs);
        if (!force && !due)
            return;
        if (!PublishHits(*state_, *run_, found_))
            run_->stop = true;
        delivered_ = true;
        lastDelivery_ = now;
    }

    std::shared_ptr<QueryState> state_;
    std::shared_ptr<QueryRun> run_;
    NodeHolder hits_; // keeps the container alive while hits are made for it
    std::deque<Folder> folders_;
    std::set<std::pair<uint64_t, uint64_t>> entered_;
    NodeHolder folderNode_;
    std::vector<QueryHit> found_;
    bool delivered_ = false;
    Clock::time_point start_;
    Clock::time_point lastDelivery_;
};

struct WalkStart {
    std::shared_ptr<QueryState> state;
    std::shared_ptr<QueryRun> run;
};

StatusCode RunWalk(void* parameter) {
    std::unique_ptr<WalkStart> start(static_cast<WalkStart*>(parameter));
    start->run->worker = std::this_thread::get_id();
    Walk(start->state, start->run).Run();
    start->run->MarkFinished();
    start.reset();
    gRunningWalks.fetch_sub(1);
    return noErr;
}

} // namespace

StatusCode StartQueryWalk(std::shared_ptr<QueryState> state, std::shared_ptr<QueryRun> run) {
    auto* start = new WalkStart{std::move(state), std::move(run)};
    gRunningWalks.fetch_add(1);
    StatusCode status = MPCreateTask(RunWalk, start, 0, nullptr, nullptr, nullptr, 0, nullptr);
    if (status != noErr) {
        delete start;
        gRunningWalks.fetch_sub(1);
    }
    return status;
}

int RunningQueryWalks() {
    return gRunningWalks.load();
}

} // namespace basalt::nodes
