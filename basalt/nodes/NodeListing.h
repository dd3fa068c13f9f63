#pragma once

// The children of a container in the service's order, as counted references.

#include "basalt/nodes/NodeTable.h"

#include <vector>

namespace basalt::nodes {

StatusCode ListChildren(NodeRef container, std::vector<NodeRef>& children);
// The entries of a folder by getdents64 alone, sorted by their bytes.
StatusCode ReadFolderEntries(const std::string& path, std::vector<NodeEntry>& entries);
// The children of the virtual nodes 11 and 12.
std::vector<NodeRef> SidebarChildren(NodeRef sidebar);
void ReleaseAll(std::vector<NodeRef>& nodes);

} // namespace basalt::nodes
