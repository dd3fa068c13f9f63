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

#include "basalt/nodes/NodeLock.h"
#include "basalt/nodes/NodeService.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
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

// Names looked up by view, without a string made for each lookup.
struct NameHash {
    using is_transparent = void;
    size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
};
using NameSet = std::unordered_set<std::string, NameHash, std::equal_to<>>;

// What a node has read of its object beyond its kind. A large folder's nodes are mostly named
// and never looked at closer, so a node holds none of this until it is asked for, and most
// files carry none of our attributes: each part costs a pointer until it holds something.
struct NodeCache {
    std::unique_ptr<NodeStat> stat;
    std::unique_ptr<NodeExtras> extras;
    std::unique_ptr<NameSet> hiddenNames; // a listed folder's .hidden
};

// A collation key, made once and never changed, so a pointer to it stays good while the node
// lives; keys are not dropped by Forget. The first key published wins and is read without a
// lock: a sort reads keys millions of times. The key ends in its only zero byte, so it
// carries its length.
class NodeSortKey {
public:
    NodeSortKey() = default;
    NodeSortKey(const NodeSortKey&) = delete;
    NodeSortKey& operator=(const NodeSortKey&) = delete;
    ~NodeSortKey() { delete[] bytes_.load(std::memory_order_relaxed); }

    // Null until a key is published.
    const uint8_t* Get() const { return bytes_.load(std::memory_order_acquire); }
    // Keeps made unless a key was published first; the answer is the key kept.
    const uint8_t* Publish(std::unique_ptr<uint8_t[]> made) {
        uint8_t* expected = nullptr;
        if (bytes_.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel))
            return made.release();
        return expected;
    }
    // Only while no one else can reach the node.
    void Reset() { delete[] bytes_.exchange(nullptr, std::memory_order_relaxed); }

private:
    std::atomic<uint8_t*> bytes_{nullptr};
};

struct NodeSortKeys {
    NodeSortKey name;
    NodeSortKey displayName;
};

// The name is kept in the same allocation, after the node: a large folder costs one block per
// entry. So a node is made only by Make and freed only by Destroy.
struct OpaqueNodeRef {
    static OpaqueNodeRef* Make(NodeKind kind, std::string_view name, OpaqueNodeRef* parent);
    static void Destroy(OpaqueNodeRef* node);
    OpaqueNodeRef(const OpaqueNodeRef&) = delete;
    OpaqueNodeRef& operator=(const OpaqueNodeRef&) = delete;

    bool IsFileSystem() const {
        NodeKind k = kind.load(std::memory_order_relaxed);
        return k <= NodeKind::Other;
    }
    std::string_view Name() const { return {NameBytes(), nameLength}; }
    // The name followed by a zero byte, for the system calls.
    const char* CName() const { return NameBytes(); }

    // What a sort reads of every node comes first, so that it shares a cache line. The narrow
    // fields sit together: the node is a few bytes under a malloc size class with a usual name.
    std::atomic<int32_t> count{1};
    std::atomic<NodeKind> kind;
    // Read with the cache, under mutex, and dropped with it. Every file's attributes are read
    // when a large folder's keys are made, so this flag stays out of the cache.
    bool extrasRead = false; // extras in the cache, or none: the file has none
    std::optional<bool> locked;
    int32_t virtualIndex = 0;
    basalt::nodes::NodeLock mutex;
    uint32_t tableHash = 0; // the intern table's (NodeInternTable.h), set under its lock
    const uint32_t nameLength;
    NodeSortKeys sortKeys;
    OpaqueNodeRef* const parent;
    std::atomic<OpaqueNodeRef*> aliasTarget{nullptr}; // a volume alias's volume, counted
    OpaqueNodeRef* tableNext = nullptr;               // the intern table's
    std::unique_ptr<NodeCache> cache;

private:
    OpaqueNodeRef(NodeKind kind, uint32_t nameLength, OpaqueNodeRef* parent)
        : kind(kind), nameLength(nameLength), parent(parent) {}
    ~OpaqueNodeRef() = default;
    const char* NameBytes() const { return reinterpret_cast<const char*>(this + 1); }
};
