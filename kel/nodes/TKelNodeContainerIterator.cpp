#include "kel/nodes/TKelNodeContainerIterator.h"

TKelNodeContainerIterator::TKelNodeContainerIterator(const TKelNode& container, bool flag) {
    atRoot = container.IsRoot();
    networkPending = container == TKelNode::GetBootNode();
    valid = NewNodeIterator(container.PeekNodeRef(), &iterator, 0, flag) == noErr;
    if (!valid) {
        iterator = nullptr;
    }
}

TKelNodeContainerIterator::~TKelNodeContainerIterator() {
    if (iterator != nullptr) {
        DisposeNodeIterator(iterator);
    }
}

TKelNode TKelNodeContainerIterator::First() {
    if (atRoot) {
        networkPending = true;
        return TKelNode(TKelNode::GetNetworkNodeRef(), true);
    }
    return SkippingNetwork(NodeIteratorFirst(iterator));
}

TKelNode TKelNodeContainerIterator::Next() {
    if (atRoot) {
        if (networkPending) {
            networkPending = false;
            return TKelNode(NodeIteratorFirst(iterator), false);
        }
        return TKelNode(NodeIteratorNext(iterator), false);
    }
    return SkippingNetwork(NodeIteratorNext(iterator));
}

TKelNode TKelNodeContainerIterator::SkippingNetwork(NodeRef child) {
    TKelNode node(child, false);
    if (networkPending && node.IsNetwork()) {
        return TKelNode(NodeIteratorNext(iterator), false);
    }
    return node;
}
