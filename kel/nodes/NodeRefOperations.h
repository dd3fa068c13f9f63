#pragma once

// Operations on a bare node reference that work with core strings: the special nodes as the
// service files them (the Network node as the boot volume's child), names in both styles, and
// lookups by name that hide Network at the boot level. The node type belongs to the platform,
// so these live in a namespace of their own rather than as its members.

#include "kel/foundation/RetainedRef.h"
#include "kel/nodes/TKelNode.h"

namespace NodeRefOps {

enum NameStyle : unsigned long {
    kNameAsStored = 0,
    kNameWithColons = 2, // "/" in the name written as ":"
};

// Cached, not owned by the caller.
OpaqueNodeRef* RootNode();
OpaqueNodeRef* BootNode();
// The boot volume's "Network" child as found; null (and looked up again later) if missing.
OpaqueNodeRef* NetworkNode();
// The boot volume's "private" folder; null where there is none.
OpaqueNodeRef* PrivateNode();

// The results below are owned by the caller (DisposeNode), null on failure.
// On the boot node a name equal to "Network" finds nothing: Network is not a child there.
OpaqueNodeRef* CopyChildWithName(OpaqueNodeRef* node, BCStringRef name);
// The Network node's parent is the root node.
OpaqueNodeRef* CopyParent(OpaqueNodeRef* node);
OpaqueNodeRef* CopyAliasOriginal(OpaqueNodeRef* node, bool flag);
OpaqueNodeRef* CopyAliasOriginalFollowingChains(OpaqueNodeRef* node, bool flag);
BCStringRef CopyName(OpaqueNodeRef* node, unsigned long style);
BCURLRef CopyURL(OpaqueNodeRef* node);

// 0 when names on the node's file system ignore case.
uint32_t NameSyntaxClass(OpaqueNodeRef* node);
// -1, 0 or 1, with the node's file system's rule for case.
int CompareNamesInContext(OpaqueNodeRef* node, BCStringRef a, BCStringRef b);

} // namespace NodeRefOps

// A node on the desktop folder, owned by the caller; null on failure.
OpaqueNodeRef* KelCopyDesktopNode();
