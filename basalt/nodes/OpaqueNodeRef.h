#pragma once

// The object behind a NodeRef. Invariants:
// - A file-system node is named by its parent and its name (the file system's bytes); its
//   path is rebuilt from the chain up to the boot node ("/"). The parent is counted.
// - The table of NodeTable.cpp holds exactly one node per (parent, name) while its count is
//   above zero; the count drops to zero only under the table's lock, so a lookup never
//   revives a node that is being destroyed.
// - kind is what the last look at the file system said: getdents64 or a lookup when the node
//   is interned, a stat otherwise (Unknown until then). A change event makes it Unknown again,
//   as a name can be reused by another kind of object; everything else about a node is read on
//   demand into `cache`, under `mutex`, and thrown away at the same time.

#include "basalt/nodes/NodeService.h"

#include <atomic>
#include <memory>
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
    Bookmark,  // a row of the places list, see NodeBookmarks.h
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
    bool operator==(const NodeExtras&) const = default;
};

// A large folder's nodes are mostly named and never looked at closer, and most files carry
// none of our attributes: each part costs a pointer until it holds something.
struct NodeCache {
    std::unique_ptr<NodeStat> stat;
    std::unique_ptr<NodeExtras> extras; // null once read: the file has none
    bool extrasRead = false;
    std::optional<bool> locked;
    std::unique_ptr<std::unordered_set<std::string>> hiddenNames; // a listed folder's .hidden
};

// A collation key, made once and never changed, so a pointer to it stays good while the node
// lives; keys are not dropped by Forget. `bytes` is set under the node's mutex and then
// published in `ready`, which a reader loads without the lock: a sort reads keys millions of
// times. The first four bytes hold the key's length.
struct NodeSortKey {
    std::unique_ptr<uint8_t[]> bytes;
    std::atomic<const uint8_t*> ready{nullptr};
};

struct NodeSortKeys {
    NodeSortKey name;
    NodeSortKey displayName;
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

    // What a sort reads of every node comes first, so that it shares a cache line.
    std::atomic<int32_t> count{1};
    std::atomic<NodeKind> kind;
    NodeSortKeys sortKeys;
    const std::string name;
    OpaqueNodeRef* const parent;
    std::atomic<OpaqueNodeRef*> aliasTarget{nullptr}; // a volume alias's volume, counted
    int32_t virtualIndex = 0;
    // The intern table's (NodeInternTable.h), set under its lock.
    size_t tableHash = 0;
    OpaqueNodeRef* tableNext = nullptr;

    std::mutex mutex;
    NodeCache cache;
};
