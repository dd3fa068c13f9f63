#pragma once

// Interning, paths and the special nodes. Internal to the node service.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <string>
#include <string_view>
#include <vector>

namespace basalt::nodes {

struct NodeEntry {
    std::string name;
    NodeKind kind;
};

// The counted child (parent, name), made if needed; kind fills in an unknown kind.
NodeRef Intern(NodeRef parent, std::string_view name, NodeKind kind);
// The same for many children of one parent, under one lock.
std::vector<NodeRef> InternAll(NodeRef parent, const std::vector<NodeEntry>& entries);
// The child if it exists in the table, counted; null otherwise. Makes nothing.
NodeRef Existing(NodeRef parent, std::string_view name);
// Every interned child of parent, counted.
std::vector<NodeRef> InternedChildren(NodeRef parent);

struct SpecialNodes {
    NodeRef root;
    NodeRef boot;
    NodeRef network;
    NodeRef volumes;
    NodeRef devices; // virtual node 11
    NodeRef places;  // virtual node 12
};
const SpecialNodes& Special();

// "/a/b" for file-system nodes; empty for the others.
std::string PathOf(NodeRef node);
// The node of an absolute path, walked lexically from the boot node ("." and ".." folded).
NodeRef NodeForPath(std::string_view path);
// The kind as the file system says, stat'ing the node once if getdents64 did not tell.
NodeKind SettledKind(NodeRef node);

// RAII count for internal use.
class NodeHolder {
public:
    explicit NodeHolder(NodeRef node = nullptr) : node_(node) {}
    NodeHolder(NodeHolder&& other) noexcept : node_(other.Release()) {}
    NodeHolder& operator=(NodeHolder&& other) noexcept;
    NodeHolder(const NodeHolder&) = delete;
    NodeHolder& operator=(const NodeHolder&) = delete;
    ~NodeHolder();
    NodeRef Get() const { return node_; }
    NodeRef Release();
    explicit operator bool() const { return node_ != nullptr; }

private:
    NodeRef node_;
};

} // namespace basalt::nodes
