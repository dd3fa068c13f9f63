#pragma once

// Walks over the children of a container in the service's order: virtual children first,
// then the entries of the folder sorted by their bytes. The listing is read once, with
// getdents64 alone: no child is stat'ed to be listed.

#include "basalt/nodes/NodeService.h"

struct OpaqueNodeIterator;
typedef OpaqueNodeIterator* NodeIteratorRef;

StatusCode NewNodeIterator(NodeRef container, NodeIteratorRef* iterator, uint32_t options,
                           Boolean flag);
// Owned references to the children, null at the end. First restarts the walk.
NodeRef NodeIteratorFirst(NodeIteratorRef iterator);
NodeRef NodeIteratorNext(NodeIteratorRef iterator);
void DisposeNodeIterator(NodeIteratorRef iterator);
