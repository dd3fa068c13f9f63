#pragma once

// What the file system says about a node, read on first use and cached until Forget.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <string>

namespace basalt::nodes {

// lstat of the node (links are not followed); exists is false for virtual nodes.
NodeStat StatOf(NodeRef node);
// Our extended attributes.
NodeExtras ExtrasOf(NodeRef node);
// The immutable inode flag.
bool IsLocked(NodeRef node);
// The names a folder's ".hidden" file lists.
bool IsListedHidden(NodeRef folder, std::string_view name);
// While one lives, its thread reads the attributes of the folder's children through the
// folder's descriptor: each read looks up one name instead of walking the whole path.
class FolderAttributeScope {
public:
    explicit FolderAttributeScope(NodeRef folder);
    ~FolderAttributeScope();
    FolderAttributeScope(const FolderAttributeScope&) = delete;
    FolderAttributeScope& operator=(const FolderAttributeScope&) = delete;
};
// Drops what is cached about the node, after a change.
void Forget(NodeRef node);
// Reads an extended attribute of a path of any length; empty when absent.
std::string ReadXattr(const std::string& path, const char* name, bool* present = nullptr);

} // namespace basalt::nodes
