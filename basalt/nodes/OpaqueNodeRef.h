#pragma once

// The object behind a NodeRef. Invariants:
// - A file-system node is named by its parent and its name (the file system's bytes); its
//   path is rebuilt from the chain up to the boot node ("/"). The parent is counted.
// - The table of NodeTable.cpp holds exactly one node per (parent, name) while its count is
//   above zero; the count drops to zero only under the table's lock, so a lookup never
//   revives a node that is being destroyed.
// - kind starts as what getdents64 said (Unknown when it said nothing) and is settled by the
//   first stat; everything else about a node is read on demand into `cache`, under `mutex`,
//   and thrown away when a change event for the node arrives.

#include "basalt/nodes/NodeService.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

enum class NodeKind : uint8_t {
    Unknown,
    File,
    Folder,
    Symlink,
    Other, // devices, pipes, sockets
    Root,
    Network,
    VolumesFolder,
    VolumeAlias,
    Sidebar,
    Query,     // a search; its aliasTarget is its hits container
    QueryHits, // the hits of a search
    QueryHit,  // one hit; its aliasTarget is the item found
};

struct NodeStat {
    bool exists = false;
    int error = 0;
    uint32_t mode = 0;
    uint64_t size = 0;
    int64_t modified = 0;
    int64_t created = 0;
    uint64_t device = 0;
    uint64_t inode = 0;
};

struct NodeExtras {
    std::optional<FourCharCode> type;
    std::optional<FourCharCode> creator;
    int16_t label = 0;
    bool hideExtension = false;
    uint64_t resourceSize = 0;
};

struct NodeCache {
    std::optional<NodeStat> stat;
    std::optional<NodeExtras> extras;
    std::optional<bool> locked;
    std::optional<std::unordered_set<std::string>> hiddenNames; // a folder's .hidden
};

// Collation keys of "pnam" and "dnam". Made once and never changed, so a pointer to one
// stays good while the node lives; they are not dropped by Forget.
struct NodeSortKeys {
    std::optional<std::vector<uint8_t>> name;
    std::optional<std::vector<uint8_t>> displayName;
};

struct OpaqueNodeRef {
    OpaqueNodeRef(NodeKind kind, std::string name, OpaqueNodeRef* parent)
        : kind(kind), name(std::move(name)), parent(parent) {}
    OpaqueNodeRef(const OpaqueNodeRef&) = delete;
    OpaqueNodeRef& operator=(const OpaqueNodeRef&) = delete;

    bool IsFileSystem() const {
        NodeKind k = kind.load(std::memory_order_relaxed);
        return k <= NodeKind::Other;
    }

    std::atomic<int32_t> count{1};
    std::atomic<NodeKind> kind;
    const std::string name;
    OpaqueNodeRef* const parent;
    std::atomic<OpaqueNodeRef*> aliasTarget{nullptr}; // a volume alias's volume, counted
    int32_t virtualIndex = 0;

    std::mutex mutex;
    NodeCache cache;
    NodeSortKeys sortKeys;
};
