#include "basalt/nodes/NodeTable.h"

#include "basalt/nodes/NodeInternTable.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"

#include <mutex>

namespace basalt::nodes {
namespace {

// Special nodes never reach zero.
constexpr int32_t kImmortal = 1 << 30;

struct Table {
    std::mutex mutex;
    NodeInternTable nodes;
};

Table& TheTable() {
    static Table* table = new Table; // lives for the process: nodes may outlive statics
    return *table;
}

NodeRef MakeSpecial(NodeKind kind, std::string_view name, NodeRef parent, int32_t index = 0) {
    auto* node = OpaqueNodeRef::Make(kind, name, parent);
    node->count = kImmortal;
    node->virtualIndex = index;
    return node;
}

NodeRef InternLocked(Table& table, NodeRef parent, std::string_view name, NodeKind kind) {
    const uint32_t hash = NodeInternTable::HashOf(parent, name);
    if (NodeRef node = table.nodes.Find(parent, name, hash)) {
        node->count.fetch_add(1, std::memory_order_relaxed);
        // A fresh look at the folder wins: the name may now hold another kind of object.
        if (kind != NodeKind::Unknown && node->IsFileSystem())
            node->kind.store(kind);
        return node;
    }
    parent->count.fetch_add(1, std::memory_order_relaxed);
    auto* node = OpaqueNodeRef::Make(kind, name, parent);
    node->tableHash = hash;
    table.nodes.Insert(node);
    return node;
}

} // namespace

const SpecialNodes& Special() {
    static const SpecialNodes* special = [] {
        auto* made = new SpecialNodes;
        made->root = MakeSpecial(NodeKind::Root, "Computer", nullptr);
        made->boot = MakeSpecial(NodeKind::Folder, "", made->root);
        made->network = MakeSpecial(NodeKind::Network, "Network", made->boot);
        made->volumes = MakeSpecial(NodeKind::VolumesFolder, "Volumes", made->boot);
        made->devices = MakeSpecial(NodeKind::Sidebar, "Devices", made->root, kVirtualNodeDevices);
        made->places = MakeSpecial(NodeKind::Sidebar, "Places", made->root, kVirtualNodePlaces);
        return made;
    }();
    return *special;
}

NodeRef Intern(NodeRef parent, std::string_view name, NodeKind kind) {
    Table& table = TheTable();
    std::lock_guard lock(table.mutex);
    return InternLocked(table, parent, name, kind);
}

std::vector<NodeRef> InternAll(NodeRef parent, const std::vector<NodeEntry>& entries) {
    std::vector<NodeRef> nodes;
    nodes.reserve(entries.size());
    Table& table = TheTable();
    std::lock_guard lock(table.mutex);
    table.nodes.Reserve(entries.size());
    for (const NodeEntry& entry : entries)
        nodes.push_back(InternLocked(table, parent, entry.name, entry.kind));
    return nodes;
}

NodeRef Existing(NodeRef parent, std::string_view name) {
    Table& table = TheTable();
    std::lock_guard lock(table.mutex);
    NodeRef found = table.nodes.Find(parent, name, NodeInternTable::HashOf(parent, name));
    return found != nullptr ? CopyNodeRef(found) : nullptr;
}

std::vector<NodeRef> InternedChildren(NodeRef parent) {
    std::vector<NodeRef> children;
    Table& table = TheTable();
    std::lock_guard lock(table.mutex);
    table.nodes.ForEach([&](NodeRef node) {
        if (node->parent == parent)
            children.push_back(CopyNodeRef(node));
    });
    return children;
}

std::string PathOf(NodeRef node) {
    const SpecialNodes& special = Special();
    std::vector<std::string_view> names;
    for (; node != special.boot; node = node->parent) {
        if (node == nullptr || !node->IsFileSystem())
            return {};
        names.push_back(node->Name());
    }
    if (names.empty())
        return "/";
    std::string path;
    for (auto it = names.rbegin(); it != names.rend(); ++it) {
        path += '/';
        path += *it;
    }
    return path;
}

NodeRef NodeForPath(std::string_view path) {
    if (path.empty() || path.front() != '/')
        return nullptr;
    NodeHolder current(CopyNodeRef(Special().boot));
    size_t at = 0;
    while (at < path.size()) {
        size_t end = path.find('/', at);
        if (end == std::string_view::npos)
            end = path.size();
        std::string_view part = path.substr(at, end - at);
        at = end + 1;
        if (part.empty() || part == ".")
            continue;
        if (part == "..") {
            if (current.Get() != Special().boot)
                current = NodeHolder(CopyNodeRef(current.Get()->parent));
            continue;
        }
        current = NodeHolder(Intern(current.Get(), part, NodeKind::Unknown));
    }
    return current.Release();
}

NodeKind SettledKind(NodeRef node) {
    NodeKind kind = node->kind.load();
    if (kind != NodeKind::Unknown)
        return kind;
    StatOf(node);
    return node->kind.load();
}

NodeHolder& NodeHolder::operator=(NodeHolder&& other) noexcept {
    if (this != &other) {
        DisposeNode(node_);
        node_ = other.Release();
    }
    return *this;
}

NodeHolder::~NodeHolder() {
    DisposeNode(node_);
}

NodeRef NodeHolder::Release() {
    NodeRef node = node_;
    node_ = nullptr;
    return node;
}

} // namespace basalt::nodes

using namespace basalt::nodes;

StatusCode InitializeCatalog() {
    Special();
    return noErr;
}

NodeRef CopyNodeRef(NodeRef node) {
    if (node != nullptr)
        node->count.fetch_add(1, std::memory_order_relaxed);
    return node;
}

void DisposeNode(NodeRef node) {
    while (node != nullptr) {
        int32_t count = node->count.load(std::memory_order_relaxed);
        while (count > 1) {
            if (node->count.compare_exchange_weak(count, count - 1, std::memory_order_acq_rel))
                return;
        }
        NodeRef parent = nullptr;
        NodeRef target = nullptr;
        {
            Table& table = TheTable();
            std::lock_guard lock(table.mutex);
            if (node->count.fetch_sub(1, std::memory_order_acq_rel) != 1)
                return;
            table.nodes.Erase(node);
            parent = node->parent;
            target = node->aliasTarget;
        }
        NodeKind kind = node->kind.load(std::memory_order_relaxed);
        if (kind == NodeKind::Query || kind == NodeKind::QueryHits)
            ForgetQueryNode(node);
        OpaqueNodeRef::Destroy(node);
        DisposeNode(target);
        node = parent; // the parent's count goes too; a loop, since chains can be deep
    }
}

NodeRef GetRootNode() {
    return Special().root;
}

NodeRef GetBootNode() {
    return CopyNodeRef(Special().boot);
}
