#pragma once

// One folder on screen: the list's root, an opened disclosure row or a column. It holds the
// children it handed to the control (which keeps the nodes behind the control's item ids alive),
// observes the node's changes, and remembers whether its listing or a refresh is outstanding.
//
// States: populated false: opened while population was deferred. populated and syncInProgress:
// the first listing or a refresh is outstanding at the node service. populated alone: up to date.

#include "kel/nodes/INodeObserver.h"
#include "kel/nodes/TKelNodeArray.h"

class TNodeBrowserControl;

class TContainerData : public INodeObserver {
public:
    TContainerData(TNodeBrowserControl& owner, const TKelNode& node) : owner(&owner), node(node) {}
    TContainerData(const TContainerData&) = delete;
    TContainerData& operator=(const TContainerData&) = delete;
    virtual ~TContainerData() = default;

    void NodeObserverNotePropertyChange(TKelNode& child, unsigned long property) override;
    void NodeObserverNoteDeletion(TKelNode& child) override;
    void NodeObserverNoteChildAddition(TKelNode& parent, TKelNode& child) override;
    void NodeObserverNoteSyncCompletion(TKelNode& node) override;
    void NodeObserverNoteOpenSyncCompletion(TKelNode& node) override;
    void NodeObserverNoteVirtualChildListChanged(TKelNode& node) override;
    void NodeObserverNoteDisplayAttributesChanged(TKelNode& node, BCDictionaryRef) override;

    TNodeBrowserControl* owner;
    // As the control knows it: possibly an alias or a query hit.
    TKelNode node;
    TKelNodeArray children;
    bool populated = false;
    bool syncInProgress = false;
};
