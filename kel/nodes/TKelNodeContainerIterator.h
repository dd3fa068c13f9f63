#pragma once

// Walks a container's children in the service's order, with one change to the tree the user
// sees: the Network node hangs under the root node, first, and not under the boot volume.

#include "basalt/nodes/NodeIterator.h"
#include "kel/nodes/TKelNode.h"

class TKelNodeContainerIterator {
public:
    TKelNodeContainerIterator(const TKelNode& container, bool flag);
    TKelNodeContainerIterator(const TKelNodeContainerIterator&) = delete;
    TKelNodeContainerIterator& operator=(const TKelNodeContainerIterator&) = delete;
    virtual ~TKelNodeContainerIterator();

    bool IsValid() const { return valid; }
    // An empty node at the end of the children.
    TKelNode First();
    TKelNode Next();
    void First(TKelNode& out) { out = First(); }
    void Next(TKelNode& out) { out = Next(); }

private:
    // Skips the Network node where the boot volume lists it.
    TKelNode SkippingNetwork(NodeRef child);

    NodeIteratorRef iterator = nullptr;
    bool valid = false;
    bool atRoot = false;
    // On the boot node: Network is to be skipped. On the root: the service's walk has not begun.
    bool networkPending = false;
};
