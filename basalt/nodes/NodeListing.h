#pragma once

// The children of a container in the service's order, as counted references.

#include "basalt/nodes/NodeTable.h"

#include <vector>

namespace basalt::nodes {

// The record getdents64 fills; glibc has no declaration of it.
struct LinuxDirent64 {
    uint64_t d_ino;
    int64_t d_off;
    unsigned short d_reclen;
    unsigned char d_type;
    char d_name[];
};
// The kind a d_type names; Unknown when the file system did not say.
NodeKind KindOfDirentType(unsigned char type);

class DisplaySortKeyMaker;

// With `keys`, the children are handed to it as they are listed.
StatusCode ListChildren(NodeRef container, std::vector<NodeRef>& children,
                        DisplaySortKeyMaker* keys = nullptr);
// The entries of a folder by getdents64 alone, in the file system's order.
StatusCode ReadFolderEntries(const std::string& path, std::vector<NodeEntry>& entries);
// The children of the virtual nodes 11 and 12.
std::vector<NodeRef> SidebarChildren(NodeRef sidebar);
void ReleaseAll(std::vector<NodeRef>& nodes);

} // namespace basalt::nodes
