#pragma once

// What the containers of the browser and the sidebar are told about changes, on the main
// thread. The first five have no default: every observer must decide what a change means.

#include "kel/nodes/TKelNode.h"

class INodeObserver {
public:
    virtual void NodeObserverNotePropertyChange(TKelNode& node, unsigned long property) = 0;
    virtual void NodeObserverNoteDeletion(TKelNode& node) = 0;
    virtual void NodeObserverNoteChildAddition(TKelNode& parent, TKelNode& child) = 0;
    virtual void NodeObserverNoteSyncCompletion(TKelNode& node) = 0;
    virtual void NodeObserverNoteOpenSyncCompletion(TKelNode& node) = 0;
    // The hits of a query or a list of the sidebar changed.
    virtual void NodeObserverNoteVirtualChildListChanged(TKelNode&) {}
    // attributes is always null.
    virtual void NodeObserverNoteDisplayAttributesChanged(TKelNode&, BCDictionaryRef) {}

protected:
    ~INodeObserver() = default;
};
