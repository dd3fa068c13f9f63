// The worker of a search: a breadth-first walk over the scope folders with getdents64 alone,
// testing each visible name against the query and handing hits over in batches.
//
// What it leaves out is what a listing hides: names starting with a dot and names in the
// folder's ".hidden". It never follows a symbolic link (links are tested as items but not
// entered), opens folders with O_NOFOLLOW, and remembers the folders it has entered by device
// and inode, so bind mounts that loop are walked once. It enters another file system only
// where a volume the service lists is mounted, which keeps /proc and friends out.
//
// Once the walk is done, the same thread follows the folders it entered (NodeQueryWatch.h): an
// item created or moved in that matches becomes a hit, one deleted or moved away stops being
// one, and a folder moved in is walked. These updates go out in the update batches.

#include "basalt/files/BFLongPath.h"
#include "basalt/linkage/Linkage.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeQueryWatch.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeVolumes.h"
#include "basalt/types/BMQuery.h"
#include "basalt/types/BUTypes.h"
#include "basalt/types/MimeDatabase.h"

#include <chrono>
#include <cstring>
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
// The longest a search that follows changes waits before it looks at its stop flag again; a
// stop asked for wakes it at once.
constexpr int kStopCheckMs = 1000;
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
        default:
            // A hit is tested against each excluded type in turn: one lookup serves them all.
            if (type_.empty()) {
                type_ = types::MimeDatabase::Shared().TypeForName(name_);
                if (type_.empty())
                    type_ = "application/octet-stream";
            }
            return type_;
        }
    }

private:
    std::string_view name_;
    NodeKind kind_;
    mutable std::string type_;
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
    Walk(std::shared_ptr<QueryState> state, std::shared_ptr<QueryRun> run, QueryWatch& watch)
        : state_(std::move(state)), run_(std::move(run)), hits_(CopyNodeRef(state_->hits)),
          watch_(watch) {}

    ~Walk() {
        ReleaseHits(found_);
        ReleaseAll(gone_);
        for (NodeRef item : hitItems_)
            DisposeNode(item);
    }

    void Run() {
        start_ = lastDelivery_ = Clock::now();
        const bool matchesNothing = run_->definition.expression->IsFalse();
        if (!matchesNothing) {
            for (const std::string& root : Roots())
                folders_.push_back({root, 0});
            WalkFolders();
        }
        // The last delivery of a search comes even with nothing new, and after the walk counts
        // as done, so that clients learn from it that the search no longer gathers.
        run_->walked = true;
        if (!Stopped() && !matchesNothing)
            Deliver(true);
        if (!matchesNothing && watch_.Valid())
            FollowChanges();
    }

private:
    struct Folder {
        std::string path;
        uint64_t device; // of the folder it was found in; 0 for a root
    };

    std::vector<std::string> Roots() const {
        if (!run_->definition.everywhere)
            return run_->definition.scope;
        std::vector<std::string> roots;
        for (const Volume& volume : Volumes()) {
            if (!volume.network)
                roots.push_back(volume.mountPoint);
        }
        return roots;
    }

    bool Stopped() const { return run_->stop.load(std::memory_order_relaxed); }

    void WalkFolders() {
        while (!folders_.empty() && !Stopped()) {
            Folder next = std::move(folders_.front());
            folders_.pop_front();
            WalkFolder(next);
            Deliver(false);
        }
    }

    void FollowChanges() {
        while (!Stopped()) {
            for (const QueryWatch::Change& change : watch_.Wait(UpdateWaitMs(), run_->wake.Get())) {
                if (change.added)
                    Arrived(change);
                else
                    Left(change);
            }
            WalkFolders(); // those that were moved in
            Deliver(false);
        }
    }

    // Until the update batch is due when something waits to go, else until the next look at
    // the stop flag.
    int UpdateWaitMs() const {
        if (found_.empty() && gone_.empty())
            return kStopCheckMs;
        auto due = lastDelivery_ + std::chrono::milliseconds(run_->definition.batching.updateMs);
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now());
        return int(std::clamp<int64_t>(left.count(), 0, kStopCheckMs));
    }

    void Arrived(const QueryWatch::Change& change) {
        if (change.name.front() == '.')
            return;
        files::UniqueFd folder = files::OpenPath(change.folder, O_RDONLY | O_DIRECTORY);
        struct stat info {};
        if (!folder.Valid() || ::fstat(folder.Get(), &info) != 0 ||
            HiddenNames(folder.Get()).count(change.name) != 0)
            return;
        folderNode_ = NodeHolder();
        Consider(change.folder, folder.Get(), info.st_dev, change.name,
                 change.isFolder ? NodeKind::Folder : NodeKind::Unknown);
    }

    // The item is no hit any more, nor is anything under it; a folder that went may turn up
    // again elsewhere in the scope, to be walked anew there.
    void Left(const QueryWatch::Change& change) {
        if (change.isFolder) {
            for (const QueryWatch::FileID& id :
                 watch_.Drop(files::JoinPath(change.folder, change.name)))
                entered_.erase(id);
        }
        NodeHolder folder(NodeForPath(change.folder));
        NodeHolder item(folder ? Existing(folder.Get(), change.name) : nullptr);
        if (!item)
            return; // a hit counts its item, so none leads here
        auto under = [gone = item.Get()](NodeRef node) { return IsAtOrUnder(node, gone); };
        std::erase_if(hitItems_, [&](NodeRef node) {
            if (!under(node))
                return false;
            DisposeNode(node);
            return true;
        });
        std::vector<QueryHit> unpublished = TakeHits(found_, under);
        ReleaseHits(unpublished);
        gone_.push_back(item.Release());
    }

    static bool IsAtOrUnder(NodeRef node, NodeRef ancestor) {
        for (; node != nullptr; node = node->parent) {
            if (node == ancestor)
                return true;
        }
        return false;
    }

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
        watch_.Add(folder.path, {info.st_dev, info.st_ino});
        return fd;
    }

    // Reads the whole folder into entries_; true if it lists a ".hidden". Nothing is read
    // once the walk is stopped.
    bool ReadEntries(int folder) {
        constexpr size_t kChunk = 32 * 1024;
        constexpr size_t kMostKept = 1024 * 1024;
        if (entries_.size() > kMostKept)
            entries_ = {}; // grown for a very large folder, which the next one seldom is
        size_t used = 0;
        bool listsHidden = false;
        entriesUsed_ = 0;
        while (!Stopped()) {
            if (entries_.size() < used + kChunk)
                entries_.resize(used + kChunk);
            long got = ::syscall(SYS_getdents64, folder, entries_.data() + used, kChunk);
            if (got <= 0)
                break;
            for (long at = 0; at < got && !listsHidden;) {
                auto* entry = reinterpret_cast<LinuxDirent64*>(entries_.data() + used + at);
                listsHidden = std::strcmp(entry->d_name, ".hidden") == 0;
                at += entry->d_reclen;
            }
            used += size_t(got);
            entriesUsed_ = used;
        }
        return listsHidden;
    }

    void WalkFolder(const Folder& folder) {
        uint64_t device = 0;
        files::UniqueFd fd = Enter(folder, device);
        if (!fd.Valid())
            return;
        // Few folders have a ".hidden": looking for it in the listing spares an open of a
        // missing file in all the others.
        std::unordered_set<std::string> hidden;
        if (ReadEntries(fd.Get()))
            hidden = HiddenNames(fd.Get());
        folderNode_ = NodeHolder();
        int sinceCheck = 0;
        for (size_t at = 0; at < entriesUsed_;) {
            auto* entry = reinterpret_cast<LinuxDirent64*>(entries_.data() + at);
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
        if (run_->definition.expression->Matches(WalkItem(name, kind)))
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
        if (!hitItems_.insert(original).second) {
            DisposeNode(original); // found by the walk and again by a change on its way
            return;
        }
        CopyNodeRef(original); // for hitItems_, which outlives the hits once they are dropped
        QueryHit hit{MakeQueryHit(hits_.Get(), original), {}};
        if (run_->definition.sort != nullptr) {
            for (const std::string& attribute : run_->definition.attributes)
                hit.row.push_back(RowValue(attribute, original));
        }
        found_.push_back(std::move(hit));
        if (!delivered_ && found_.size() >= run_->definition.batching.firstCount)
            Deliver(true);
    }

    // Hands the hits found so far over when the batch is full or its time has come; always
    // when forced, even an empty batch.
    void Deliver(bool force) {
        if (!force && found_.empty() && gone_.empty())
            return;
        if (!force && !Due())
            return;
        auto gone = [this](NodeRef item) {
            return std::any_of(gone_.begin(), gone_.end(),
                               [item](NodeRef left) { return IsAtOrUnder(item, left); });
        };
        if (!PublishHits(*state_, *run_, found_, gone))
            run_->stop = true;
        ReleaseAll(gone_);
        delivered_ = true;
        lastDelivery_ = Clock::now();
    }

    bool Due() const {
        const QueryBatching& batching = run_->definition.batching;
        auto now = Clock::now();
        auto since = [&](Clock::time_point t, uint32_t ms) {
            return now - t >= std::chrono::milliseconds(ms);
        };
        if (run_->walked)
            return found_.size() + gone_.size() >= batching.updateCount ||
                   since(lastDelivery_, batching.updateMs);
        if (delivered_)
            return found_.size() >= batching.progressCount ||
                   since(lastDelivery_, batching.progressMs);
        return found_.size() >= batching.firstCount || since(start_, batching.firstMs);
    }

    std::shared_ptr<QueryState> state_;
    std::shared_ptr<QueryRun> run_;
    NodeHolder hits_; // keeps the container alive while hits are made for it
    std::deque<Folder> folders_;
    std::vector<char> entries_; // the records of the folder being walked, kept between folders
    size_t entriesUsed_ = 0;
    std::set<std::pair<uint64_t, uint64_t>> entered_;
    NodeHolder folderNode_;
    QueryWatch& watch_;
    std::unordered_set<NodeRef> hitItems_; // the items of this run's hits, counted
    std::vector<QueryHit> found_;
    std::vector<NodeRef> gone_; // counted; items whose hits are to be withdrawn
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
    {
        // Closing the watch of a large tree keeps the kernel busy for tens of milliseconds:
        // the run counts as finished before that, so a search that replaces this one need
        // not wait for it.
        QueryWatch watch;
        Walk(start->state, start->run, watch).Run();
        start->run->MarkFinished();
        start.reset();
    }
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
